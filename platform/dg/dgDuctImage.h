// Raster images.
#pragma once

#include "dgBase.h"
#include "gsColour.h"
#include "utCopy.h"
#include "utExport.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// An image that gives its pixels one by one.
class UT_API dgImage : public dgBase
{
public:
    /// In pixels.
    virtual int width() const = 0;
    virtual int height() const = 0;

    /// Reads a pixel; (0, 0) is the leftmost of the top row. A place outside the image gives zeros.
    /// @param components  room for four: red, green, blue, alpha, 0 to 255 each
    virtual void get_pixel(int x, int y, short* components) const = 0;

    /// Sets a pixel to four components, each taken as the nearest of 0 to 255. A place outside the image is
    /// left out.
    virtual void set_pixel(int x, int y, short const* components) = 0;

    /// 1 when @p other is this image, or has the same size and pixels. Null equals none.
    virtual int equal(dgImage const* other) const = 0;

protected:
    // Not inline, here and in other classes to derive from: so that one library has what identifies the class,
    // instead of every one that includes this.
    ~dgImage() override;
};

/// An image in memory: four bytes a pixel (red, green, blue, alpha), rows from the top, packed.
///
/// Without enough memory the constructors, copying and new_name() throw std::bad_alloc.
class UT_API dgDuctImage final : public dgImage
{
public:
    /// The most pixels of an image; they take a GiB.
    static constexpr std::int64_t max_pixels = std::int64_t{1} << 28;

    /// Every pixel 0, transparent black. Less than one pixel on a side, or more than max_pixels in all, makes
    /// an empty image, 0 by 0.
    /// @param name  null stands for the empty name
    dgDuctImage(char const* name, int width, int height);

    /// @param mode  utCopyDeep, the one there is
    dgDuctImage(utCopy mode, dgImage const& other);
    dgDuctImage(dgDuctImage const& other) = default;
    dgDuctImage& operator=(dgDuctImage const&) = delete;

    /// Never null.
    char const* name() const { return m_name.c_str(); }
    /// @param name  null stands for the empty name
    void new_name(char const* name);

    int width() const override { return m_width; }
    int height() const override { return m_height; }
    void get_pixel(int x, int y, short* components) const override;
    void set_pixel(int x, int y, short const* components) override;
    int equal(dgImage const* other) const override;

    /// What equal() asks of an image of this class.
    bool same_as(dgDuctImage const& other) const
    {
        return &other == this ||
               (other.m_width == m_width && other.m_height == m_height && other.m_pixels == m_pixels);
    }

    /// Fills every pixel with the colour, alpha 255.
    void set_all(gsColour const& colour);

    /// All pixels in a row: 4 × width × height bytes.
    unsigned char* pixels() { return m_pixels.data(); }
    unsigned char const* pixels() const { return m_pixels.data(); }
    std::size_t byte_count() const { return m_pixels.size(); }

private:
    // Deleted by unreference() alone.
    ~dgDuctImage() override = default;

    void resize(int width, int height);

    std::string m_name;
    int m_width = 0;
    int m_height = 0;
    std::vector<unsigned char> m_pixels;
};
