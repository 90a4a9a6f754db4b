// An angle.
#pragma once

#include "utExport.h"

enum class giAngleUnit
{
    radians,
    degrees
};

class UT_API giAngle
{
public:
    giAngle(double value, giAngleUnit unit);

    double radians() const { return m_radians; }
    double cos() const;
    double sin() const;

    giAngle operator*(double factor) const { return {m_radians * factor, giAngleUnit::radians}; }
    giAngle operator+(giAngle const& other) const
    {
        return {m_radians + other.m_radians, giAngleUnit::radians};
    }

private:
    double m_radians;
};
