#include "dgProjection.h"

giPoint3 dgProjection::device(giPoint3 const& point) const
{
    giVector3 const offset(point.x - centre.x, point.y - centre.y, point.z - centre.z);
    giPoint2 const& low = view_port.low();
    giPoint2 const& high = view_port.high();
    return {(low.x + high.x) / 2.0 + offset.dot(right) * scale,
            (low.y + high.y) / 2.0 + offset.dot(up) * scale, offset.dot(normal) / half_depth};
}
