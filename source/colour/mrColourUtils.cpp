#include "mrColourUtils.h"

#include "gsColour.h"

#include <algorithm>
#include <cstdint>

void mrColourUtils::rgb2hls(gsRGB const& colour, double* hls)
{
    gsColour(colour).hls(hls);
}

gsRGB mrColourUtils::hls2rgb(double* hls)
{
    double components[3];
    gshls_to_rgb(hls, components);
    gsRGB colour;
    gsColour(components).rgb(colour);
    return colour;
}

double mrColourUtils::hue(gsRGB const& colour)
{
    double hls[3];
    rgb2hls(colour, hls);
    return hls[0];
}

double mrColourUtils::lightness(gsRGB const& colour)
{
    double hls[3];
    rgb2hls(colour, hls);
    return hls[1];
}

double mrColourUtils::saturation(gsRGB const& colour)
{
    double hls[3];
    rgb2hls(colour, hls);
    return hls[2];
}

int mrColourUtils::achromatic(gsRGB const& colour, int tolerance)
{
    auto const [least, greatest] = std::minmax({colour.red(), colour.green(), colour.blue()});
    std::int64_t const wide = tolerance; // any int may be added to a component
    return greatest - wide <= 0 || least + wide >= 255;
}
