// A handle that holds one reference on a counted object.
#pragma once

#include "dgBase.h"

#include <memory>

struct dgUnreference
{
    void operator()(dgBase* object) const { object->unreference(); }
};

/// Drops one reference when destroyed, if it is not null. Made directly from a new object, which has no
/// references, it deletes the object when destroyed, and release() returns it still without references.
template <class T>
using dgCounted = std::unique_ptr<T, dgUnreference>;

/// Keeps an object, on which nobody may hold a reference, from being deleted by who takes references and drops them
/// again; leaves it with those that are then left.
class dgKeep
{
public:
    /// @param object  may be null
    explicit dgKeep(dgBase* object) : m_object(object)
    {
        if (m_object)
            ++m_object->m_references;
    }
    ~dgKeep()
    {
        if (m_object)
            --m_object->m_references;
    }
    dgKeep(dgKeep const&) = delete;
    dgKeep& operator=(dgKeep const&) = delete;

private:
    dgBase* m_object;
};

/// Takes a reference.
/// @param object  may be null
template <class T>
dgCounted<T> dg_hold(T* object)
{
    if (object)
        object->reference();
    return dgCounted<T>(object);
}
