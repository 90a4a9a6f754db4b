// Counted objects with one reference held.
#pragma once

#include "dgBase.h"

#include <memory>

namespace mrtool {

struct Unreference
{
    void operator()(dgBase* object) const { object->unreference(); }
};

/// Holds one reference, which it lets go of at its end.
template <class T>
using Counted = std::unique_ptr<T, Unreference>;

/// @param object  null gives null
template <class T>
Counted<T> hold(T* object)
{
    if (object)
        object->reference();
    return Counted<T>(object);
}

} // namespace mrtool
