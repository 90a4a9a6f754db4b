// mrtool thumb: thumbnails of materials, meshes and images.
#include "commands.h"
#include "messages.h"
#include "pendingFile.h"
#include "plainBlock.h"
#include "text.h"
#include "thumbPlan.h"
#include "untrustedReader.h"

#include "mrFileMat.h"
#include "mrPieChart.h"
#include "mrThumbAtts.h"
#include "mrThumbnails.h"

#include "dgOffscreenRenderer.h"

#include <algorithm>
#include <new>

namespace mrtool {

namespace {

using Picture = Counted<dgDuctImage>;

char const* what_became_of(mrFileMatReadStatus status)
{
    switch (status) {
    case mrFileMatOpenFailed:
        return "cannot be opened";
    case mrFileMatNoDocument:
        return "not a material file: the end of its document is missing";
    default:
        return "not a readable material file; mrtool info says where";
    }
}

/// The direction that is up in the blocks read from a file. Most formats, and Assimp for those that it turns,
/// 3DS for one, have y there.
char up_of(std::string const& path)
{
    std::string const extension = extension_of(path);
    return extension == "stl" || extension == "ply" ? 'z' : 'y';
}

/// Makes thumbnails with the program's own choice of geometry and camera.
class Thumbnailer
{
public:
    Thumbnailer(dgRenderer& renderer, ThumbOptions const& options) : m_renderer(renderer), m_options(options)
    {
        fill_sphere(m_sphere);
        auto textured = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        textured->append(&m_sphere);
        m_blocks[1] = std::move(textured);
    }

    /// @param reason  receives in words why there is no picture
    Picture make(ThumbJob const& job, std::string& reason)
    {
        // Where z is up, the front is seen along y.
        bool const z_up = m_options.up.value_or(up_of(job.input)) == 'z';
        giVector3 const normal = z_up ? giVector3(right, -front, above) : giVector3(right, above, front);
        giVector3 const up = z_up ? giVector3(0, 0, 1) : giVector3(0, 1, 0);
        mrThumbAtts const atts(m_options.width, m_options.height, gsRGB(180, 180, 180), m_options.background,
                               normal, up, &m_sphere, &m_blocks, &m_pie_chart);
        mrThumbnails thumbnails(&m_renderer, atts);
        switch (job.file.kind) {
        case FileKind::material:
            return of_material(thumbnails, job.input, reason);
        case FileKind::mesh:
            return of_meshes(thumbnails, job.input, reason);
        default:
            return of_image(thumbnails, job, reason);
        }
    }

private:
    // Where meshes are seen from.
    static constexpr double right = 0.5;
    static constexpr double above = 0.45;
    static constexpr double front = 0.9;

    Picture of_material(mrThumbnails& thumbnails, std::string const& path, std::string& reason)
    {
        mrFileMat material;
        mrFileMatReadStatus const status = material.read(utString(path));
        if (status != mrFileMatReadOK) {
            reason = what_became_of(status);
            return nullptr;
        }
        return drawn(thumbnails.from_material(material), reason);
    }

    Picture of_meshes(mrThumbnails& thumbnails, std::string const& path, std::string& reason)
    {
        Meshes meshes;
        if (!m_reader.meshes(path, meshes, reason))
            return nullptr;
        return drawn(thumbnails.from_meshes(meshes.blocks), reason);
    }

    Picture of_image(mrThumbnails& thumbnails, ThumbJob const& job, std::string& reason)
    {
        Picture const image = m_reader.image(job.input, job.file.format, reason);
        return image ? hold(thumbnails.from_image(*image)) : nullptr;
    }

    Picture drawn(dgDuctImage* image, std::string& reason)
    {
        if (!image)
            reason = text("the renderer draws no picture of ", m_options.width, "x", m_options.height);
        return hold(image);
    }

    dgRenderer& m_renderer;
    ThumbOptions const& m_options;
    UntrustedReader m_reader;
    giTriBlock m_sphere;
    mrThumbAtts::FaceCountTable m_blocks{mrInitialSize, mrFillLimit};
    mrPieChart m_pie_chart;
};

/// @return whether the thumbnail was made and written
bool make_thumbnail(Thumbnailer& thumbnailer, ThumbJob const& job, Reports& reports)
{
    std::string reason;
    bool made = false;
    try {
        Picture const picture = thumbnailer.make(job, reason);
        made = picture && write_png(*picture, job.output, reason);
    } catch (std::bad_alloc const&) {
        reason = "not enough memory";
    }
    for (std::string const& report : reports.take())
        say(job.input, "warning: " + report);
    if (!made)
        say(job.input, reason);
    return made;
}

} // namespace

int run_thumb(ThumbOptions const& options)
{
    ThumbPlan const plan = plan_thumbs(options.inputs, options.output);
    if (!plan.wrong_usage.empty())
        throw WrongUsage{plan.wrong_usage};
    int status = plan.failures.empty() ? all_well : something_failed;
    for (Failure const& failure : plan.failures)
        say(failure.path, failure.reason);
    if (plan.jobs.empty()) {
        if (plan.failures.empty())
            say("thumb", "no material, mesh or image file is there");
        return status;
    }

    utString reason;
    Counted<dgOffscreenRenderer> const renderer = hold(dgOffscreenRenderer::create(reason));
    if (!renderer) {
        say("thumb", std::string("no renderer: ") + reason.c_str());
        return something_failed;
    }
    Reports reports;
    Thumbnailer thumbnailer(*renderer, options);
    Progress progress(plan.jobs.size());
    for (ThumbJob const& job : plan.jobs) {
        progress.begin(job.input);
        if (!make_thumbnail(thumbnailer, job, reports))
            status = something_failed;
    }
    return status;
}

} // namespace mrtool
