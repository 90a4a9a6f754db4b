// Making thumbnails, one after the other.
#pragma once

#include "fault.h"
#include "reports.h"
#include "thumbPlan.h"
#include "workers.h"

#include "mrPieChart.h"
#include "mrThumbAtts.h"
#include "scReader.h"

#include "dgOffscreenRenderer.h"

namespace mrtool {

/// The look of thumbnails.
struct ThumbStyle
{
    static constexpr int max_side = 8191;

    int width = 256; ///< pixels, 1 to max_side
    int height = 256;
    std::optional<char> up; ///< 'y' or 'z'; by the format of a mesh when not set
    gsRGB background{240, 240, 240};
};

/// Makes thumbnails with the program's own choice of geometry and camera.
///
/// The renderer is made for the first material or mesh: images need none, and a process can be forked before. The
/// library keeps tinted images until the process ends.
class Thumbnailer
{
public:
    /// @param reading  how files from strangers are read
    explicit Thumbnailer(ThumbStyle const& style, scReadOptions const& reading = {});

    /// Makes and writes a thumbnail. The messages are warnings, and the failure if there is no thumbnail.
    JobResult make(ThumbJob const& job);

private:
    using Picture = dgCounted<dgDuctImage>;

    Result<Picture> draw(ThumbJob const& job);
    Result<Picture> draw_material(ThumbJob const& job);
    Result<Picture> draw_meshes(ThumbJob const& job);
    Result<Picture> draw_image(ThumbJob const& job);

    Result<> start_renderer();
    void warm_up(std::string const& path);
    mrThumbAtts make_atts(std::string const& path);
    Result<Picture> check_drawn(dgDuctImage* image) const;
    void warn_if_empty(dgDuctImage const& picture, giTriBlockcoDListPtrcoPtrcoDList const& blocks);
    void warn(std::vector<std::string> const& warnings);

    ThumbStyle const m_style;
    scReader m_reader;
    Reports m_reports;
    dgCounted<dgOffscreenRenderer> m_renderer;
    std::optional<Fault> m_no_renderer; ///< why it could not be made
    giTriBlock m_sphere;
    mrThumbAtts::FaceCountTable m_blocks{mrInitialSize, mrFillLimit};
    mrPieChart m_pie_chart;
    std::vector<std::string> m_warnings; ///< of the current thumbnail
};

} // namespace mrtool
