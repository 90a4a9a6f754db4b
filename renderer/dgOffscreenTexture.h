// An image in the form that OpenGL draws.
#pragma once

#include "dgDrawState.h"

/// A texture for one drawing, bound for as long as it lives.
class dgOffscreenTexture
{
public:
    /// Copies the image, scaled down where the driver takes none of its size.
    /// @param state  its image is not null and not empty
    explicit dgOffscreenTexture(dgTextureState const& state);
    dgOffscreenTexture(dgOffscreenTexture const&) = delete;
    dgOffscreenTexture& operator=(dgOffscreenTexture const&) = delete;
    ~dgOffscreenTexture();

    /// Whether there was memory enough for it.
    explicit operator bool() const { return m_ready; }

private:
    unsigned m_texture = 0;
    bool m_ready = false;
};
