#include "gr_stretch_blt.h"

#include "../gx/testImage.h"
#include "mrTest.h"

namespace {

constexpr Pixel white{255, 255, 255, 255};
constexpr Pixel nothing{0, 0, 0, 0};

/// An image whose pixels are given by a function of x and y.
class Picture
{
public:
    template <class Colour>
    Picture(int width, int height, Colour const& colour) : m_image(new dgDuctImage("", width, height))
    {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                m_image->set_pixel(x, y, colour(x, y).data());
    }

    Pixel operator()(int x, int y) const { return pixel(*m_image, x, y); }

    /// Lays the whole source over a rectangle.
    void lay(Picture const& source, int x, int y, int width, int height, grStretchBltMode mode)
    {
        gr_stretch_blt(*m_image, x, y, width, height, *source.m_image, 0, 0, source.m_image->width(),
                       source.m_image->height(), mode);
    }

    dgDuctImage& image() const { return *m_image; }
    bool operator==(Picture const& other) const { return m_image->equal(other.m_image.get()) != 0; }

private:
    Image m_image;
};

auto plain(Pixel const& pixel)
{
    return [pixel](int, int) { return pixel; };
}

Pixel gradient(int x, int y)
{
    return {static_cast<short>(x * 5), static_cast<short>(y * 6), static_cast<short>(x + y), 255};
}

constexpr grStretchBltMode all_modes[] = {grStretchBltNearest, grStretchBltLinear, grStretchBltAverage};

TEST(gr_stretch_blt, transparent_pixels_lend_no_colour)
{
    Picture const disc(300, 200, [](int x, int y) {
        return (x - 150) * (x - 150) + (y - 100) * (y - 100) < 90 * 90 ? white : nothing;
    });
    for (grStretchBltMode mode : all_modes)
        for (int size : {1, 7, 64, 128, 300, 450}) {
            Picture picture(size, size, plain(white));
            picture.lay(disc, 0, 0, size, size, mode);
            EXPECT_TRUE(picture == Picture(size, size, plain(white))) << mode << " " << size;
        }
}

TEST(gr_stretch_blt, the_background_shows_through)
{
    Picture const half_red(4, 4, plain({200, 0, 0, 51}));
    Picture over_blue(2, 2, plain({0, 0, 100, 255}));
    over_blue.lay(half_red, 0, 0, 2, 2, grStretchBltAverage);
    EXPECT_EQ(over_blue(1, 1), (Pixel{40, 0, 80, 255}));

    Picture over_nothing(2, 2, plain({9, 9, 9, 0}));
    over_nothing.lay(half_red, 0, 0, 2, 2, grStretchBltAverage);
    EXPECT_EQ(over_nothing(0, 0), (Pixel{200, 0, 0, 51}));
    over_nothing.lay(Picture(4, 4, plain(nothing)), 0, 0, 2, 2, grStretchBltAverage);
    EXPECT_EQ(over_nothing(0, 0), (Pixel{200, 0, 0, 51}));
}

TEST(gr_stretch_blt, scaling_down_takes_every_pixel_alike)
{
    Picture const board(256, 256, [](int x, int y) { return (x + y) % 2 ? white : Pixel{0, 0, 0, 255}; });
    Picture small(16, 16, plain({1, 2, 3, 255}));
    small.lay(board, 0, 0, 16, 16, grStretchBltAverage);
    EXPECT_TRUE(small == Picture(16, 16, plain({128, 128, 128, 255})));

    // Three to two: each pixel covers one and a half.
    Picture const stripes(3, 1, [](int x, int) {
        return x == 0 ? Pixel{90, 0, 0, 255} : x == 1 ? Pixel{30, 0, 0, 255} : Pixel{240, 0, 0, 255};
    });
    Picture two(2, 1, plain(nothing));
    two.lay(stripes, 0, 0, 2, 1, grStretchBltAverage);
    EXPECT_EQ(two(0, 0)[0], (2 * 90 + 30) / 3);
    EXPECT_EQ(two(1, 0)[0], (30 + 2 * 240) / 3);
}

TEST(gr_stretch_blt, scaling_up)
{
    Picture const ends(2, 1, [](int x, int) { return Pixel{static_cast<short>(x * 80), 0, 0, 255}; });
    int const smooth[] = {0, 20, 60, 80};
    int const hard[] = {0, 0, 80, 80};
    for (grStretchBltMode mode : all_modes) {
        Picture four(4, 1, plain(nothing));
        four.lay(ends, 0, 0, 4, 1, mode);
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(four(x, 0)[0], mode == grStretchBltNearest ? hard[x] : smooth[x]) << mode << " " << x;
    }
}

TEST(gr_stretch_blt, only_the_rectangles_count)
{
    Picture const source(50, 40, gradient);
    for (grStretchBltMode mode : all_modes) {
        // The same size is a copy: right way up, right way round, and nothing beside the rectangle.
        Picture picture(30, 30, plain(white));
        gr_stretch_blt(picture.image(), 5, 7, 20, 15, source.image(), 11, 3, 20, 15, mode);
        EXPECT_TRUE(picture == Picture(30, 30,
                                       [](int x, int y) {
                                           bool const inside = x >= 5 && x < 25 && y >= 7 && y < 22;
                                           return inside ? gradient(x + 6, y - 4) : white;
                                       }))
            << mode;
    }
}

TEST(gr_stretch_blt, rectangles_that_do_not_lie_within_change_nothing)
{
    Picture const source(10, 10, gradient);
    Picture picture(10, 10, plain(white));
    int const bad[][4] = {{-1, 0, 5, 5}, {0, -1, 5, 5}, {6, 0, 5, 5},         {0, 6, 5, 5},
                          {0, 0, 0, 5},  {0, 0, 5, -1}, {2, 2, 2147483647, 1}};
    for (auto const& [x, y, width, height] : bad) {
        gr_stretch_blt(picture.image(), x, y, width, height, source.image(), 0, 0, 5, 5, grStretchBltAverage);
        gr_stretch_blt(picture.image(), 0, 0, 5, 5, source.image(), x, y, width, height, grStretchBltAverage);
    }
    picture.lay(Picture(0, 0, gradient), 0, 0, 10, 10, grStretchBltAverage);
    EXPECT_TRUE(picture == Picture(10, 10, plain(white)));
}

} // namespace
