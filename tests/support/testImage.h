// What the tests of images and of other counted objects share.
#pragma once

#include "dgCounted.h"
#include "dgDuctImage.h"

#include <array>

using Image = dgCounted<dgDuctImage>;

/// Red, green, blue, alpha.
using Pixel = std::array<short, 4>;

inline Pixel pixel(dgImage const& image, int x, int y)
{
    Pixel components;
    image.get_pixel(x, y, components.data());
    return components;
}
