// Thumbnails beside committed pictures of them: from the file through document, images, tint and renderer.
//
// To make the pictures anew, once what changed is meant to look as it does now, from the project's root:
//     build/release/bin/mrtool thumb samples/materials/sampler.multimat --size 64 -o tests/data/pie.png
//     build/release/bin/mrtool thumb samples/materials/oak.multimat --size 64 -o tests/data/sphere.png
// and look at them before they are committed.
#include "program.h"

#include <cstdlib>

namespace fs = std::filesystem;

namespace {

// Another OpenGL driver rounds colours and filters textures a little differently, by a few steps a channel. It
// may also place its four samples of a pixel elsewhere. That shows on outlines only, where each sample is a
// quarter of the colour; a tenth of the pixels of the pie lie on outlines, and most of them come out alike.
constexpr int channel_tolerance = 8;     // of 255
constexpr double share_tolerance = 0.04; // of the pixels may differ by more

bool differ(dgDuctImage const& one, dgDuctImage const& other, std::size_t pixel)
{
    for (std::size_t i = 4 * pixel; i < 4 * pixel + 4; ++i)
        if (std::abs(one.pixels()[i] - other.pixels()[i]) > channel_tolerance)
            return true;
    return false;
}

/// Of two pictures of one size, the share of pixels that differ.
double different_share(dgDuctImage const& one, dgDuctImage const& other)
{
    std::size_t const pixels = one.byte_count() / 4;
    std::size_t different = 0;
    for (std::size_t pixel = 0; pixel < pixels; ++pixel)
        different += differ(one, other, pixel);
    return static_cast<double>(different) / static_cast<double>(pixels);
}

/// On a difference the thumbnail stays in the folder in which the tests run, as NAME.actual.png.
void expect_picture(std::string const& material, std::string const& name)
{
    std::string const expected = MR_TEST_DATA "/" + name + ".png";
    std::string const actual = fs::absolute(name + ".actual.png").string();
    Outcome const run = run_mrtool("thumb " + sample("materials/" + material) + " --size 64 -o " + actual);
    ASSERT_EQ(run.status, 0) << run.errors;
    auto const wanted = read_png(expected), made = read_png(actual);
    ASSERT_EQ(made->width(), wanted->width());
    ASSERT_EQ(made->height(), wanted->height());
    double const share = different_share(*made, *wanted);
    EXPECT_LE(share, share_tolerance) << actual << " differs from " << expected;
    if (share <= share_tolerance)
        fs::remove(actual);
}

} // namespace

TEST(mrtool_thumb, draws_one_facet_and_several_as_before)
{
    expect_picture("sampler.multimat", "pie");
    expect_picture("oak.multimat", "sphere");
}
