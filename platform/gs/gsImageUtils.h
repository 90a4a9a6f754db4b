// Where a picture goes in another.
#pragma once

#include "utExport.h"

class UT_API gsImageUtils
{
public:
    /// Where to draw a picture of one size in one of another: centred, with its own aspect, never enlarged,
    /// rounded to nearest, at least one pixel each way. All in pixels; a size below 1 is taken as 1.
    static void stretch_rectangle(int source_width, int source_height, int destination_width,
                                  int destination_height, int& x, int& y, int& width, int& height);
};
