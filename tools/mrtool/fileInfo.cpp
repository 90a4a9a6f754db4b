#include "fileInfo.h"

#include "imageBlock.h"
#include "materialDocument.h"
#include "materialFault.h"
#include "messages.h"
#include "text.h"

#include "mrFMFacet.h"
#include "mrFMTexture.h"
#include "mrXMLUtils.h"

#include <filesystem>
#include <set>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

using Warnings = std::vector<std::string>;

mrImageEncapsulationType encapsulation_of(MaterialDocument const& document)
{
    int word = mrImageEncapsulationNone;
    if (xmlElement const* root = document.document.document_element())
        mrXMLUtils::find_child_text_enum(*root, "image_encapsulation_type",
                                         mrTypes::parse_mrImageEncapsulationType, word);
    return static_cast<mrImageEncapsulationType>(word);
}

void check_layers(mrFileMat const& material, Warnings& warnings)
{
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
                                        ": there is no image ", in_quotes(layer.image_name().view())));
        }
    }
    for (auto const& [name, image] : material.images())
        if (!used.contains(name.view()))
            warnings.push_back("no layer uses the image " + in_quotes(name.view()));
}

/// What the library passes over in the image block.
void check_images(ImageBlock const& block, Warnings& warnings)
{
    std::set<std::string_view> titles;
    int number = 0;
    for (std::string const& title : block.titles) {
        ++number;
        if (title.empty())
            warnings.push_back(text("image ", number, " has no title and is left out"));
        else if (!titles.insert(title).second)
            warnings.push_back(text("image ", number, " takes the place of an earlier one with the title ",
                                    in_quotes(title)));
    }
    if (block.rest > 0)
        warnings.push_back(text("the last ", block.rest, " bytes of the file are no image and are left out"));
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
    MaterialDocument document;
    read_material_document(path, document);
    info.encapsulation = encapsulation_of(document);
    check_layers(info.material, info.warnings);
    if (info.encapsulation != mrImageEncapsulationNone)
        check_images(read_image_block(path, document.images_start), info.warnings);
    else if (image_begins_at(path, document.images_start))
        info.warnings.push_back("images follow a document that says there are none; they are left out");
}

} // namespace mrtool
