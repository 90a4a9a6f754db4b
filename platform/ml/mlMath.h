// Ranges of real numbers.
#pragma once

#include "utExport.h"

class UT_API mlMath
{
public:
    /// 1 when low <= value <= high; a NaN is in no range.
    static int in_range(double value, double low, double high);

    /// @p value, or the bound that it lies beyond; a NaN gives @p low.
    static double clip_to_range(double value, double low, double high);
};
