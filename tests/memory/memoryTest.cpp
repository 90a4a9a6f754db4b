// What the public functions do when any one allocation fails, or all from it on: they throw nothing, give their failure
// or what they give undisturbed, and leave nothing behind.

#include "failingMemory.h"
#include "materialText.h"
#include "mrColourPalette.h"
#include "mrColourPaletteCache.h"
#include "mrFault.h"
#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrImageCache.h"
#include "mrPieChart.h"
#include "mrRecolouredImageCache.h"
#include "mrSource.h"
#include "mrTarget.h"
#include "mrThumbnails.h"
#include "mrUtils.h"
#include "testImage.h"

#include "dgkCurve3.h"
#include "dgRenderer.h"
#include "utAssert.h"
#include "utConcat.h"

#include <fcntl.h>
#include <functional>
#include <sstream>
#include <unistd.h>

namespace {

using Extent = FailingMemory::Extent;
using ImageTable = utStringdgDuctImagecoTablePtrcoPtrcoTable;

/// One run of an operation, in which its call of the library goes short of memory.
class Attempt
{
public:
    Attempt(long succeeding, Extent extent) : m_succeeding(succeeding), m_extent(extent) {}

    template <class Work>
    void operator()(Work const& work)
    {
        FailingMemory const memory(m_succeeding, m_extent);
        try {
            work();
        } catch (std::exception const&) {
            threw = true;
        }
        failed = memory.failed();
    }

    bool threw = false;
    bool failed = false; ///< whether an allocation did

private:
    long m_succeeding;
    Extent m_extent;
};

/// An operation of the library.
struct Operation
{
    char const* name;
    /// @return all that matters of its result, or nothing for its failure
    std::function<std::string(Attempt&)> run;
    bool may_throw = false; ///< for want of a result that tells of the failure
    long kept = 0;          ///< allocations that stay for the process's life when it goes well
};

int next_descriptor()
{
    int const descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(descriptor);
    return descriptor;
}

/// @return whether the operation still came short of memory
bool try_once(Operation const& operation, std::string const& whole, long succeeding, Extent extent)
{
    SCOPED_TRACE(ut_concat(operation.name, ", after ", succeeding, " allocations ",
                           extent == Extent::one ? "one fails" : "all fail"));
    long live = count_live_allocations();
    Attempt attempt(succeeding, extent);
    {
        std::string const result = operation.run(attempt);
        EXPECT_TRUE(operation.may_throw || !attempt.threw);
        EXPECT_TRUE(result == whole || (result.empty() && attempt.failed)) << result;
        live += result.empty() ? 0 : operation.kept;
    }
    EXPECT_EQ(count_live_allocations(), live) << "allocations left behind";
    return attempt.failed;
}

void try_every_allocation(Operation const& operation)
{
    std::string whole;
    for (int i = 0; i < 2; ++i) { // the first run fills what the libraries keep
        Attempt undisturbed(1L << 40, Extent::one);
        whole = operation.run(undisturbed);
    }
    EXPECT_NE(whole, "") << operation.name;
    int const descriptor = next_descriptor();
    for (Extent const extent : {Extent::one, Extent::all_from_there}) {
        long succeeding = 0;
        while (!testing::Test::HasFailure() && try_once(operation, whole, succeeding, extent))
            ++succeeding;
        testing::Test::RecordProperty(ut_concat(operation.name, extent == Extent::one ? ", one" : ", all"),
                                      std::to_string(succeeding));
    }
    EXPECT_EQ(next_descriptor(), descriptor) << operation.name;
}

/// Hands out pictures, for which it may find no memory.
struct PlainRenderer final : dgRenderer
{
    int select_read_buffer() const override { return buffer; }
    void select_read_buffer(int number) override { buffer = number; }
    void select_buffer(dgDoubleBuffer) override {}
    void erase(giBox2 const&, gsColour const&, dgEraseZbuffer) override {}
    void draw(dgProjection const&, dgDrawState const&, giTriBlock const&) override {}
    void begin_read_image() override { ++reading; }
    dgDuctImage* read_image(dgImageType, char const* name, int, int, int width, int height, dgSetAlpha,
                            short) override
    {
        return new dgDuctImage(name, width, height);
    }
    void end_read_image() override { --reading; }

    int buffer = 0;
    int reading = 0;
};

/// A material file, a palette, an image cache file and what thumbnails are made of.
class MemoryTest : public testing::Test
{
protected:
    MemoryTest()
    {
        std::filesystem::current_path(folder.path(""));
        for (std::size_t at = 0; at < images.size(); ++at)
            table[names[at]] = images[at].get();
        utStringdgDuctImagecoTablePtrcoPtrcoTable const& given = table;
        mrFMFacetcoDListPtrcoPtrcoDList facets;
        for (utString const& name : names) {
            mrFMTexturecoDList textures = layers({name});
            textures.append(mrFMTexture(names[0], mrTexLayerColour, 1, giColour(9, 90, 200, 0)));
            facets.append(new mrFMFacet(red("a name that is long enough to need memory"), textures));
        }
        material = std::make_unique<mrFileMat>(
            properties({string_prop("a property with a long name", "and with a long value"),
                        mrMatProp(mrMatPropTypeDoubleTag, "number", 0.5, 3)}),
            facets, given);
        EXPECT_EQ(material->write(material_path), 1);
        material_bytes = read_bytes(material_path.c_str());
        write_bytes(palette_path.c_str(), palette_text);
        EXPECT_EQ(mrUtils::write_images(table, image_path), 1);
    }

    ~MemoryTest() override
    {
        ut_set_assert_handler(handler);
        std::filesystem::current_path(folder_before);
        renderer->unreference();
    }

    int count_references() const { return images[0]->references() + images[1]->references(); }

    // The tests' own handler needs memory.
    utAssertHandler const handler = ut_set_assert_handler([](char const*, int, char const*) {});
    TestFolder const folder;
    std::filesystem::path const folder_before = std::filesystem::current_path();
    // Long enough to need memory, and in small letters, as palettes are opened.
    utString const material_path = "the_path_of_a_material.multimat";
    utString const palette_path = "the_path_of_a_palette.pcp";
    utString const image_path = "the_path_of_an_image.png";
    utString const out_path = "the_path_of_what_is_written";
    std::array<utString, 2> const names = {"weave, a name that needs memory", "grain \x01 \xc3\xbc"};
    std::array<Image, 2> const images = {dg_hold(new dgDuctImage("woven, a long name of an image", 9, 7)),
                                         dg_hold(new dgDuctImage("", 3, 2))};
    ImageTable table{mrInitialSize, mrFillLimit};
    std::unique_ptr<mrFileMat> material;
    std::string material_bytes;
    std::string const palette_text =
        "rgb8 1 2 3 the name of the first colour\ncmyk 1 2 3 4 and of the second\n"
        "cmy8 1 2 3\n";
    PlainRenderer* const renderer = [] {
        auto* const made = new PlainRenderer;
        made->reference();
        return made;
    }();
};

std::string bytes_of(mrFileMat const& material)
{
    std::string bytes;
    mrFault fault;
    EXPECT_EQ(material.write(mrTarget::to_memory(bytes), fault), 1);
    return bytes;
}

std::string text_of(mrColourPalette const& palette)
{
    std::ostringstream out;
    mrUtils::write_pcp(palette, out);
    return out.str();
}

/// @return the picture, let go
std::string text_of(dgDuctImage* image)
{
    if (!image)
        return {};
    dgCounted<dgDuctImage> const owned(image);
    std::string const pixels(reinterpret_cast<char const*>(image->pixels()), image->byte_count());
    return ut_concat(image->name(), " ", image->width(), " ", image->references(), " ", pixels);
}

/// @return "" for a failure, which must name the lack of memory
std::string result_of(bool well, mrFault const& fault, std::string const& text)
{
    if (well)
        return text;
    EXPECT_GE(fault.reason.locate_substring("memory"), 0) << fault.words().view();
    return {};
}

} // namespace

TEST_F(MemoryTest, FilesAreReadOrNot)
{
    mrImageCache cache(3, 1);
    for (unsigned int hash : {7u, 9u})
        cache.add_image(hash, images[0].get());
    ASSERT_EQ(cache.write(out_path), 1);
    mrSource const palette_source = mrSource::from_path(palette_path);
    mrColourPaletteCache& palettes = mrColourPaletteCache::singleton();

    auto const read_material = [&](Attempt& attempt, auto const& read) {
        mrFileMat back;
        mrFileMatReadStatus status{};
        attempt([&] { status = read(back); });
        EXPECT_NE(status, mrFileMatNoDocument);
        return status == mrFileMatReadOK ? bytes_of(back) : std::string();
    };
    auto const read_palette = [&](Attempt& attempt, auto const& read) {
        mrColourPalette palette;
        mrPaletteFileError error{};
        attempt([&] { error = read(palette); });
        EXPECT_TRUE(error <= mrPaletteFileBadFormat) << error;
        return error == mrPaletteFileOK ? text_of(palette) : std::string();
    };
    Operation const operations[] = {
        {"mrFileMat::read of a path",
         [&](Attempt& attempt) {
             return read_material(attempt, [&](mrFileMat& back) { return back.read(material_path); });
         }},
        {"mrFileMat::read of memory",
         [&](Attempt& attempt) {
             mrFault fault;
             mrFaultcoDList remarks;
             std::string const bytes = read_material(attempt, [&](mrFileMat& back) {
                 return back.read(mrSource::from_memory(material_bytes), {}, fault, &remarks);
             });
             return result_of(!bytes.empty(), fault, bytes);
         }},
        {"mrUtils::read_images",
         [&](Attempt& attempt) {
             ImageTable read(mrInitialSize, mrFillLimit);
             int whole = 0;
             attempt([&] { whole = mrUtils::read_images(image_path, 0, read); });
             std::string text;
             for (auto const& [title, image] : read) {
                 text += ut_concat(title, " ", image->name(), " ", image->references(), "\n");
                 image->unreference();
             }
             return whole ? text : std::string();
         }},
        {"mrImageCache::read",
         [&](Attempt& attempt) {
             mrImageCache read;
             mrFileMatReadStatus status{};
             attempt([&] { status = read.read(out_path); });
             EXPECT_NE(status, mrFileMatNoDocument);
             std::string text = ut_concat(read.max_cache_size());
             for (unsigned int hash : {7u, 9u})
                 if (dgDuctImage* const image = read.get_image(hash)) {
                     text += ut_concat(" ", hash, " ", image->name());
                     image->unreference(); // the one that stays for the process's life
                 }
             return status == mrFileMatReadOK ? text : std::string();
         }},
        {"mrUtils::read_pcp of a stream",
         [&](Attempt& attempt) {
             std::istringstream in(palette_text);
             return read_palette(attempt,
                                 [&](mrColourPalette& palette) { return mrUtils::read_pcp(in, palette); });
         }},
        {"mrUtils::read_pcp of a path",
         [&](Attempt& attempt) {
             mrFault fault;
             std::string const text = read_palette(attempt, [&](mrColourPalette& palette) {
                 return mrUtils::read_pcp(palette_source, palette, fault);
             });
             return result_of(!text.empty(), fault, text);
         }},
        {"mrColourPaletteCache::load_palette",
         [&](Attempt& attempt) {
             mrPaletteFileError error{};
             attempt([&] { error = palettes.load_palette(palette_path); });
             EXPECT_EQ(palettes.size(), error == mrPaletteFileOK ? 1 : 0);
             if (error != mrPaletteFileOK)
                 return std::string();
             std::string const text = text_of(palettes.get_palette(palette_path));
             palettes.remove_palette(palette_path);
             return text;
         }},
    };
    for (Operation const& operation : operations)
        try_every_allocation(operation);
    mrColourPaletteCache::delete_singleton();
}

TEST_F(MemoryTest, FilesAreWrittenOrNot)
{
    mrImageCache cache(3, 1);
    for (unsigned int hash : {7u, 9u})
        cache.add_image(hash, images[0].get());
    mrColourPalette palette;
    std::istringstream in(palette_text);
    ASSERT_EQ(mrUtils::read_pcp(in, palette), mrPaletteFileOK);
    int const references = count_references();
    auto const write_memory = [&](Attempt& attempt, auto const& write) {
        std::string bytes;
        mrFault fault;
        int written = 0;
        attempt([&] { written = write(mrTarget::to_memory(bytes), fault); });
        // A cache is written without its images too, and the fault tells.
        return result_of(written && fault.reason.invalid(), fault, bytes);
    };
    Operation const operations[] = {
        {"mrFileMat::write to a path",
         [&](Attempt& attempt) {
             int written = 0;
             attempt([&] { written = material->write(out_path); });
             EXPECT_EQ(count_references(), references);
             return written ? read_bytes(out_path.c_str()) : std::string();
         }},
        {"mrFileMat::write to memory",
         [&](Attempt& attempt) {
             return write_memory(attempt, [&](mrTarget const& target, mrFault& fault) {
                 return material->write(target, fault);
             });
         }},
        {"mrImageCache::write over an older file",
         [&](Attempt& attempt) {
             write_bytes(out_path.c_str(), "older");
             mrFault fault;
             int written = 0;
             mrTarget const target = mrTarget::to_path(out_path);
             attempt([&] { written = cache.write(target, fault); });
             std::string const bytes = read_bytes(out_path.c_str());
             bool const whole = written && fault.reason.invalid();
             EXPECT_TRUE(whole || bytes == "older");
             return result_of(whole, fault, bytes);
         }},
        {"mrImageCache::write",
         [&](Attempt& attempt) {
             return write_memory(
                 attempt, [&](mrTarget const& target, mrFault& fault) { return cache.write(target, fault); });
         }},
        {"mrUtils::write_images",
         [&](Attempt& attempt) {
             return write_memory(attempt, [&](mrTarget const& target, mrFault& fault) {
                 return mrUtils::write_images(table, target, fault);
             });
         }},
        {"mrUtils::write_pcp",
         [&](Attempt& attempt) {
             std::ostringstream stream;
             attempt([&] { mrUtils::write_pcp(palette, stream); });
             return stream ? stream.str() : std::string();
         }},
    };
    for (Operation const& operation : operations)
        try_every_allocation(operation);
}

TEST_F(MemoryTest, PicturesAreMadeOrNull)
{
    giTriBlock block;
    gsTriUtils::check_out_nodes(block).append({0, 0, 0});
    mrThumbAtts::FaceCountTable blocks(mrInitialSize, mrFillLimit);
    mrPieChart const chart;
    mrThumbAtts const atts(8, 6, gsRGB(1, 2, 3), gsRGB(4, 5, 6), {0, 0, 1}, {0, 1, 0}, &block, &blocks,
                           &chart);
    mrThumbnails thumbnails(renderer, atts);
    giTriBlockcoDListPtrcoPtrcoDList meshes;
    meshes.append(&block);
    mrRecolouredImageCache& tints = mrRecolouredImageCache::singleton();
    // Nobody but its tinted copies, which stay, holds a reference on it.
    static auto* const unheld = new dgDuctImage("an image of a long name", 5, 5);
    int before = 0;
    auto const tint = [&](Attempt& attempt) {
        dgDuctImage* image = nullptr;
        attempt([&] { image = tints.recoloured_image(unheld, giColour(9, 90, 200, 0)); });
        EXPECT_EQ(tints.clear(), image ? 1 : 0);
        EXPECT_EQ(unheld->references(), image ? before + 1 : before);
        before = unheld->references();
        return image ? std::string(image->name()) : std::string();
    };
    Attempt undisturbed(1L << 40, Extent::one);
    tint(undisturbed);
    long const live = count_live_allocations();
    tint(undisturbed);
    long const kept = count_live_allocations() - live;

    auto const draw = [&](Attempt& attempt, auto const& from) {
        dgDuctImage* image = nullptr;
        renderer->buffer = 3;
        attempt([&] { image = from(); });
        EXPECT_EQ(renderer->reading, 0);
        return text_of(image);
    };
    Operation const operations[] = {
        {"from_material",
         [&](Attempt& a) { return draw(a, [&] { return thumbnails.from_material(*material); }); }},
        {"from_material_file",
         [&](Attempt& a) { return draw(a, [&] { return thumbnails.from_material_file(material_path); }); }},
        {"from_image_file",
         [&](Attempt& a) { return draw(a, [&] { return thumbnails.from_image_file(image_path); }); }},
        {"from_image",
         [&](Attempt& a) { return draw(a, [&] { return thumbnails.from_image(*images[0]); }); }},
        {"from_meshes",
         [&](Attempt& a) {
             std::string picture = draw(a, [&] { return thumbnails.from_meshes(meshes); });
             EXPECT_EQ(renderer->buffer, 3);
             return picture;
         }},
        {"from_mesh", [&](Attempt& a) { return draw(a, [&] { return thumbnails.from_mesh(block); }); }},
        {"from_colour",
         [&](Attempt& a) { return draw(a, [&] {
                               return thumbnails.from_colour({1, 2, 3});
                           }); }},
    };
    try_every_allocation({"mrRecolouredImageCache::recoloured_image", tint, false, kept});
    EXPECT_GT(kept, 0);
    // From here on the cache has the material's tinted images.
    for (Operation const& operation : operations)
        try_every_allocation(operation);
    mrRecolouredImageCache::delete_singleton();
}

TEST_F(MemoryTest, WhatMayThrowChangesNothing)
{
    auto const add_to_cache = [&](Attempt& attempt) {
        Image const unheld(new dgDuctImage("", 1, 1));
        mrImageCache cache(8, 1);
        for (unsigned int hash = 1; hash <= 8; ++hash) // as many as its table has room for
            cache.add_image(hash, images[0].get());
        attempt([&] { cache.add_image(11, unheld.get()); });
        EXPECT_EQ(cache.size(), 8);
        EXPECT_EQ(cache.hash_value_exists(11), attempt.threw ? 0 : 1);
        if (attempt.threw)
            return std::string();
        // The evicted entry stays for the process's life.
        images[0]->unreference();
        EXPECT_EQ(cache.get_image(11), unheld.get());
        unheld->reference(); // given back by the entry
        return std::string("added");
    };
    auto const append_to_palette = [&](Attempt& attempt) {
        mrColourPalette palette;
        doublecoDList components;
        for (double value : {1.0, 2.0, 3.0})
            components.append(value);
        attempt([&] { palette.append("a name that needs memory", mrColourEncodingRgb8, components); });
        int index = 0;
        EXPECT_EQ(palette.size(), attempt.threw ? 0 : 1);
        EXPECT_EQ(palette.find_colour("a name that needs memory", index), palette.size());
        return palette.size() == 1 ? text_of(palette) : std::string();
    };
    auto const write_facet = [&](Attempt& attempt) {
        xmlDocument document;
        xmlElement& root = document.create_element("root");
        document.append_child(root);
        attempt([&] { (*material->facets().begin())->xml_write(root); });
        EXPECT_EQ(root.child_nodes().length(), attempt.threw ? 0u : 1u);
        return attempt.threw ? std::string() : std::string("written");
    };
    dgkBezCurve3 line(1, {{0, 0, 0}, {1, 0, 0}});
    auto const make_slices = [&](Attempt& attempt) {
        mrPieChart const chart(&line, 3, 2);
        std::size_t slices = 0;
        attempt([&] { slices = chart.blocks(3).size(); });
        EXPECT_EQ(chart.blocks(3).size(), 3u) << "the next time";
        return slices == 3 ? std::string("made") : std::string();
    };
    Operation const operations[] = {{"mrImageCache::add_image", add_to_cache, true, 1},
                                    {"mrColourPalette::append", append_to_palette, true},
                                    {"mrFMFacet::xml_write", write_facet, true},
                                    {"mrPieChart::blocks", make_slices}};
    for (Operation const& operation : operations)
        try_every_allocation(operation);
}
