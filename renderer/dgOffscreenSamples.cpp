#include "dgOffscreenSamples.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <climits>

namespace {

constexpr int parts_bits = 10;
constexpr int parts = 1 << parts_bits; // of a pixel
constexpr float beyond = 2.0F;         // pixels outside of the picture, where it makes no difference how far

// Within such a picture no coordinate overflows.
static_assert(16384 <= INT_MAX / parts / 2);

/// Whether a whole pixel and the offset lie between two coordinates.
bool holds(int low, int high, int offset)
{
    return (high - offset) >> parts_bits > (low - offset - 1) >> parts_bits;
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
    auto const parts_of = [](float value, float half_side) {
        float const pixels = (value + 1.0F) * half_side;
        return static_cast<int>(std::clamp(pixels, -beyond, 2.0F * half_side + beyond) * parts);
    };
    int const left = parts_of(std::min({a[0], b[0], c[0]}), m_half_width) - m_margin;
    int const right = parts_of(std::max({a[0], b[0], c[0]}), m_half_width) + m_margin;
    int const bottom = parts_of(std::min({a[1], b[1], c[1]}), m_half_height) - m_margin;
    int const top = parts_of(std::max({a[1], b[1], c[1]}), m_half_height) + m_margin;
    if (right - left >= parts && top - bottom >= parts)
        return true;
    return std::any_of(m_samples.begin(), m_samples.end(), [&](Spot const& sample) {
        return holds(left, right, sample.x) && holds(bottom, top, sample.y);
    });
}
