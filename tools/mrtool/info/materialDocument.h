// The document of a material file, apart from what it means.
#pragma once

#include "xmlDocument.h"

#include <string>

namespace mrtool {

/// The "multimat" document of a file.
struct MaterialDocument
{
    xmlDocument document;
    /// Why there is none, with the line in the file; empty when there is one.
    std::string fault;
    /// Where the image block begins, in bytes.
    long images_start = 0;
};

/// @param document  a new one, to be filled
void read_material_document(std::string const& path, MaterialDocument& document);

} // namespace mrtool
