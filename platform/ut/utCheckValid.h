// The stamp by which an object shows that it is a live one.
#pragma once

#include "utExport.h"

/// A member that knows which object it was constructed in, until that object is destroyed.
///
/// Every class with state carries one, made with the object's own address, and asks it on entry to each
/// member function. It is never copied: a copy of the object stamps itself.
class UT_API utCheckValid
{
public:
    explicit utCheckValid(void const* object) : m_object(object) {}
    ~utCheckValid();

    utCheckValid(utCheckValid const&) = delete;
    utCheckValid& operator=(utCheckValid const&) = delete;

    /// Costs one compare when all is well.
    /// @report "Invalid object" at @p file and @p line when @p object is not the live object of this stamp
    void check_ok(void const* object, char const* file, int line) const
    {
        if (m_object != object)
            report(file, line);
    }

private:
    static void report(char const* file, int line);

    void const* m_object;
};

/// Checks the stamp of the object whose member function this stands in.
#define UT_CHECK_VALID(stamp) (stamp).check_ok(this, __FILE__, __LINE__)
