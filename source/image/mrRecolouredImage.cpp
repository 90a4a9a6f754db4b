#include "mrRecolouredImage.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "utAssert.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

// Four pixels are worked on together, a shape that compilers turn into vector instructions.
constexpr std::size_t group = 16;
using Group = std::array<unsigned char, group>;

// Bytes that are lowered and then multiplied while they are near the processor.
constexpr std::size_t block_size = 1024 * group;

// By the rule some products that ought to be whole numbers come out one lower, under five channels: 147, 155,
// 171, 187 and 195, at most four under each. What is one lower then is the product in whole numbers of a
// component that is one lower. A test goes through all components under all channels.
constexpr std::size_t most_lowered = 4;

/// How the bytes of a group are tinted.
struct Tint
{
    std::array<std::uint16_t, group> channels{};
    std::array<Group, most_lowered> lowered{}; ///< components that are taken as one lower
    Group drop{};                              ///< 1, or 0 where none of them counts
    bool lowers = false;                       ///< whether any of them counts
};

unsigned char product_by_rule(std::size_t component, unsigned char channel)
{
    double const factor = channel / 255.0;
    return static_cast<unsigned char>(static_cast<double>(component) * factor);
}

void set_channel(Tint& tint, std::size_t at, unsigned char channel)
{
    tint.channels[at] = channel;
    std::size_t count = 0;
    for (std::size_t component = 0; component < 256 && count < most_lowered; ++component) {
        if (product_by_rule(component, channel) == component * channel / 255)
            continue;
        // Into all that are left, so that none is left that means something else.
        for (std::size_t i = count++; i < most_lowered; ++i)
            tint.lowered[i][at] = static_cast<unsigned char>(component);
        tint.drop[at] = 1;
        tint.lowers = true;
    }
}

Tint tint_for(giColour const& colour)
{
    unsigned char const alpha = 255; // which leaves it as it is
    std::array<unsigned char, 4> const channels{colour.red(), colour.green(), colour.blue(), alpha};
    Tint tint;
    for (std::size_t at = 0; at < group; ++at)
        set_channel(tint, at, channels[at % channels.size()]);
    return tint;
}

// Both of these keep the tint's arrays in variables of their own: the pixels, being bytes, might overlie them
// as far as a compiler knows.

void lower(unsigned char* bytes, std::size_t size, Tint const& tint)
{
    auto const lowered = tint.lowered;
    Group const drop = tint.drop;
    for (std::size_t at = 0; at < size; at += group)
        for (std::size_t k = 0; k < group; ++k) {
            unsigned char const component = bytes[at + k];
            int found = 0;
            for (Group const& each : lowered)
                found |= component == each[k];
            bytes[at + k] = static_cast<unsigned char>(component - (found & drop[k]));
        }
}

void multiply(unsigned char* bytes, std::size_t size, Tint const& tint)
{
    auto const channels = tint.channels;
    for (std::size_t at = 0; at < size; at += group)
        for (std::size_t k = 0; k < group; ++k)
            bytes[at + k] =
                static_cast<unsigned char>(static_cast<std::uint16_t>(bytes[at + k] * channels[k]) / 255u);
}

/// @param size  a multiple of a group's
void apply(Tint const& tint, unsigned char* bytes, std::size_t size)
{
    for (std::size_t at = 0; at < size; at += block_size) {
        std::size_t const count = std::min(block_size, size - at);
        if (tint.lowers)
            lower(bytes + at, count, tint);
        multiply(bytes + at, count, tint);
    }
}

void apply(Tint const& tint, dgDuctImage& image)
{
    std::size_t const rest = image.byte_count() % group;
    std::size_t const whole_groups = image.byte_count() - rest;
    apply(tint, image.pixels(), whole_groups);
    if (rest == 0)
        return;
    Group last{};
    std::copy_n(image.pixels() + whole_groups, rest, last.begin());
    apply(tint, last.data(), group);
    std::copy_n(last.begin(), rest, image.pixels() + whole_groups);
}

giColour* new_colour_like(giColour const* colour)
{
    return colour ? new giColour(colour->red(), colour->green(), colour->blue(), 0) : nullptr;
}

} // namespace

mrRecolouredImage::mrRecolouredImage()
{
    UT_CHECK_VALID(m_check);
}

mrRecolouredImage::mrRecolouredImage(dgDuctImage* image, giColour const& colour)
    : m_image(image), m_colour(new giColour(colour))
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(image, "Args");
    if (m_image)
        m_image->reference();
    create_resultant();
}

mrRecolouredImage::mrRecolouredImage(mrRecolouredImage const& other)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!other.invalid(), "Args");
    m_image = other.m_image;
    m_colour = new_colour_like(other.m_colour);
    m_resultant = other.m_resultant;
}

mrRecolouredImage::~mrRecolouredImage()
{
    if (m_image)
        m_image->unreference();
    m_image = nullptr;
    delete m_colour;
    m_colour = nullptr;
    if (m_resultant)
        m_resultant->unreference();
    m_resultant = nullptr;
}

mrRecolouredImage& mrRecolouredImage::operator=(mrRecolouredImage const& other)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!other.invalid(), "Args");
    m_image = other.m_image;
    m_colour = new_colour_like(other.m_colour);
    m_resultant = other.m_resultant ? new dgDuctImage(*other.m_resultant) : nullptr;
    return *this;
}

int mrRecolouredImage::invalid() const
{
    UT_CHECK_VALID(m_check);
    return !m_image || !m_colour;
}

dgDuctImage* mrRecolouredImage::original_image() const
{
    UT_CHECK_VALID(m_check);
    return m_image;
}

giColour const& mrRecolouredImage::colour() const
{
    UT_CHECK_VALID(m_check);
    static giColour const black;
    return m_colour ? *m_colour : black;
}

dgDuctImage* mrRecolouredImage::resultant_image() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    UT_REQUIRE(m_resultant, "Invalid resultant imsge");
    return m_resultant;
}

int mrRecolouredImage::operator==(mrRecolouredImage const& other) const
{
    UT_CHECK_VALID(m_check);
    if (m_image && m_image->equal(other.m_image))
        return 1;
    return m_colour == other.m_colour;
}

int mrRecolouredImage::operator!=(mrRecolouredImage const& other) const
{
    UT_CHECK_VALID(m_check);
    return !(*this == other);
}

void mrRecolouredImage::create_resultant()
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_resultant, "State");
    if (!m_image || !m_colour)
        return;
    m_resultant = new dgDuctImage(utCopyDeep, *m_image);
    m_resultant->new_name(m_image->name());
    apply(tint_for(*m_colour), *m_resultant);
    m_resultant->reference();
}
