// Hue, lightness and saturation of 8-bit colours.
#pragma once

#include "gsRGB.h"
#include "mrExport.h"

/// Functions on 8-bit colours. A hue is in degrees from 0 to under 360, and 0 for a grey; lightness and
/// saturation are from 0 to 1.
class MR_API mrColourUtils
{
public:
    /// Fills in hue, lightness and saturation of the colour.
    /// @param hls  room for three numbers, in this order
    static void rgb2hls(gsRGB const& colour, double* hls);

    /// The nearest 8-bit colour; every colour comes back from what rgb2hls makes of it.
    /// @param hls  three numbers, as rgb2hls fills them in. A hue beyond its range is taken as an angle;
    ///             components that come out beyond 0 to 255 are taken as the nearer of the two, what is no
    ///             number as 0
    static gsRGB hls2rgb(double* hls);

    static double hue(gsRGB const& colour);
    static double lightness(gsRGB const& colour);
    static double saturation(gsRGB const& colour);

    /// 1 when the colour is nearly black (no component above the tolerance) or nearly white (none below 255
    /// less the tolerance). A grey between the two is not achromatic in this sense.
    /// @param tolerance  in 255ths; of a negative one no colour is achromatic, of 255 and more every colour
    static int achromatic(gsRGB const& colour, int tolerance);
};
