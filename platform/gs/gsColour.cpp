#include "gsColour.h"

#include "mlMath.h"

namespace {

int to_byte(double component)
{
    return static_cast<int>(mlMath::clip_to_range(component, 0.0, 1.0) * 255.0 + 0.5);
}

} // namespace

gsColour::gsColour(gsRGB const& colour)
    : m_red(colour.red() / 255.0), m_green(colour.green() / 255.0), m_blue(colour.blue() / 255.0)
{}

void gsColour::rgb(gsRGB& colour) const
{
    colour = gsRGB(to_byte(m_red), to_byte(m_green), to_byte(m_blue));
}
