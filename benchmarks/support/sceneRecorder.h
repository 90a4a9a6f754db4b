// What the library asks a renderer to draw.
#pragma once

#include "bareOpenGL.h"

#include "dgRenderer.h"

/// Draws nothing and keeps what a picture is made of.
class SceneRecorder final : public dgRenderer
{
public:
    Scene scene;

    int select_read_buffer() const override { return dgBackBuffer; }
    void select_read_buffer(int) override {}
    void select_buffer(dgDoubleBuffer) override {}
    void erase(giBox2 const& view_port, gsColour const& background, dgEraseZbuffer) override
    {
        scene = {static_cast<int>(view_port.high().x), static_cast<int>(view_port.high().y), background, {}};
    }
    void draw(dgProjection const& projection, dgDrawState const& state, giTriBlock const& block) override
    {
        scene.draws.push_back({projection, state, &block});
    }
    void begin_read_image() override {}
    dgDuctImage* read_image(dgImageType, char const* name, int, int, int width, int height, dgSetAlpha,
                            short) override
    {
        return new dgDuctImage(name, width, height);
    }
    void end_read_image() override {}
};
