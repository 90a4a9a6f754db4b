#include "dgOffscreenSamples.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace {

constexpr int parts_bits = 10;
constexpr int parts = 1 << parts_bits; // of a pixel
constexpr float beyond = 2.0F;         // pixels outside of the picture, where it makes no difference how far

// Within such a picture no coordinate overflows.
static_assert(16384 <= INT_MAX / parts / 2);

/// The last coordinate up to @p high that lies at the offset within its pixel.
int last_before(int high, int offset)
{
    return ((high - offset) & -parts) + offset;
}

} // namespace

dgOffscreenSamples::dgOffscreenSamples(int width, int height)
    : m_half_width(static_cast<float>(width) / 2.0F), m_half_height(static_cast<float>(height) / 2.0F)
{
    GLint bits = 0;
    glGetIntegerv(GL_SUBPIXEL_BITS, &bits);
    // Corners are rounded to such a part of a pixel, and came there in single precision.
    m_margin = (parts >> std::clamp(bits, 0, parts_bits)) + parts / 256;

    GLint count = 0;
    glGetIntegerv(GL_SAMPLES, &count);
    for (GLuint i = 0; i < static_cast<GLuint>(count); ++i) {
        GLfloat position[2] = {};
        glGetMultisamplefv(GL_SAMPLE_POSITION, i, position);
        m_samples.push_back({static_cast<int>(position[0] * parts), static_cast<int>(position[1] * parts)});
    }
    if (m_samples.empty())
        m_samples.push_back({parts / 2, parts / 2});
}

bool dgOffscreenSamples::reached(float const* a, float const* b, float const* c) const
{
    Spot const corners[] = {spot(a), spot(b), spot(c)};
    Spot const low{std::min({corners[0].x, corners[1].x, corners[2].x}) - m_margin,
                   std::min({corners[0].y, corners[1].y, corners[2].y}) - m_margin};
    Spot const high{std::max({corners[0].x, corners[1].x, corners[2].x}) + m_margin,
                    std::max({corners[0].y, corners[1].y, corners[2].y}) + m_margin};
    if (high.x - low.x >= parts || high.y - low.y >= parts)
        return true;
    return std::any_of(m_samples.begin(), m_samples.end(), [&](Spot const& sample) {
        // The only place of this sample, in any pixel, that may lie in the box.
        Spot const place{last_before(high.x, sample.x), last_before(high.y, sample.y)};
        return place.x >= low.x && place.y >= low.y && is_near(corners, place);
    });
}

dgOffscreenSamples::Spot dgOffscreenSamples::spot(float const* place) const
{
    auto const coordinate = [](float value, float half_side) {
        float const pixels = (value + 1.0F) * half_side;
        return static_cast<int>(std::clamp(pixels, -beyond, 2.0F * half_side + beyond) * parts);
    };
    return {coordinate(place[0], m_half_width), coordinate(place[1], m_half_height)};
}

/// Whether a place lies in a triangle or within the margin of it.
bool dgOffscreenSamples::is_near(Spot const* corners, Spot place) const
{
    auto const side = [](Spot from, Spot to, Spot of) {
        return (to.x - from.x) * (of.y - from.y) - (to.y - from.y) * (of.x - from.x);
    };
    int const turn = side(corners[0], corners[1], corners[2]) < 0 ? -1 : 1;
    for (int i = 0; i < 3; ++i) {
        Spot const from = corners[i];
        Spot const to = corners[(i + 1) % 3];
        int const longest = std::abs(to.x - from.x) + std::abs(to.y - from.y); // that the edge may be
        if (turn * side(from, to, place) < -m_margin * longest)
            return false;
    }
    return true;
}
