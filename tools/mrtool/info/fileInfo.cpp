#include "fileInfo.h"

#include "fileKind.h"

#include "mrFMFacet.h"
#include "mrFMTexture.h"
#include "mrImageBlock.h"
#include "mrSource.h"

#include "gxFileHints.h"
#include "utConcat.h"

#include <set>
#include <string_view>

namespace mrtool {

namespace {

void check_layers(mrFileMat const& material, std::vector<std::string>& warnings)
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
                                             ": there is no image ", ut_quote(layer.image_name().view())));
        }
    }
    for (auto const& [name, image] : material.images())
        if (!used.contains(name.view()))
            warnings.push_back("no layer uses the image " + ut_quote(name.view()));
}

void read_contents(mrSource const& source, FileInfo& info, MaterialContents& contents)
{
    mrFileMat& material = contents.material;
    mrFault fault;
    mrFaultcoDList remarks;
    info.status = material.read(source, {}, fault, &remarks);
    info.fault = fault.words().view();
    if (!info.is_read())
        return;
    check_layers(material, info.warnings);
    for (mrFault const& remark : remarks)
        info.warnings.emplace_back(remark.words().view());
}

void read_contents(mrSource const& source, FileInfo& info, PaletteFile& file)
{
    read_palette_file(source, file);
    info.status = file.status == mrPaletteFileOK ? mrFileMatReadOK : mrFileMatBadContent;
    if (!info.is_read()) {
        info.fault = file.remark;
        info.line = file.line;
    } else if (!file.remark.empty()) {
        info.warnings.push_back(ut_concat("line ", file.line, ": ", file.remark));
    }
}

} // namespace

void read_file_info(std::string const& path, FileInfo& info)
{
    info.path = path;
    utString reason;
    gxFile const file = gx_open_file(utString(path), reason);
    OwnFormat const format = detect_own_format(path, file ? gx_read_beginning(file.get()) : std::string());
    if (format == OwnFormat::palette)
        info.contents.emplace<PaletteFile>();
    else if (format == OwnFormat::image_cache)
        info.contents.emplace<CacheContents>();
    if (!file) {
        info.fault = reason.view();
        return;
    }
    mrSource const source = mrSource::from_descriptor(fileno(file.get()));
    std::visit([&](auto& contents) { read_contents(source, info, contents); }, info.contents);
}

} // namespace mrtool
