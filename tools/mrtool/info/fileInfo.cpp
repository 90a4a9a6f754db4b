#include "fileInfo.h"

#include "fileKind.h"
#include "imageBlock.h"
#include "materialDocument.h"
#include "materialFault.h"
#include "messages.h"
#include "utConcat.h"

#include "mrFMFacet.h"
#include "mrFMTexture.h"
#include "mrXMLUtils.h"

#include <set>

namespace mrtool {

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
                warnings.push_back(ut_concat("facet ", facet_number, ", layer ", layer_number,
                                             ": there is no image ", in_quotes(layer.image_name().view())));
        }
    }
    for (auto const& [name, image] : material.images())
        if (!used.contains(name.view()))
            warnings.push_back("no layer uses the image " + in_quotes(name.view()));
}

void read_material(std::string const& path, ReadOutcome& outcome, MaterialContents& contents)
{
    outcome.status = contents.material.read(utString(path));
    if (!outcome.read()) {
        outcome.fault = material_fault(path, outcome.status);
        return;
    }
    MaterialDocument document;
    read_material_document(path, document);
    contents.encapsulation = encapsulation_of(document);
    check_layers(contents.material, outcome.warnings);
    if (contents.encapsulation != mrImageEncapsulationNone)
        check_images(read_image_block(path, document.images_start), outcome.warnings);
    else if (image_begins_at(path, document.images_start))
        outcome.warnings.push_back("images follow a document that says there are none; they are left out");
}

mrFileMatReadStatus status_of(mrPaletteFileError error)
{
    switch (error) {
    case mrPaletteFileOK:
        return mrFileMatReadOK;
    case mrPaletteFileOpenFailed:
        return mrFileMatOpenFailed;
    default:
        return mrFileMatBadContent;
    }
}

void read_palette(std::string const& path, ReadOutcome& outcome, PaletteFile& file)
{
    read_palette_file(path, file);
    outcome.status = status_of(file.status);
    if (!outcome.read()) {
        outcome.fault = file.remark;
        outcome.line = file.line;
    } else if (!file.remark.empty()) {
        outcome.warnings.push_back(ut_concat("line ", file.line, ": ", file.remark));
    }
}

} // namespace

void read_file_info(std::string const& path, FileInfo& info)
{
    info.path = path;
    switch (own_format(path)) {
    case OwnFormat::palette:
        return read_palette(path, info.outcome, info.contents.emplace<PaletteFile>());
    case OwnFormat::image_cache:
        info.outcome = read_cache_file(path, info.contents.emplace<CacheContents>());
        return;
    default:
        return read_material(path, info.outcome, info.contents.emplace<MaterialContents>());
    }
}

} // namespace mrtool
