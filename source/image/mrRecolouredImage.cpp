#include "mrRecolouredImage.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "utAssert.h"

#include <array>

namespace {

using Products = std::array<unsigned char, 256>;

// A component has 256 values only, so the rule is worked out once for each of them, not for each pixel.
Products products_with(unsigned char channel)
{
    double const factor = channel / 255.0;
    Products products{};
    for (std::size_t component = 0; component < products.size(); ++component)
        products[component] = static_cast<unsigned char>(static_cast<double>(component) * factor);
    return products;
}

void tint(dgDuctImage& image, giColour const& colour)
{
    Products const reds = products_with(colour.red());
    Products const greens = products_with(colour.green());
    Products const blues = products_with(colour.blue());

    unsigned char* const end = image.pixels() + image.byte_count();
    for (unsigned char* pixel = image.pixels(); pixel != end; pixel += 4) {
        pixel[0] = reds[pixel[0]];
        pixel[1] = greens[pixel[1]];
        pixel[2] = blues[pixel[2]];
    }
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
    tint(*m_resultant, *m_colour);
    m_resultant->reference();
}
