// An image in the form that OpenGL draws.
#pragma once

#include "dgDrawState.h"

/// A texture for one drawing, bound for as long as it lives.
class dgOffscreenTexture
{
public:
    /// Copies the image, scaled down when it is too large for the driver.
    /// @param state  its image is not null and not empty
    explicit dgOffscreenTexture(dgTextureState const& state);
    dgOffscreenTexture(dgOffscreenTexture const&) = delete;
    dgOffscreenTexture& operator=(dgOffscreenTexture const&) = delete;
    ~dgOffscreenTexture();

    /// False when memory ran out.
    explicit operator bool() const { return m_ready; }

private:
    unsigned m_texture = 0;
    bool m_ready = false;
};
