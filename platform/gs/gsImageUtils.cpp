#include "gsImageUtils.h"

#include <algorithm>
#include <cmath>

void gsImageUtils::stretch_rectangle(int source_width, int source_height, int destination_width,
                                     int destination_height, int& x, int& y, int& width, int& height)
{
    int const sw = std::max(source_width, 1);
    int const sh = std::max(source_height, 1);
    int const dw = std::max(destination_width, 1);
    int const dh = std::max(destination_height, 1);

    double const scale =
        std::min({1.0, static_cast<double>(dw) / static_cast<double>(sw), static_cast<double>(dh) / sh});
    width = std::clamp(static_cast<int>(std::lround(sw * scale)), 1, dw);
    height = std::clamp(static_cast<int>(std::lround(sh * scale)), 1, dh);
    x = (dw - width) / 2;
    y = (dh - height) / 2;
}
