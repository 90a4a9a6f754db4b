// A renderer that needs no window and no display.
#pragma once

#include "dgOffscreenExport.h"
#include "dgRenderer.h"
#include "utString.h"

#include <memory>

/// Draws with OpenGL 3.3 core through EGL: on a GPU driver, or on Mesa's software renderer
/// without one. Needs no DISPLAY, no environment, no home folder and no /dev/dri.
///
/// One white directional light from (-0.35, 0.35, 0.87) in view space, of intensity 1.1, and ambient light of
/// 5.2; colours are used as they are, without gamma; 4 samples a pixel. A texture larger than the driver
/// takes is drawn scaled down. Both buffer numbers mean its one colour buffer.
///
/// The frame reaches from (0, 0) to the viewport's upper corner; erase fills all of it, drawing keeps to the
/// viewport. read_image is null for a part that is not within the frame, and for a frame of more than
/// 8,192 × 8,192 pixels, one that the driver has no room for, or one in which memory ran out.
///
/// Its OpenGL context is current only while one of its functions runs; the EGL context that was current
/// before is current again afterwards. Several renderers may live at once. EGL displays, which a process
/// shares, are never terminated.
class DG_OFFSCREEN_API dgOffscreenRenderer final : public dgRenderer
{
public:
    /// Starts a renderer. What a driver says on standard error as it starts is dropped.
    /// @param reason  receives in words what is missing when it cannot be started, memory too; left alone otherwise
    /// @return a new renderer without references, or null
    static dgOffscreenRenderer* create(utString& reason);

    /// The driver's name for what draws, "llvmpipe (LLVM 15.0.6, 256 bits)" for example.
    utString const& device() const;

    int select_read_buffer() const override;
    void select_read_buffer(int buffer) override;
    void select_buffer(dgDoubleBuffer buffer) override;
    void erase(giBox2 const& view_port, gsColour const& background, dgEraseZbuffer depth) override;
    void draw(dgProjection const& projection, dgDrawState const& state, giTriBlock const& block) override;
    void begin_read_image() override;
    dgDuctImage* read_image(dgImageType type, char const* name, int x, int y, int width, int height,
                            dgSetAlpha set_alpha, short alpha) override;
    void end_read_image() override;

private:
    struct State;

    /// As create(), but throws std::bad_alloc.
    static dgOffscreenRenderer* start(utString& reason);

    explicit dgOffscreenRenderer(std::unique_ptr<State> state);
    ~dgOffscreenRenderer() override;

    std::unique_ptr<State> m_state;
};
