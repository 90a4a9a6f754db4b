#include "giBox.h"

#include <algorithm>
#include <cmath>

namespace {

bool finite(giPoint2 const& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool finite(giPoint3 const& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

} // namespace

giBox2::giBox2(giPoint2 const& low, giPoint2 const& high) : m_low(low), m_high(high), m_empty(false) {}

void giBox2::extend(giPoint2 const& point)
{
    if (!finite(point))
        return;
    if (m_empty) {
        *this = giBox2(point, point);
        return;
    }
    m_low = {std::min(m_low.x, point.x), std::min(m_low.y, point.y)};
    m_high = {std::max(m_high.x, point.x), std::max(m_high.y, point.y)};
}

giBox3::giBox3(giPoint3 const& low, giPoint3 const& high) : m_low(low), m_high(high), m_empty(false) {}

void giBox3::extend(giPoint3 const& point)
{
    if (!finite(point))
        return;
    if (m_empty) {
        *this = giBox3(point, point);
        return;
    }
    m_low = {std::min(m_low.x, point.x), std::min(m_low.y, point.y), std::min(m_low.z, point.z)};
    m_high = {std::max(m_high.x, point.x), std::max(m_high.y, point.y), std::max(m_high.z, point.z)};
}

void giBox3::extend(giBox3 const& box)
{
    if (box.m_empty)
        return;
    extend(box.m_low);
    extend(box.m_high);
}
