// The same picture as the renderer's, by OpenGL and nothing else.
#pragma once

#include "dgDrawState.h"
#include "dgProjection.h"
#include "giTriBlock.h"

#include <memory>
#include <vector>

/// What one picture is made of. Blocks and images are borrowed.
struct Scene
{
    struct Draw
    {
        dgProjection projection;
        dgDrawState state;
        giTriBlock const* block;
    };

    int width = 0;
    int height = 0;
    gsColour background;
    std::vector<Draw> draws;
};

/// Draws scenes that are known to be sound: what can be wrong with a block is not looked for. The context is
/// chosen, and the program shades, as the renderer's do; the rest is done as plainly as OpenGL allows.
///
/// Ends the program when there is no OpenGL.
class BareOpenGL
{
public:
    /// @param width, height  of every picture
    BareOpenGL(int width, int height);
    ~BareOpenGL();
    BareOpenGL(BareOpenGL const&) = delete;
    BareOpenGL& operator=(BareOpenGL const&) = delete;

    /// Converts and uploads blocks and images, draws, resolves, reads back, and frees what was uploaded.
    /// @return four bytes a pixel, rows from the bottom
    std::vector<unsigned char> frame(Scene const& scene);

    /// Uploads a scene once, for frame() without arguments.
    void keep(Scene const& scene);
    /// Draws what keep() uploaded, resolves and reads back.
    std::vector<unsigned char> frame();

private:
    struct State;
    std::unique_ptr<State> m_state;
};
