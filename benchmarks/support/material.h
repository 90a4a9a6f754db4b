// What the benchmarks work on, the same bytes in every run.
#pragma once

#include "dgCounted.h"
#include "mrContainers.h"
#include "mrFileMat.h"

#include "dgDuctImage.h"

#include <memory>
#include <string>

using Picture = dgCounted<dgDuctImage>;

/// An opaque picture like one of a material: large shapes with a grain over them.
/// @param seed  makes the grain
Picture material_picture(char const* name, int side, unsigned seed);

/// A material of facets with a property each and, where there are textures, one layer each, all of different
/// images.
/// @param texture_side  pixels, or 0 for facets without textures
std::unique_ptr<mrFileMat> material(int facets, int texture_side);

/// A folder that is removed with what is in it at the end of its life.
class WorkFolder
{
public:
    WorkFolder();
    ~WorkFolder();
    WorkFolder(WorkFolder const&) = delete;
    WorkFolder& operator=(WorkFolder const&) = delete;

    std::string file(std::string const& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};
