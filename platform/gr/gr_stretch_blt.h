// Scaling one image into another.
#pragma once

#include "dgDuctImage.h"
#include "utExport.h"

enum grStretchBltMode
{
    grStretchBltAverage = 2 ///< the average of the source pixels that a pixel covers
};

/// Lays a rectangle of @p source, scaled down or of the same size, over a rectangle of @p destination.
///
/// Colours are weighted by their alpha: transparent pixels add none of theirs, and the destination shows through a
/// transparent source. A plain colour stays exactly as it is; an opaque destination stays opaque; an opaque source
/// of the same size is copied unchanged.
///
/// Rectangles are x, y, width, height in pixels from the top left. The destination stays unchanged when a rectangle
/// is empty or leaves its image, or when the source is smaller than the destination on a side. Rectangles of one
/// image may not overlap.
UT_API void gr_stretch_blt(dgDuctImage& destination, int x, int y, int width, int height,
                           dgDuctImage const& source, int source_x, int source_y, int source_width,
                           int source_height, grStretchBltMode mode);
