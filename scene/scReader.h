// Reading scenes, meshes and images that come from anybody.
#pragma once

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "gxImageFileUtils.h"
#include "scExport.h"
#include "scScene.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

enum scReadPlace
{
    scReadInChild, ///< safe for untrusted input
    scReadHere     ///< in this process: as safe as Assimp and the loaders of gdk-pixbuf are
};

struct scReadOptions
{
    scReadPlace place = scReadInChild;
    // Limits of the child.
    std::chrono::milliseconds time{60'000};
    std::uint64_t memory = std::uint64_t{2} << 30; ///< bytes of address space
    /// The program that becomes the child, mr-scene-reader; where empty, that which is installed with this library.
    std::string helper{};
};

/// Reads files in a child process of its own for each, or in this process; what is read is the same either way.
///
/// A child keeps to the limits, writes nothing to standard output and standard error, and dies with this process;
/// what it hands over is checked. The fault of a file is the end of that child alone. This process reads PNG images
/// and pixels that stand in a scene itself, which is safe. Under the address sanitizer memory is not limited.
///
/// Reading here takes no limit of time and memory. Loaders may print; Assimp's logger, which the process has but one
/// of, is listened to meanwhile: not from two threads at a time.
///
/// Each function says in words, in @p reason, why a file did not read. What the reasons quote are bytes of a
/// stranger's choice. When a child did not come to its end: "reading it took longer than 60 s", "reading it crashed
/// (signal 11)", "reading it used more than 2 GiB", "reading it gave no sensible answer"; where none could be
/// started: "the program PATH, which reads files for others, does not start: No such file or directory".
class SC_API scReader
{
public:
    explicit scReader(scReadOptions options = {});

    /// Reads materials, embedded images and notes, in the scene's order, which take the place of those that @p scene
    /// has. OBJ with its MTL files and glTF 2 are read by readers of the library's own, which miss nothing, every
    /// other format by Assimp: docs/scene.md tells what becomes of each.
    /// @return whether there is a scene; else @p scene is as it was
    bool read_materials(std::string const& path, scScene& scene, std::string& reason) const;

    /// Reads surfaces, which take the place of those that @p scene has, and finds their materials in it. See
    /// gx_read_dmt_file for what is read and the limits of that.
    /// @return whether there is a surface; else @p scene is as it was
    bool read_surfaces(std::string const& path, scScene& scene, std::string& reason) const;

    /// @param format  as the name has it; where the content says otherwise, the content is believed
    /// @return a new image, or null
    dgCounted<dgDuctImage> read_image(std::string const& path, gxImageFileFormat format,
                                      std::string& reason) const;

    /// The like of an image that stood in a scene file.
    dgCounted<dgDuctImage> read_image(scImage const& image, std::string& reason) const;

    /// Whether files of the extension can be scenes.
    /// @param extension  in lower case, without the point
    static bool knows_extension(std::string const& extension);

private:
    scReadOptions m_options;
};
