#include "utMath.h"

#include <limits>

double utMath::max_double()
{
    return std::numeric_limits<double>::max();
}
