// Counted graphics objects.
#pragma once

#include "utExport.h"

/// The base of objects that several owners share by counting.
///
/// A new object, a copy too, has no references. It is made with `new`; an object that whatever references it
/// must not delete is referenced first.
class UT_API dgBase
{
public:
    dgBase() = default;
    dgBase(dgBase const&) {}
    dgBase& operator=(dgBase const&) { return *this; }

    void reference() { ++m_references; }

    /// Takes one reference off and deletes the object when none is left, also when there was none to take:
    /// an object that was returned with no references is given back by one call.
    void unreference();

    int references() const { return m_references; }

protected:
    virtual ~dgBase();

private:
    friend class dgKeep;

    int m_references = 0;
};
