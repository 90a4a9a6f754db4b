// A program that draws one frame of a plain sphere and reads it back. It links what that takes, no more.
#include "bareOpenGL.h"

#include "sphere.h"

int main()
{
    constexpr int side = 256;
    giTriBlock sphere;
    mrtool::fill_sphere(sphere);
    dgProjection projection;
    projection.scale = side * 0.46;
    projection.view_port = giBox2({0, 0}, {side, side});
    dgDrawState state;
    state.surface = gsColour(0.8, 0.1, 0.1);
    state.reflection = {0.1, 0.5, 0.0, 0.5, 100.0, gsColour(1, 1, 1), gsColour(0, 0, 0)};

    BareOpenGL opengl(side, side);
    std::vector<unsigned char> const pixels =
        opengl.frame({side, side, gsColour(0.9, 0.9, 0.9), {{projection, state, &sphere}}});
    std::size_t const middle = (side / 2 * side + side / 2) * 4;
    return pixels[middle] > pixels[middle + 1] ? 0 : 1; // red where the sphere is
}
