// Curves in space.
#pragma once

#include "dgkT.h"
#include "giPoint.h"
#include "giVector3.h"
#include "utExport.h"

#include <vector>

/// A curve over a range of parameters.
class UT_API dgkCurve3
{
public:
    virtual ~dgkCurve3();

    virtual double start_parameter() const = 0;
    virtual double end_parameter() const = 0;
    virtual giPoint3 point(dgkT const& at) const = 0;
    /// @param order  1 for the tangent, 2 for its change, and so on
    virtual giVector3 derivative(dgkT const& at, int order) const = 0;
};

/// A Bézier curve, for parameters from 0 to 1.
class UT_API dgkBezCurve3 : public dgkCurve3
{
public:
    /// @param degree          1 or more
    /// @param control_points  degree + 1 of them; what is missing is the origin, what is more is left out
    dgkBezCurve3(int degree, std::vector<giPoint3> control_points);

    double start_parameter() const override;
    double end_parameter() const override;
    giPoint3 point(dgkT const& at) const override;
    /// Zero where @p order exceeds the degree.
    giVector3 derivative(dgkT const& at, int order) const override;

private:
    std::vector<giPoint3> m_points;
};
