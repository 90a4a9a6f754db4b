// The renderer interface: the seam to an application's own renderer.
#pragma once

#include "dgBase.h"
#include "dgDrawState.h"
#include "dgDuctImage.h"
#include "dgProjection.h"
#include "giBox.h"
#include "giTriBlock.h"
#include "gsColour.h"
#include "utExport.h"

/// The buffer that is drawn into.
enum dgDoubleBuffer
{
    dgFrontBuffer = 0,
    dgBackBuffer = 1
};

enum dgEraseZbuffer
{
    dgEraseColour = 0,
    dgEraseColourAndDepth = 1
};

enum dgImageType
{
    dgImageRGBA = 0
};

enum dgSetAlpha
{
    dgSetAlphaEverywhere = 0 ///< every pixel read gets the alpha that is given
};

/// Draws triangle blocks and hands back pixels.
///
/// A frame is: select_buffer, erase, draw for each block in order, begin_read_image, read_image,
/// end_read_image. dgView makes these calls from a scene; an application derives its own renderer from
/// this class. Called from one thread at a time.
class UT_API dgRenderer : public dgBase
{
public:
    /// The buffer that images are read from: 0 the front, 1 the back buffer.
    virtual int select_read_buffer() const = 0;
    virtual void select_read_buffer(int buffer) = 0;
    virtual void select_buffer(dgDoubleBuffer buffer) = 0;

    /// Begins a frame: fills at least the viewport with the background and, if asked, clears the depth.
    virtual void erase(giBox2 const& view_port, gsColour const& background, dgEraseZbuffer depth) = 0;

    /// Draws one block. What does not fit together is left out: a triangle with an index beyond the nodes or
    /// a node that is no finite point; normals or texture coordinates that are not as many as the nodes; a normal
    /// that is unset, not finite or without length. Where no node of a triangle has a normal, the triangle's own
    /// serves.
    virtual void draw(dgProjection const& projection, dgDrawState const& state, giTriBlock const& block) = 0;

    virtual void begin_read_image() = 0;

    /// A new image of width × height pixels whose lower left pixel is the frame's (x, y), with no references,
    /// or null when the renderer cannot give it.
    virtual dgDuctImage* read_image(dgImageType type, char const* name, int x, int y, int width, int height,
                                    dgSetAlpha set_alpha, short alpha) = 0;

    virtual void end_read_image() = 0;

protected:
    ~dgRenderer() override;
};
