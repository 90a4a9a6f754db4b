// One thumbnail after the other.
#pragma once

#include "commands.h"
#include "messages.h"
#include "thumbPlan.h"
#include "workers.h"

#include "mrPieChart.h"
#include "mrThumbAtts.h"

#include "scReader.h"

#include "dgCounted.h"
#include "dgOffscreenRenderer.h"

#include <optional>
#include <string>
#include <vector>

class mrFileMat;
class mrThumbnails;

namespace mrtool {

/// Makes thumbnails with the program's own choice of geometry and camera.
///
/// The renderer is made for the first material or mesh: images need none, and a process may be forked before.
/// The library keeps the images that it tints for the process's life.
class Thumbnailer
{
public:
    /// @param options  borrowed
    explicit Thumbnailer(ThumbOptions const& options);

    /// Makes and writes one. The messages are warnings, and why there is no thumbnail if there is none.
    JobResult make(ThumbJob const& job);

private:
    using Picture = dgCounted<dgDuctImage>;

    Picture picture(ThumbJob const& job);
    Picture of_material(std::string const& path);
    Picture of_meshes(std::string const& path);
    Picture of_image(ThumbJob const& job);

    bool start_renderer();
    mrThumbAtts atts_for(std::string const& path);
    Picture drawn(dgDuctImage* image);

    ThumbOptions const& m_options;
    scReader m_reader;
    Reports m_reports;
    dgCounted<dgOffscreenRenderer> m_renderer;
    std::optional<std::string> m_no_renderer; ///< why there is none, once it was tried
    giTriBlock m_sphere;
    mrThumbAtts::FaceCountTable m_blocks{mrInitialSize, mrFillLimit};
    mrPieChart m_pie_chart;
    std::vector<std::string> m_warnings; ///< of the thumbnail that is being made
    std::string m_reason;                ///< why there is none
};

} // namespace mrtool
