#include "thumbnailer.h"

#include "outputFile.h"
#include "readFile.h"
#include "sphere.h"
#include "utConcat.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMTexture.h"
#include "mrImageBlock.h"
#include "mrSource.h"
#include "mrThumbnails.h"

#include "gsTriUtils.h"
#include "gxFileHints.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <numbers>

namespace mrtool {

namespace {

// The direction from which meshes are seen.
constexpr double right = 0.5;
constexpr double above = 0.45;
constexpr double front = 0.9;

/// How the axes of a mesh file lie in the blocks that are read from it.
struct Axes
{
    char up;             ///< in the file, unless the user says otherwise
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

/// A warning for each layer without an image, up to a number; a file may hold any number of them.
std::vector<std::string> find_missing_images(mrFileMat const& material)
{
    constexpr std::size_t most_warnings = 20;
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

bool has_area(giTriBlock const& block)
{
    giBoxArrPoint3 const& nodes = block.nodes();
    auto const node = [&nodes](int index) {
        // Nobody checked that there is such a node.
        auto const at = static_cast<std::size_t>(index);
        giPoint3 const point = at < nodes.size() ? nodes[at] : giPoint3();
        return giVector3(point.x, point.y, point.z);
    };
    return std::any_of(block.triangles().begin(), block.triangles().end(), [&](giTri const& tri) {
        return (node(tri.b) - node(tri.a)).cross(node(tri.c) - node(tri.a)).length() > 0.0;
    });
}

} // namespace

Thumbnailer::Thumbnailer(ThumbStyle const& style, scReadOptions const& reading)
    : m_style(style), m_reader(reading)
{
    fill_sphere(m_sphere);
    auto textured = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
    textured->append(&m_sphere);
    m_blocks[1] = std::move(textured);
}

JobResult Thumbnailer::make(ThumbJob const& job)
{
    m_warnings.clear();
    m_reports.pop();
    Result<> const written =
        draw(job).and_then([&](Picture const& picture) { return write_png(*picture, job.output); });
    warn(m_reports.pop());
    JobResult result{written.has_value(), {}};
    for (std::string const& warning : m_warnings)
        result.messages.push_back("warning: " + warning);
    if (!written)
        result.messages.push_back(written.error().words);
    return result;
}

Result<Thumbnailer::Picture> Thumbnailer::draw(ThumbJob const& job)
{
    switch (job.file.kind) {
    case FileKind::material:
        return draw_material(job);
    case FileKind::mesh:
        return draw_meshes(job);
    default:
        return draw_image(job);
    }
}

Result<Thumbnailer::Picture> Thumbnailer::draw_material(ThumbJob const& job)
{
    mrFileMat material;
    mrFault fault;
    mrFileMatReadStatus const status = material.read(mrSource::from_path(utString(job.path)), {}, fault);
    if (status != mrFileMatReadOK)
        return fail(describe_read_fault(status, fault.words().view()));
    if (Result<> const started = start_renderer(); !started)
        return tl::unexpected(started.error());
    mrThumbnails thumbnails(m_renderer.get(), make_atts(job.path));
    if (material.facets().empty()) {
        warn({"there are no facets, so the picture is empty"});
        return dg_hold(thumbnails.from_colour(m_style.background));
    }
    std::vector<std::string> const missing = find_missing_images(material);
    if (missing.empty())
        return check_drawn(thumbnails.from_material(material));
    warn(missing);
    warn(m_reports.pop());
    dgDuctImage* const image = thumbnails.from_material(material);
    m_reports.pop(); // they repeat which images are missing
    return check_drawn(image);
}

Result<Thumbnailer::Picture> Thumbnailer::draw_meshes(ThumbJob const& job)
{
    scScene scene;
    std::string reason;
    // The child that reads and this process, which makes the renderer meanwhile, have a processor each.
    std::future<bool> reading =
        std::async(std::launch::async, [&] { return m_reader.read_surfaces(job.path, scene, reason); });
    bool const is_new = !m_renderer;
    Result<> const started = start_renderer();
    if (started && is_new)
        warm_up(job.path);
    if (!reading.get())
        return fail(reason);
    if (!started)
        return tl::unexpected(started.error());
    giTriBlockcoDListPtrcoPtrcoDList blocks;
    for (scSurface const& surface : scene.surfaces)
        blocks.append(surface.block.get());
    mrThumbnails thumbnails(m_renderer.get(), make_atts(job.path));
    Result<Picture> picture = check_drawn(thumbnails.from_meshes(blocks));
    if (picture)
        warn_if_empty(**picture, blocks);
    return picture;
}

Result<Thumbnailer::Picture> Thumbnailer::draw_image(ThumbJob const& job)
{
    std::string reason;
    Picture const image = m_reader.read_image(job.path, job.file.format, reason);
    if (!image)
        return fail(reason);
    mrThumbnails thumbnails(m_renderer.get(), make_atts(job.path));
    m_reports.pop(); // that there is no renderer, which an image does not need
    return dg_hold(thumbnails.from_image(*image));
}

Result<> Thumbnailer::start_renderer()
{
    if (!m_renderer && !m_no_renderer) {
        utString reason;
        m_renderer = dg_hold(dgOffscreenRenderer::create(reason));
        if (!m_renderer)
            m_no_renderer = Fault{ut_concat("no renderer: ", reason)};
    }
    if (!m_renderer)
        return tl::unexpected(*m_no_renderer);
    return {};
}

/// Draws a triangle for nobody: the driver compiles at its first drawing, which takes as long as all else.
void Thumbnailer::warm_up(std::string const& path)
{
    giTriBlock block;
    giBoxArrPoint3& nodes = gsTriUtils::check_out_nodes(block);
    for (giPoint3 const& node : {giPoint3{0, 0, 0}, giPoint3{1, 0, 0}, giPoint3{0, 1, 0}})
        nodes.append(node);
    gsTriUtils::check_out_normals(block).assign(3, giVector3(0, 0, 1));
    gsTriUtils::check_out_triangles(block).push_back({0, 1, 2});
    dg_hold(mrThumbnails(m_renderer.get(), make_atts(path)).from_mesh(block));
}

mrThumbAtts Thumbnailer::make_atts(std::string const& path)
{
    Axes const axes = axes_of(path);
    // With z up, the front is seen along y.
    bool const z_up = m_style.up.value_or(axes.up) == 'z';
    giVector3 const normal = z_up ? giVector3(right, -front, above) : giVector3(right, above, front);
    giVector3 const up = z_up ? giVector3(0, 0, 1) : giVector3(0, 1, 0);
    return mrThumbAtts(m_style.width, m_style.height, gsRGB(180, 180, 180), m_style.background,
                       axes.in_block(normal), axes.in_block(up), &m_sphere, &m_blocks, &m_pie_chart);
}

Result<Thumbnailer::Picture> Thumbnailer::check_drawn(dgDuctImage* image) const
{
    if (!image)
        return fail(ut_concat("the renderer draws no picture of ", m_style.width, "x", m_style.height));
    return dg_hold(image);
}

void Thumbnailer::warn_if_empty(dgDuctImage const& picture, giTriBlockcoDListPtrcoPtrcoDList const& blocks)
{
    dgCounted<dgDuctImage> const empty =
        dg_hold(mrThumbnails(m_renderer.get(), make_atts("")).from_colour(m_style.background));
    if (!picture.equal(empty.get()))
        return;
    bool const area = std::any_of(blocks.begin(), blocks.end(), [](auto* block) { return has_area(*block); });
    warn({area ? "no triangle is large enough to be seen, so the picture is empty"
               : "no triangle has an area, so the picture is empty"});
}

void Thumbnailer::warn(std::vector<std::string> const& warnings)
{
    m_warnings.insert(m_warnings.end(), warnings.begin(), warnings.end());
}

} // namespace mrtool
