#include "giVector3.h"

#include "utMath.h"

#include <cmath>

giVector3::giVector3() : x(-utMath::max_double()), y(0.0), z(0.0) {}

int giVector3::invalid() const
{
    return x == -utMath::max_double();
}

double giVector3::length() const
{
    double const square = dot(*this);
    // Several times as fast as what keeps the squares from over- and underflowing.
    return square > 1e-200 && square < 1e200 ? std::sqrt(square) : std::hypot(x, y, z);
}

int giVector3::unitize()
{
    double const size = length();
    if (!(size > 0.0) || !std::isfinite(size))
        return 0;
    // Divided, not multiplied by the inverse: the inverse of a tiny length is infinite.
    x /= size;
    y /= size;
    z /= size;
    return 1;
}

giVector3 giVector3::cross(giVector3 const& other) const
{
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
}

int giVector3::parallel(giVector3 const& other, giAngle const& tolerance) const
{
    giVector3 a = *this;
    giVector3 b = other;
    if (invalid() || other.invalid() || !a.unitize() || !b.unitize())
        return 0;
    // By both products: near 0 degrees the cosine alone cannot tell angles of 0.01 degrees apart.
    return std::atan2(a.cross(b).length(), a.dot(b)) <= tolerance.radians();
}
