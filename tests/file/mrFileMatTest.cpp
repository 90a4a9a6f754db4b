#include "mrFileMat.h"

#include "materialText.h"
#include "mrFault.h"
#include "mrFMFacet.h"
#include "mrImageBlock.h"
#include "mrSource.h"
#include "mrTarget.h"

#include "dgDuctImage.h"
#include "gxOpenFile.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::StartsWith;

namespace {

std::string const state = "source/file/mrFileMat.cpp: State";

/// A folder, an image held with one reference, and a file of three facets that layer it.
class mrFileMatTest : public testing::Test
{
protected:
    mrFileMatTest() { weave->reference(); }
    ~mrFileMatTest() override { weave->unreference(); }

    /// @return the bytes of the file
    std::string write_sample(utString const& name, bool with_image)
    {
        utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
        if (with_image)
            images[name] = weave;
        mrFMFacetcoDListPtrcoPtrcoDList facets;
        for (int i = 0; i < 3; ++i)
            facets.append(new mrFMFacet(red(), layers({name})));
        mrFileMat const file(properties({string_prop("a", "b")}), facets, images);
        EXPECT_EQ(weave->references(), with_image ? 2 : 1);
        EXPECT_EQ(file.write(path), 1);
        return read_bytes(path.c_str());
    }

    mrFileMatReadStatus status_of(std::string const& bytes) const
    {
        std::string const changed = folder.path("changed");
        std::filesystem::remove(changed); // writing over a file makes some file systems wait for the disk
        write_bytes(changed, bytes);
        return mrFileMat().read(changed.c_str());
    }

    TestFolder const folder;
    utString const path = folder.path("sample.multimat").c_str();
    dgDuctImage* const weave = new dgDuctImage("woven", 3, 2);
};

} // namespace

TEST_F(mrFileMatTest, ComesBackWithItsImagesWhateverTheirNames)
{
    std::string const long_name(100'000, '\xe9');
    struct
    {
        char const* name;
        char const* as_read = nullptr; ///< where it is another
    } const cases[] = {{"\n two\r\n lines\t"},       {"gr\xc3\xbcn gr\xfcn"},
                       {"\xef\xbf\xbe\xed\xa0\x80"}, {"<!-- -->]]>&amp;<![CDATA[&#13;]]>"},
                       {"a\1b", "a\u2401b"},         {"\xfc\x1f", "\xfc\u241f"},
                       {"\n</multimat>\n"},          {long_name.c_str()}};
    for (auto const& [name, as_read] : cases) {
        write_sample(name, true);
        EXPECT_EQ(weave->references(), 1);
        mrFileMat in;
        ASSERT_EQ(in.read(path), mrFileMatReadOK) << name;
        EXPECT_TRUE(in.file_props() == properties({string_prop("a", "b")}));
        ASSERT_EQ(in.facets().size(), 3u);
        utString const key = (*in.facets().begin())->textures().begin()->image_name();
        EXPECT_EQ(key, as_read ? as_read : name);
        EXPECT_EQ(in.images().size(), 1u);
        dgDuctImage const* const back = in.images().read(key);
        ASSERT_TRUE(back) << name;
        EXPECT_STREQ(back->name(), "woven");
        EXPECT_TRUE(back->equal(weave));
        EXPECT_EQ(back->references(), 1);
    }
}

TEST_F(mrFileMatTest, WhatCannotBeWrittenOrIsEmpty)
{
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    for (std::string const& bad : {folder.path("missing/a"), folder.path(""), std::string("/dev/full")})
        EXPECT_EQ(mrFileMat(properties({string_prop("a", "b")}), {}, images).write(bad.c_str()), 0) << bad;
    images["null"] = nullptr;
    EXPECT_EQ(mrFileMat(properties({}), {}, images).write(path), 0);

    EXPECT_EQ(mrFileMat().write(path), 1);
    EXPECT_THAT(reports(), ElementsAre(state));
    mrFileMat in;
    EXPECT_EQ(in.read(path), mrFileMatReadOK);
    EXPECT_TRUE(in.empty());
}

TEST_F(mrFileMatTest, StatusOfEachKindOfFile)
{
    std::string const good = write_sample("weave", true);
    std::string const plain = write_sample("weave", false);
    using Case = std::pair<std::string, mrFileMatReadStatus>;
    for (auto const& [bytes, status] : {
             Case{plain + good, mrFileMatReadOK}, // "none" is believed
             Case{good + "nine byte", mrFileMatReadOK},
             Case{with(good, "</multimat>\n\n", "</multimat>\n"), mrFileMatBadContent},
             Case{with(good, "embedded_png", "embedded_gif"), mrFileMatBadContent},
             Case{with(plain, "<multimat>", "<multimat version=\"1\">"), mrFileMatNoDocument},
         })
        EXPECT_EQ(status_of(bytes), status) << bytes;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    for (char const* name : {"missing", "", "pipe"})
        EXPECT_EQ(mrFileMat().read(folder.path(name).c_str()), mrFileMatOpenFailed) << name;

    mrFileMat in;
    EXPECT_EQ(in.read(path), mrFileMatReadOK);
    std::size_t const third = plain.rfind("weave");
    write_bytes(path.c_str(), plain.substr(0, third) + plain.substr(third + 5));
    EXPECT_EQ(in.read(path), mrFileMatBadContent);
    EXPECT_THAT(reports(), ElementsAre(state)) << "read into a filled one";
    EXPECT_EQ(in.file_props().size(), 1u);
    EXPECT_TRUE(in.facets().empty()) << "those of before go too, and the two that could be read";
}

TEST_F(mrFileMatTest, IsTheSameThroughAPathMemoryAndADescriptor)
{
    std::string const bytes = write_sample("weave", true);
    mrFault fault;
    gxDescriptor const open = gx_open_regular(path, fault.reason);
    for (mrSource const& source :
         {mrSource::from_path(path), mrSource::from_memory(bytes), mrSource::from_descriptor(open.get())}) {
        mrFileMat in;
        ASSERT_EQ(in.read(source, {}, fault), mrFileMatReadOK) << fault.words().view();
        EXPECT_EQ(in.encapsulation(), mrImageEncapsulationEmbeddedPng);
        std::string written = "what was there";
        EXPECT_EQ(in.write(mrTarget::to_memory(written), fault), 1);
        EXPECT_EQ(written, bytes);
    }
    mrFileMat in;
    EXPECT_EQ(in.read(mrSource::from_memory(bytes), {.pixels = 5, .pixels_per_byte = 0}, fault),
              mrFileMatBadContent);
    EXPECT_THAT(std::string(fault.words().view()), StartsWith("image 1, at byte ")) << "it has six pixels";
    EXPECT_EQ(in.read(mrSource::from_memory(""), {}, fault), mrFileMatNoDocument);
    EXPECT_EQ(in.read(mrSource::from_descriptor(-1), {}, fault), mrFileMatOpenFailed);
    EXPECT_EQ(fault.words(), "Bad file descriptor");
    EXPECT_THAT(reports(), ElementsAre(state, state)) << "it is filled by then";
}

TEST_F(mrFileMatTest, TellsWhatIsWrongAndWhere)
{
    std::string const good = write_sample("weave", true);
    auto const line_of = [&](char const* tag) {
        return 1 + std::count(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(good.find(tag)), '\n');
    };
    auto const image_start = static_cast<std::int64_t>(good.find("\x89PNG"));
    struct
    {
        std::string bytes;
        char const* words;
        std::int64_t line, column = 0, byte = -1;
    } const cases[] = {
        {"", "no line holds \"<multimat>\"", 0},
        {"\n" + std::string(2000, ' '), "line 2 is longer than 1022 characters", 2},
        {with(good, "</multimat>", "</multimat >"), "\"<multimat>\" in line 2 is never closed", 2},
        {"one\ntwo\n<multimat>\n<a>\n</b></multimat>\n", "line 5, column 3: mismatched tag", 5, 3},
        {with(good, "<multimat>", "<multimat><a/></multimat>"),
         "\"image_encapsulation_type\" is missing or neither \"none\" nor \"embedded_png\"", 2},
        {with(good, "<recoloured>0", "<recoloured>2"),
         "facet 1: texture 1: \"recoloured\" is missing or neither 0 nor 1", line_of("<texture>")},
        {with(good, "<type>string", "<type>text"),
         "property 1: \"type\" is missing or none of \"string\", \"integer\" and \"double\"", 5},
        {with(good, "<polish>", "<polish>x"),
         "facet 1: plain material: \"polish\" is missing or no number from 0 to 1",
         line_of("<plain_material>")},
        {good.substr(0, good.size() - 20), "image 1, at byte ", 0, 0, image_start},
    };
    for (auto const& each : cases) {
        mrFileMat in;
        mrFault fault;
        EXPECT_NE(in.read(mrSource::from_memory(each.bytes), {}, fault), mrFileMatReadOK);
        EXPECT_THAT(std::string(fault.words().view()), StartsWith(each.words));
        EXPECT_EQ(fault.line, each.line) << each.words;
        EXPECT_EQ(fault.column, each.column) << each.words;
        EXPECT_EQ(fault.byte, each.byte) << each.words;
    }
}
