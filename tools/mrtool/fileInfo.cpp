#include "fileInfo.h"

#include "materialDocument.h"
#include "materialFault.h"
#include "text.h"

#include "mrFMFacet.h"
#include "mrFMTexture.h"
#include "mrXMLUtils.h"

#include <filesystem>
#include <set>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

mrImageEncapsulationType encapsulation_of(std::string const& path)
{
    MaterialDocument document;
    read_material_document(path, document);
    int word = mrImageEncapsulationNone;
    if (xmlElement const* root = document.document.document_element())
        mrXMLUtils::find_child_text_enum(*root, "image_encapsulation_type",
                                         mrTypes::parse_mrImageEncapsulationType, word);
    return static_cast<mrImageEncapsulationType>(word);
}

std::vector<std::string> warnings_of(mrFileMat const& material)
{
    std::vector<std::string> warnings;
    std::set<std::string_view> used;
    int facet_number = 0;
    for (mrFMFacet const* facet : material.facets()) {
        ++facet_number;
        int layer_number = 0;
        for (mrFMTexture const& layer : facet->textures()) {
            ++layer_number;
            used.insert(layer.image_name().view());
            if (!material.images().member(layer.image_name()))
                warnings.push_back(text("facet ", facet_number, ", layer ", layer_number,
                                        ": there is no image \"", layer.image_name(), "\""));
        }
    }
    for (auto const& [name, image] : material.images())
        if (!used.contains(name.view()))
            warnings.push_back(text("no layer uses the image \"", name, "\""));
    return warnings;
}

} // namespace

void read_file_info(std::string const& path, FileInfo& info)
{
    info.path = path;
    std::error_code failed;
    fs::file_status const status = fs::status(path, failed);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        info.fault = fs::is_directory(status) ? "a folder, not a file" : "not a file";
        return;
    }
    info.status = info.material.read(utString(path));
    if (info.status != mrFileMatReadOK) {
        info.fault = material_fault(path, info.status);
        return;
    }
    info.encapsulation = encapsulation_of(path);
    info.warnings = warnings_of(info.material);
}

} // namespace mrtool
