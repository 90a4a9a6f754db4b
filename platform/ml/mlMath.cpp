#include "mlMath.h"

int mlMath::in_range(double value, double low, double high)
{
    return value >= low && value <= high;
}

double mlMath::clip_to_range(double value, double low, double high)
{
    if (!(value >= low))
        return low;
    return value > high ? high : value;
}
