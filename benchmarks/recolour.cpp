// Tinting an image, and finding a tinted image again.
#include "mrRecolouredImage.h"
#include "mrRecolouredImageCache.h"

#include "support/material.h"
#include "support/table.h"

#include "giColour.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

namespace {

void tint(dgDuctImage& image, giColour const& colour)
{
    mrRecolouredImage const recoloured(&image, colour);
    benchmark::DoNotOptimize(recoloured.resultant_image());
}

/// 512² images, each with one pixel of its own.
/// @param pixel  which
std::vector<Picture> alike(int count, std::size_t pixel)
{
    std::vector<Picture> images;
    Picture const first = material_picture("alike", 512, 1);
    for (int i = 0; i < count; ++i) {
        images.push_back(dg_hold(new dgDuctImage(*first)));
        std::memcpy(images.back()->pixels() + 4 * pixel, &i, 3);
    }
    return images;
}

/// Finds the oldest of 1,000 entries, the last that the cache looks at, by an image equal to it.
class Search
{
public:
    explicit Search(std::size_t pixel) : m_images(alike(entries, pixel))
    {
        auto& cache = mrRecolouredImageCache::singleton();
        cache.clear();
        for (Picture const& image : m_images)
            m_resultants.push_back(cache.recoloured_image(image.get(), m_colour));
        m_wanted = dg_hold(new dgDuctImage(*m_images.front()));
    }

    void find() const
    {
        require(mrRecolouredImageCache::singleton().recoloured_image(m_wanted.get(), m_colour) ==
                    m_resultants.front(),
                "another image was found");
    }

    void compare_all() const
    {
        for (auto image = m_images.rbegin(); image != m_images.rend(); ++image)
            benchmark::DoNotOptimize(
                std::memcmp(m_wanted->pixels(), (*image)->pixels(), m_wanted->byte_count()));
    }

private:
    static constexpr int entries = 1000;

    giColour const m_colour{200, 30, 30, 0};
    std::vector<Picture> m_images;
    std::vector<dgDuctImage*> m_resultants;
    Picture m_wanted;
};

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    {
        Picture const image = material_picture("large", 2048, 1);
        std::vector<unsigned char> copy(image->byte_count());
        auto const copy_pixels = [&] {
            std::memcpy(copy.data(), image->pixels(), copy.size());
            benchmark::ClobberMemory();
        };
        table.compare(
            "recolour a 2048² image",
            [&] {
                tint(*image, {200, 30, 30, 0});
            },
            {"memcpy", copy_pixels}, 4.0);
        table.compare(
            "the same under channels whose products the rule rounds apart",
            [&] {
                tint(*image, {147, 155, 187, 0});
            },
            {"memcpy", copy_pixels}, 4.0);
    }
    {
        Search const search(17);
        table.limit(
            "find a tinted image among 1,000 of 512², different in their first row", [&] { search.find(); },
            1e-3);
    }
    Search const search(512 * 512 - 1);
    table.compare(
        "the same, different in their last pixel alone", [&] { search.find(); },
        {"1,000 memcmp", [&] { search.compare_all(); }}, 1.2);
}
