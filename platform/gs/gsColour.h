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
    /// Each component divided by 255.
    gsColour(gsRGB const& colour);

    double red() const { return m_red; }
    double green() const { return m_green; }
    double blue() const { return m_blue; }

    /// The nearest 8-bit colour; components beyond 0 to 1 are taken as the nearer of the two.
    void rgb(gsRGB& colour) const;

    bool operator==(gsColour const&) const = default;

private:
    double m_red = 0.0;
    double m_green = 0.0;
    double m_blue = 0.0;
};
