#include "dgView.h"

#include "utMath.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double fit_margin = 0.04;

// A box thinner than this part of its diagonal, as it is seen, is shown as if it were that thick: beyond it
// rounding decides what the picture shows.
constexpr double thinnest = 1e-9;

// An up direction closer than this to the normal (in radians) leaves the picture's rotation to rounding.
constexpr double least_up_angle = 1e-9;

bool finite(giPoint3 const& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

/// How far a box of these half sides reaches from its centre along an axis.
double reach(giVector3 const& half, giVector3 const& axis)
{
    return half.x * std::abs(axis.x) + half.y * std::abs(axis.y) + half.z * std::abs(axis.z);
}

/// Makes both unit vectors that are perpendicular to each other; false where they cannot be.
bool make_directions(giVector3& normal, giVector3& up)
{
    if (normal.invalid() || up.invalid() || !normal.unitize() || !up.unitize())
        return false;
    up = up - normal * up.dot(normal);
    return up.length() > least_up_angle && up.unitize();
}

} // namespace

dgCamera::~dgCamera() = default;

dgView::~dgView() = default;

void dgCamera::view_port_dc(giBox2 const& box)
{
    m_projection.view_port = box;
}

void dgCamera::orientation(giPoint3 const& at, giVector3 const& normal, giVector3 const& up)
{
    dgProjection const defaults;
    m_projection.normal = normal;
    m_projection.up = up;
    if (!make_directions(m_projection.normal, m_projection.up)) {
        m_projection.normal = defaults.normal;
        m_projection.up = defaults.up;
    }
    m_projection.right = m_projection.up.cross(m_projection.normal);
    m_projection.centre = finite(at) ? at : defaults.centre;
}

void dgCamera::fit(giBox3 const& box)
{
    if (box.empty() || !finite(box.low()) || !finite(box.high()))
        return fit(giBox3({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0}));

    giPoint3 const& low = box.low();
    giPoint3 const& high = box.high();
    // Each corner is halved before the sum, so that boxes as large as numbers go do not overflow.
    m_projection.centre = {low.x / 2.0 + high.x / 2.0, low.y / 2.0 + high.y / 2.0,
                           low.z / 2.0 + high.z / 2.0};
    giVector3 half(std::abs(high.x / 2.0 - low.x / 2.0), std::abs(high.y / 2.0 - low.y / 2.0),
                   std::abs(high.z / 2.0 - low.z / 2.0));
    double const longest = std::max({half.x, half.y, half.z});
    if (!(longest > 0.0)) {
        m_projection.scale = m_projection.half_depth = 1.0;
        return;
    }

    // From here on in units of the longest half side, so that nothing over- or underflows.
    half = {half.x / longest, half.y / longest, half.z / longest};
    double const radius = half.length();
    giBox2 const& view_port = m_projection.view_port;
    double const width = view_port.high().x - view_port.low().x;
    double const height = view_port.high().y - view_port.low().y;
    double const margin = 2.0 * fit_margin * std::min(width, height);
    double const across = std::max(reach(half, m_projection.right), thinnest * radius);
    double const upwards = std::max(reach(half, m_projection.up), thinnest * radius);
    double const scale = std::min((width - margin) / across, (height - margin) / upwards) / 2.0 / longest;
    m_projection.scale = std::min(scale, utMath::max_double());
    m_projection.half_depth = std::min(radius * longest, utMath::max_double());
}

dgView::dgView(dgRenderer* renderer, dgStructureStore* store)
    : m_renderer(dg_hold(renderer)), m_store(dg_hold(store))
{}

void dgView::root(dgStructure* structure)
{
    // The new root is held first: it may be the old one, or held by it alone.
    m_root = dg_hold(structure);
}

void dgView::view_bounding_box(giBox3 const& box, dgBoundingViewType type)
{
    if (type == dgBoundingViewFit)
        fit(box);
}

void dgView::erase(dgEraseZbuffer depth)
{
    if (m_renderer)
        m_renderer->erase(projection().view_port, m_background, depth);
}

void dgView::render_network(dgStructure* structure)
{
    dgStructure const* const network = structure ? structure : m_root.get();
    if (!m_renderer || !network)
        return;
    dgDrawState const defaults;
    dgDrawState state;
    for (std::size_t i = 0; i < network->size(); ++i) {
        dgElement const& element = network->element(i);
        element.set(state);
        giTriBlock const* const block = element.triangle_block();
        if (!block)
            continue;
        m_renderer->draw(projection(), state, *block);
        state.texturing = defaults.texturing;
        state.texture = defaults.texture;
        state.texture_range = defaults.texture_range;
    }
}
