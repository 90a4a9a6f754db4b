// What the tests of images and of other counted objects share.
#pragma once

#include "dgDuctImage.h"

#include <array>
#include <memory>

struct Unreference
{
    void operator()(dgBase* object) const { object->unreference(); }
};

/// An object that is given back at the end. References of its own it has none.
template <class Object>
using Owned = std::unique_ptr<Object, Unreference>;
using Image = Owned<dgDuctImage>;

/// Red, green, blue, alpha.
using Pixel = std::array<short, 4>;

inline Pixel pixel(dgImage const& image, int x, int y)
{
    Pixel components;
    image.get_pixel(x, y, components.data());
    return components;
}
