// What the tests of images share.
#pragma once

#include "dgDuctImage.h"

#include <array>
#include <memory>

struct Unreference
{
    void operator()(dgBase* object) const { object->unreference(); }
};
using Image = std::unique_ptr<dgDuctImage, Unreference>;

/// Red, green, blue, alpha.
using Pixel = std::array<short, 4>;

inline Pixel pixel(dgDuctImage const& image, int x, int y)
{
    Pixel components;
    image.get_pixel(x, y, components.data());
    return components;
}
