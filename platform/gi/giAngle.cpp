#include "giAngle.h"

#include <cmath>
#include <numbers>

giAngle::giAngle(double value, giAngleUnit unit)
    : m_radians(unit == giAngleUnit::degrees ? value * std::numbers::pi / 180.0 : value)
{}

double giAngle::cos() const
{
    return std::cos(m_radians);
}

double giAngle::sin() const
{
    return std::sin(m_radians);
}
