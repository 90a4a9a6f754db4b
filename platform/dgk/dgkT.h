// A place on a curve.
#pragma once

/// From which side a place is approached where two pieces of a curve meet. A curve of one piece has no such
/// places and makes no difference between the two.
enum dgkParamDelta
{
    dgkParamDeltaBefore = 0,
    dgkParamDeltaAfter = 1
};

/// A curve parameter and the side from which it is approached.
struct dgkT
{
    double t = 0.0;
    dgkParamDelta delta = dgkParamDeltaBefore;
};
