// A part of an application that comes and goes, with the renderer.
#include "dgCounted.h"
#include "dgOffscreenRenderer.h"

/// Draws a picture of nothing.
/// @return 0, or -1 when there is none
extern "C" __attribute__((visibility("default"))) int use()
{
    utString reason;
    auto const renderer = dg_hold(dgOffscreenRenderer::create(reason));
    if (!renderer)
        return -1;
    renderer->erase(giBox2({0, 0}, {8, 8}), gsColour(), dgEraseColourAndDepth);
    dgCounted<dgDuctImage> const picture(
        renderer->read_image(dgImageRGBA, "", 0, 0, 8, 8, dgSetAlphaEverywhere, 255));
    return picture ? 0 : -1;
}
