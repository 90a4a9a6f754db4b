#include "gsColour.h"

#include "mlMath.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double circle = 360.0;
constexpr double sixth = circle / 6.0;

int to_byte(double component)
{
    return static_cast<int>(mlMath::clip_to_range(component, 0.0, 1.0) * 255.0 + 0.5);
}

/// The angle as 0 to under 360; 0 for what is no number.
double in_circle(double angle)
{
    angle = std::fmod(angle, circle);
    if (angle < 0.0)
        angle += circle;
    return angle < circle ? angle : 0.0; // a very small angle below 0 is rounded up to the circle
}

/// @param high    the greatest of the components
/// @param spread  from the least to the greatest, above 0
double hue_of(double red, double green, double blue, double high, double spread)
{
    if (high == red)
        return in_circle(sixth * (green - blue) / spread);
    if (high == green)
        return sixth * (2.0 + (blue - red) / spread);
    return sixth * (4.0 + (red - green) / spread);
}

/// How far a component is from the lightness, -1 to 1 times the most that it can be.
/// @param sixths  from the hue at which the component begins to fall: it stays high for a sixth of the circle
///                on either side of its own hue, falls over the next, and is low for the two after that
double component_at(double sixths)
{
    if (sixths >= 6.0)
        sixths -= 6.0;
    return std::clamp(std::max(1.0 - 2.0 * sixths, 2.0 * sixths - 7.0), -1.0, 1.0);
}

} // namespace

gsColour::gsColour(gsRGB const& colour)
    : m_red(colour.red() / 255.0), m_green(colour.green() / 255.0), m_blue(colour.blue() / 255.0)
{}

void gsColour::rgb(gsRGB& colour) const
{
    colour = gsRGB(to_byte(m_red), to_byte(m_green), to_byte(m_blue));
}

void gsColour::hls(double* hls) const
{
    auto const [low, high] = std::minmax({m_red, m_green, m_blue});
    double const spread = high - low;
    double const sum = high + low;
    hls[0] = spread > 0.0 ? hue_of(m_red, m_green, m_blue, high, spread) : 0.0;
    hls[1] = sum / 2.0;
    hls[2] = spread > 0.0 ? spread / (sum <= 1.0 ? sum : 2.0 - high - low) : 0.0;
}

void gshls_to_rgb(double const* hls, double* rgb)
{
    double const sixths = in_circle(hls[0]) / sixth;
    double const lightness = hls[1];
    double const most = hls[2] * std::min(lightness, 1.0 - lightness);
    double const falls_at[] = {1.0, 3.0, 5.0};
    for (int i = 0; i < 3; ++i)
        rgb[i] = lightness + most * component_at(sixths + 6.0 - falls_at[i]);
}

// The curve of IEC 61966-2-1, written so that 1 stays 1.
double gsColour::linear_to_srgb(double linear)
{
    return linear > 0.0031308 ? 1.0 + 1.055 * (std::pow(linear, 1.0 / 2.4) - 1.0) : 12.92 * linear;
}
