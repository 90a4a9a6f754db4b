// A handle that holds one reference on a counted object.
#pragma once

#include "dgBase.h"

#include <memory>

struct dgUnreference
{
    void operator()(dgBase* object) const { object->unreference(); }
};

/// Holds one reference, which it lets go of at its end; null holds none.
template <class T>
using dgCounted = std::unique_ptr<T, dgUnreference>;

/// Takes one reference, for an object that somebody else made or shares.
/// @param object  null gives null
template <class T>
dgCounted<T> dg_hold(T* object)
{
    if (object)
        object->reference();
    return dgCounted<T>(object);
}
