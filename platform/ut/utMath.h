// Limits of numbers.
#pragma once

#include "utExport.h"

class UT_API utMath
{
public:
    /// The largest finite double.
    static double max_double();
};
