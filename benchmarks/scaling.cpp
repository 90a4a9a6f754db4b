// The thumbnail of a large image, beside gdk-pixbuf's scaling.
#include "mrThumbnails.h"

#include "mrPieChart.h"

#include "support/material.h"
#include "support/sceneRecorder.h"
#include "support/table.h"

#include <benchmark/benchmark.h>
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdlib>

namespace {

constexpr int side = 256;

using Pixbuf = std::unique_ptr<GdkPixbuf, void (*)(gpointer)>;

Pixbuf scaled(GdkPixbuf const* image)
{
    // When it scales down, this averages all pixels that a new one covers, as the library does.
    return {gdk_pixbuf_scale_simple(image, side, side, GDK_INTERP_BILINEAR), g_object_unref};
}

bool look_alike(dgDuctImage const& ours, GdkPixbuf const* theirs)
{
    guchar const* const pixels = gdk_pixbuf_read_pixels(theirs);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side * 4; ++x)
            if (std::abs(ours.pixels()[y * side * 4 + x] - pixels[y * gdk_pixbuf_get_rowstride(theirs) + x]) >
                1)
                return false;
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    Picture const image = material_picture("large", 4096, 1);
    Pixbuf const same(gdk_pixbuf_new_from_data(image->pixels(), GDK_COLORSPACE_RGB, TRUE, 8, image->width(),
                                               image->height(), image->width() * 4, nullptr, nullptr),
                      g_object_unref);

    giTriBlock const block;
    mrThumbAtts::FaceCountTable blocks(mrInitialSize, mrFillLimit);
    blocks[1] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
    mrPieChart const pie_chart;
    mrThumbAtts const atts(side, side, gsRGB(180, 180, 180), gsRGB(240, 240, 240), giVector3(0, 0, 1),
                           giVector3(0, 1, 0), &block, &blocks, &pie_chart);
    auto const no_renderer = dg_hold(new SceneRecorder);
    mrThumbnails thumbnails(no_renderer.get(), atts);
    auto const ours = [&] { return dg_hold(thumbnails.from_image(*image)); };
    require(look_alike(*ours(), scaled(same.get()).get()), "the two pictures differ");

    table.compare(
        "from_image of 4096² to 256²", [&] { benchmark::DoNotOptimize(ours()); },
        {"gdk-pixbuf", [&] { benchmark::DoNotOptimize(scaled(same.get())); }}, 1.1);
}
