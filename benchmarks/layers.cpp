// Tinting the images of very many layers and facets, beside the same of fewer.
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"
#include "mrPieChart.h"
#include "mrRecolouredImageCache.h"
#include "mrThumbnails.h"

#include "support/material.h"
#include "support/table.h"

#include "utAssert.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

namespace {

constexpr char const* present = "present";
constexpr char const* missing = "missing";

/// Another colour for each number below 2^24.
giColour tint(int number)
{
    auto const byte = [number](int shift) { return static_cast<unsigned char>(number >> shift); };
    return {byte(0), byte(8), byte(16), 0};
}

/// A material of one image, 1 by 1, which every layer tints in a colour of its own.
std::unique_ptr<mrFileMat> tinted_material(char const* image, int facets, int layers_each)
{
    mrMatPropcoSet const properties(mrInitialSize, mrFillLimit);
    mrFMFacetcoDListPtrcoPtrcoDList list;
    int number = 0;
    for (int facet = 0; facet < facets; ++facet) {
        mrFMTexturecoDList layers;
        for (int i = 0; i < layers_each; ++i)
            layers.append(mrFMTexture(image, mrTexLayerColour, 1, tint(number++)));
        auto* const plain = new mrFMPlainMat("plain", properties, 0, giColour(), 0, 0, 0, 0, 1, utString());
        list.append(new mrFMFacet(plain, layers));
    }
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    Picture const picture = material_picture(present, 1, 1);
    images[present] = picture.get();
    return std::make_unique<mrFileMat>(properties, list, images);
}

/// Lists what a picture is made of, without a renderer, and forgets what was tinted for it.
class Listing
{
public:
    Listing() { m_blocks[1] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>(); }

    void list(mrFileMat const& material)
    {
        benchmark::DoNotOptimize(m_thumbnails.from_material(material));
        mrRecolouredImageCache::singleton().clear();
    }

private:
    giTriBlock m_plain_block;
    mrThumbAtts::FaceCountTable m_blocks{mrInitialSize, mrFillLimit};
    mrPieChart m_pie_chart;
    mrThumbnails m_thumbnails{nullptr,
                              mrThumbAtts(256, 256, gsRGB(), gsRGB(), giVector3(0, 0, 1), giVector3(0, 1, 0),
                                          &m_plain_block, &m_blocks, &m_pie_chart)};
};

/// Images of one size, each different from the others in its first pixel.
class OneTint
{
public:
    explicit OneTint(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_images.push_back(dg_hold(new dgDuctImage("", side, side)));
            std::memcpy(m_images.back()->pixels(), &i, sizeof i);
        }
    }

    void tint_all() const
    {
        auto& cache = mrRecolouredImageCache::singleton();
        for (Picture const& image : m_images)
            cache.recoloured_image(image.get(), {200, 30, 30, 0});
        cache.clear();
    }

    void compare_all() const
    {
        for (auto image = m_images.begin(); image != m_images.end(); ++image)
            for (auto older = image; older != m_images.begin();)
                benchmark::DoNotOptimize(
                    std::memcmp((*image)->pixels(), (*--older)->pixels(), (*image)->byte_count()));
    }

private:
    static constexpr int side = 16;

    std::vector<Picture> m_images;
};

} // namespace

int main(int argc, char** argv)
{
    ut_set_assert_handler([](char const*, int, char const*) {});
    Table table(argc, argv);
    Listing listing;
    auto const of = [&listing](std::unique_ptr<mrFileMat> const& material) {
        return [&listing, &material = *material] { listing.list(material); };
    };
    {
        auto const more = tinted_material(present, 1, 40000);
        auto const fewer = tinted_material(present, 1, 10000);
        table.compare("from_material, 40,000 layers of as many tints, nothing drawn", of(more),
                      {"10,000 layers", of(fewer)}, 5.0);
    }
    {
        auto const more = tinted_material(present, 40000, 1);
        auto const fewer = tinted_material(present, 10000, 1);
        table.compare("the same, each layer in a facet of its own", of(more), {"10,000 facets", of(fewer)},
                      5.0);
    }
    {
        auto const more = tinted_material(missing, 32000, 1);
        auto const fewer = tinted_material(missing, 16000, 1);
        table.compare("from_material, 32,000 facets with missing images", of(more),
                      {"16,000 facets", of(fewer)}, 2.5);
    }
    OneTint const images(10000);
    table.note("tint 10,000 images of 16² in one colour", [&] { images.tint_all(); },
               {"memcmp of every pair", [&] { images.compare_all(); }});
}
