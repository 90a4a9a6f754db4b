// The frame buffers that a picture is drawn into and read from.
#pragma once

#include "gsColour.h"

/// A multisampled picture of 4 samples a pixel, and the plain one that it is read through.
///
/// Its OpenGL objects belong to the context that is current when it is first used, and go with it.
class dgOffscreenTarget
{
public:
    /// 8192 × 8192 pixels; with its samples such a picture takes 2.3 GB.
    static constexpr long long most_pixels = 1LL << 26;

    /// Prepares for drawing; keeps its buffers while the size stays the same.
    /// @return false, and no size, when the driver cannot give a picture of this size
    bool resize(int width, int height);

    /// 0 without a picture.
    int width() const { return m_width; }
    int height() const { return m_height; }

    /// Fills all of it with the colour.
    void clear(gsColour const& colour, bool with_depth) const;

    /// Makes it the target of drawing.
    void bind() const;

    /// Copies pixels out, four bytes each, rows from the bottom.
    /// @param pixels  room for 4 × width × height bytes; the rectangle lies within the picture
    void read(int x, int y, int width, int height, unsigned char* pixels) const;

private:
    bool allocate(int width, int height);

    unsigned m_drawn = 0; // the framebuffers
    unsigned m_resolved = 0;
    unsigned m_colour = 0; // their buffers
    unsigned m_depth = 0;
    unsigned m_resolved_colour = 0;
    int m_width = 0;
    int m_height = 0;
};
