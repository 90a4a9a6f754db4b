// Scaling one image into another.
#pragma once

#include "dgDuctImage.h"
#include "utExport.h"

enum grStretchBltMode
{
    grStretchBltNearest = 0, ///< the nearest pixel, laid over what is there
    grStretchBltLinear = 1,  ///< between the four nearest, laid over what is there
    grStretchBltAverage = 2  ///< the smooth average of all that a pixel covers, laid over what is there
};

/// Lays a rectangle of @p source, scaled, over a rectangle of @p destination.
///
/// Colours are weighed by their alpha, so that transparent pixels lend none of theirs, and what is there
/// shows through a transparent source. Rectangles are x, y, width, height in pixels from the top left; one
/// that is empty or does not lie within its image, and a source without pixels, leave the destination as it
/// is.
UT_API void gr_stretch_blt(dgDuctImage& destination, int x, int y, int width, int height,
                           dgDuctImage const& source, int source_x, int source_y, int source_width,
                           int source_height, grStretchBltMode mode);
