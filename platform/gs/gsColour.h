// The colour that renderers take.
#pragma once

#include "gsRGB.h"
#include "utExport.h"

/// Red, green and blue as real numbers, 0 to 1; black by default.
class UT_API gsColour
{
public:
    gsColour() = default;
    gsColour(double red, double green, double blue) : m_red(red), m_green(green), m_blue(blue) {}
    /// @param rgb  red, green, blue
    explicit gsColour(double const* rgb) : gsColour(rgb[0], rgb[1], rgb[2]) {}
    /// Each component divided by 255.
    gsColour(gsRGB const& colour);

    double red() const { return m_red; }
    double green() const { return m_green; }
    double blue() const { return m_blue; }

    /// The nearest 8-bit colour; components beyond 0 to 1 are taken as the nearer of the two.
    void rgb(gsRGB& colour) const;

    /// Fills in the hue, in degrees from 0 to under 360 (0 for a grey), the lightness and the saturation,
    /// 0 to 1 each; of components from 0 to 1.
    /// @param hls  room for three numbers, in this order
    void hls(double* hls) const;

    /// The component that sRGB has for one that is proportional to light, both 0 to 1; 0.216 becomes 0.502.
    /// What is beyond the range stays beyond it.
    static double linear_to_srgb(double linear);

    bool operator==(gsColour const&) const = default;

private:
    double m_red = 0.0;
    double m_green = 0.0;
    double m_blue = 0.0;
};

/// Red, green and blue of a hue, a lightness and a saturation: what gsColour::hls undoes.
/// @param hls  as gsColour::hls fills it; a hue beyond its range is taken as an angle, one that is no
///             number as 0
/// @param rgb  room for three numbers, 0 to 1 each for a lightness and a saturation from 0 to 1
UT_API void gshls_to_rgb(double const* hls, double* rgb);
