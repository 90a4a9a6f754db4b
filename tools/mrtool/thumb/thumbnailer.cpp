#include "thumbnailer.h"

#include "pendingFile.h"
#include "readFault.h"
#include "sphere.h"
#include "utConcat.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMTexture.h"
#include "mrImageBlock.h"
#include "mrSource.h"
#include "mrThumbnails.h"

#include "gxFileHints.h"

#include <algorithm>
#include <utility>

namespace mrtool {

namespace {

// Where meshes are seen from.
constexpr double right = 0.5;
constexpr double above = 0.45;
constexpr double front = 0.9;

// Of warnings of one kind; a file may hold as many faults as it likes.
constexpr std::size_t most_warnings = 20;

/// How the axes of a mesh file lie in the blocks that are read from it.
struct Axes
{
    char up;             ///< in the file, where nobody says otherwise
    bool turned = false; ///< whether the reader turns (x, y, z) into (x, z, -y)

    giVector3 in_block(giVector3 const& in_file) const
    {
        return turned ? giVector3(in_file.x, in_file.z, -in_file.y) : in_file;
    }
};

Axes axes_of(std::string const& path)
{
    std::string const extension = gx_extension(path);
    if (extension == "3ds" || extension == "prj")
        return {'z', true};
    return {extension == "stl" || extension == "ply" ? 'z' : 'y'};
}

/// In words, what the library reports as drawing goes on without an image.
std::vector<std::string> missing_images(mrFileMat const& material)
{
    std::vector<std::string> missing;
    int number = 0;
    for (mrFMFacet const* facet : material.facets()) {
        ++number;
        for (mrFMTexture const& layer : facet->textures())
            if (!material.images().read(layer.image_name()))
                missing.push_back(
                    ut_concat("facet ", number, ": there is no image \"", layer.image_name(), "\""));
    }
    if (missing.size() > most_warnings) {
        std::size_t const left = missing.size() - most_warnings;
        missing.resize(most_warnings);
        missing.push_back(ut_concat("there are no images for ", left, " more layers"));
    }
    return missing;
}

/// Whether the library reports this where a layer's image is missing.
bool speaks_of_missing_image(std::string const& report)
{
    // The latter are those of tinting it.
    constexpr char const* reports[] = {"Invalid image", "Args", "State", "Invalid resultant imsge"};
    return report.starts_with("No such images: ") ||
           std::find(std::begin(reports), std::end(reports), report) != std::end(reports);
}

} // namespace

Thumbnailer::Thumbnailer(ThumbOptions const& options) : m_options(options)
{
    fill_sphere(m_sphere);
    auto textured = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
    textured->append(&m_sphere);
    m_blocks[1] = std::move(textured);
}

JobResult Thumbnailer::make(ThumbJob const& job)
{
    m_warnings.clear();
    m_reason.clear();
    m_reports.take();
    Picture const image = picture(job);
    JobResult result;
    result.made = image && write_png(*image, job.output, m_reason);
    for (std::string const& report : m_reports.take())
        m_warnings.push_back(report);
    for (std::string const& warning : m_warnings)
        result.messages.push_back("warning: " + warning);
    if (!result.made)
        result.messages.push_back(m_reason);
    return result;
}

Thumbnailer::Picture Thumbnailer::picture(ThumbJob const& job)
{
    switch (job.file.kind) {
    case FileKind::material:
        return of_material(job.input);
    case FileKind::mesh:
        return of_meshes(job.input);
    default:
        return of_image(job);
    }
}

Thumbnailer::Picture Thumbnailer::of_material(std::string const& path)
{
    mrFileMat material;
    mrFault fault;
    mrFileMatReadStatus const status = material.read(mrSource::from_path(utString(path)), {}, fault);
    if (status != mrFileMatReadOK) {
        m_reason = describe_read_fault(status, fault);
        return nullptr;
    }
    if (!start_renderer())
        return nullptr;
    mrThumbnails thumbnails(m_renderer.get(), atts_for(path));
    if (material.facets().empty()) {
        m_warnings.emplace_back("there are no facets, so the picture is empty");
        return dg_hold(thumbnails.from_colour(m_options.background));
    }
    m_warnings = missing_images(material);
    Picture image = drawn(thumbnails.from_material(material));
    for (std::string const& report : m_reports.take())
        if (m_warnings.empty() || !speaks_of_missing_image(report))
            m_warnings.push_back(report);
    return image;
}

Thumbnailer::Picture Thumbnailer::of_meshes(std::string const& path)
{
    scScene scene;
    if (!m_reader.read_surfaces(path, scene, m_reason) || !start_renderer())
        return nullptr;
    giTriBlockcoDListPtrcoPtrcoDList blocks;
    for (scSurface const& surface : scene.surfaces)
        blocks.append(surface.block.get());
    mrThumbnails thumbnails(m_renderer.get(), atts_for(path));
    return drawn(thumbnails.from_meshes(blocks));
}

Thumbnailer::Picture Thumbnailer::of_image(ThumbJob const& job)
{
    Picture const image = m_reader.read_image(job.input, job.file.format, m_reason);
    if (!image)
        return nullptr;
    mrThumbnails thumbnails(m_renderer.get(), atts_for(job.input));
    m_reports.take(); // that there is no renderer, which an image does not need
    return dg_hold(thumbnails.from_image(*image));
}

bool Thumbnailer::start_renderer()
{
    if (!m_renderer && !m_no_renderer) {
        utString reason;
        m_renderer = dg_hold(dgOffscreenRenderer::create(reason));
        m_no_renderer = ut_concat("no renderer: ", reason);
    }
    if (!m_renderer)
        m_reason = *m_no_renderer;
    return m_renderer != nullptr;
}

mrThumbAtts Thumbnailer::atts_for(std::string const& path)
{
    Axes const axes = axes_of(path);
    // Where z is up, the front is seen along y.
    bool const z_up = m_options.up.value_or(axes.up) == 'z';
    giVector3 const normal = z_up ? giVector3(right, -front, above) : giVector3(right, above, front);
    giVector3 const up = z_up ? giVector3(0, 0, 1) : giVector3(0, 1, 0);
    return mrThumbAtts(m_options.width, m_options.height, gsRGB(180, 180, 180), m_options.background,
                       axes.in_block(normal), axes.in_block(up), &m_sphere, &m_blocks, &m_pie_chart);
}

Thumbnailer::Picture Thumbnailer::drawn(dgDuctImage* image)
{
    if (!image)
        m_reason = ut_concat("the renderer draws no picture of ", m_options.width, "x", m_options.height);
    return dg_hold(image);
}

} // namespace mrtool
