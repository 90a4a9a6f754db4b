// Where a picture is sampled, and which triangles lie between the samples.
#pragma once

#include <vector>

/// Tells triangles that cover no sample of a picture. In a mesh that has more triangles than the picture has samples
/// most do: drawing them changes no pixel and takes longer than to find them.
class dgOffscreenSamples
{
public:
    /// Samples as the framebuffer has them that is bound for drawing.
    /// @param width, height  of the picture
    dgOffscreenSamples(int width, int height);

    /// Whether a triangle may cover a sample; surely so, unless it is smaller than a pixel.
    /// @param a, b, c  x and y of its corners, in normalised device coordinates
    bool reached(float const* a, float const* b, float const* c) const;

private:
    /// From the lower left corner of a picture or of a pixel, in parts of a pixel.
    struct Spot
    {
        int x;
        int y;
    };

    Spot spot(float const* place) const;
    bool is_near(Spot const* corners, Spot place) const;

    float m_half_width;
    float m_half_height;
    int m_margin;                ///< by which a driver may move a corner
    std::vector<Spot> m_samples; ///< of a pixel
};
