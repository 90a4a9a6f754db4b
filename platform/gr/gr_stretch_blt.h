// Scaling one image into another.
#pragma once

#include "dgDuctImage.h"
#include "utExport.h"

enum grStretchBltMode
{
    grStretchBltNearest = 0, ///< the nearest pixel
    grStretchBltLinear = 1,  ///< between the nearest pixels, two along each side
    grStretchBltAverage = 2 ///< the average of all that a pixel covers; where it covers less than one, linear
};

/// Lays a rectangle of @p source, scaled, over a rectangle of @p destination.
///
/// Colours are weighed by their alpha, so that transparent pixels lend none of theirs, and what is there
/// shows through a transparent source. A colour that is the same everywhere, of source and destination both,
/// stays exactly that; an opaque destination stays opaque; an opaque source of the same size is copied without
/// change.
///
/// Rectangles are x, y, width, height in pixels from the top left; one that is empty or does not lie within
/// its image leaves the destination as it is. Rectangles of one image may not overlap.
UT_API void gr_stretch_blt(dgDuctImage& destination, int x, int y, int width, int height,
                           dgDuctImage const& source, int source_x, int source_y, int source_width,
                           int source_height, grStretchBltMode mode);
