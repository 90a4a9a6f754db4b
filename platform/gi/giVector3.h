// A direction in space.
#pragma once

#include "giAngle.h"
#include "giPoint.h"
#include "utExport.h"

/// Three components; a default-built vector is unset, which shows in an x of -utMath::max_double().
class UT_API giVector3
{
public:
    giVector3();
    giVector3(double to_x, double to_y, double to_z) : x(to_x), y(to_y), z(to_z) {}

    /// 1 when the vector is unset.
    int invalid() const;

    double length() const;

    /// Makes the length 1. A vector whose length is 0 or no finite number stays as it is.
    /// @return 1 when the length is 1 now, else 0
    int unitize();

    double dot(giVector3 const& other) const { return x * other.x + y * other.y + z * other.z; }
    giVector3 cross(giVector3 const& other) const;

    /// 1 when the angle to @p other is at most @p tolerance. Opposite directions are not parallel, and a
    /// vector that is unset or without length is parallel to none.
    int parallel(giVector3 const& other, giAngle const& tolerance) const;

    giVector3 operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    giVector3 operator+(giVector3 const& other) const { return {x + other.x, y + other.y, z + other.z}; }
    giVector3 operator-(giVector3 const& other) const { return {x - other.x, y - other.y, z - other.z}; }

    double x;
    double y;
    double z;
};
