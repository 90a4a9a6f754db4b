// Points of the plane and of space.
#pragma once

struct giPoint2
{
    double x = 0.0;
    double y = 0.0;
    bool operator==(giPoint2 const&) const = default;
};

struct giPoint3
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    bool operator==(giPoint3 const&) const = default;
};
