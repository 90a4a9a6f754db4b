// Axis-parallel boxes.
#pragma once

#include "giPoint.h"
#include "utExport.h"

/// A box that holds the points it was extended by; empty by default.
class UT_API giBox2
{
public:
    giBox2() = default;
    giBox2(giPoint2 const& low, giPoint2 const& high);

    int empty() const { return m_empty ? 1 : 0; }
    /// The corners; both at the origin when the box is empty.
    giPoint2 const& low() const { return m_low; }
    giPoint2 const& high() const { return m_high; }

    /// Makes room for @p point; one with a coordinate that is no finite number is left out.
    void extend(giPoint2 const& point);

    bool operator==(giBox2 const&) const = default;

private:
    giPoint2 m_low;
    giPoint2 m_high;
    bool m_empty = true;
};

/// The same in space.
class UT_API giBox3
{
public:
    giBox3() = default;
    giBox3(giPoint3 const& low, giPoint3 const& high);

    int empty() const { return m_empty ? 1 : 0; }
    giPoint3 const& low() const { return m_low; }
    giPoint3 const& high() const { return m_high; }

    void extend(giPoint3 const& point);
    void extend(giBox3 const& box);

    bool operator==(giBox3 const&) const = default;

private:
    giPoint3 m_low;
    giPoint3 m_high;
    bool m_empty = true;
};
