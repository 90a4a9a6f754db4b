#include "mrFileMat.h"

#include "materialText.h"
#include "mrFMFacet.h"

#include "dgDuctImage.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

std::string const state = "source/file/mrFileMat.cpp: State";

/// A folder, an image held with one reference, and a file of three facets that layer it.
class mrFileMatTest : public testing::Test
{
protected:
    mrFileMatTest()
    {
        weave->set_all(gsColour(gsRGB(10, 20, 30)));
        weave->reference();
    }
    ~mrFileMatTest() override { weave->unreference(); }

    void write_sample(utString const& name, bool with_image)
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

TEST_F(mrFileMatTest, ComesBackWithItsImages)
{
    write_sample("weave", true);
    EXPECT_EQ(weave->references(), 1);
    mrFileMat in;
    EXPECT_TRUE(in.empty());
    ASSERT_EQ(in.read(path), mrFileMatReadOK);
    EXPECT_FALSE(in.empty());
    EXPECT_TRUE(in.file_props() == properties({string_prop("a", "b")}));
    ASSERT_EQ(in.facets().size(), 3u);
    EXPECT_TRUE(**in.facets().begin() == mrFMFacet(red(), layers({"weave"})));
    ASSERT_EQ(in.images().size(), 1u);
    EXPECT_STREQ(in.images().read("weave")->name(), "woven");
    EXPECT_TRUE(in.images().read("weave")->equal(weave));
    EXPECT_EQ(in.images().read("weave")->references(), 1);

    EXPECT_EQ(in.read(path), mrFileMatReadOK);
    EXPECT_THAT(reports(), ElementsAre(state)) << "read into a filled one";
    EXPECT_EQ(in.facets().size(), 6u);
}

TEST_F(mrFileMatTest, ALayerKeepsItsImageWhateverItsName)
{
    for (char const* name :
         {"two\nlines\r\t", "gr\xc3\xbcn", "gr\xfcn", "\xef\xbf\xbe", "<&]]>", " ", "a\1b\37"}) {
        weave->new_name(name);
        write_sample(name, true);
        mrFileMat in;
        ASSERT_EQ(in.read(path), mrFileMatReadOK) << name;
        utString const key = (*in.facets().begin())->textures().begin()->image_name();
        EXPECT_EQ(key, key == "a?b?" ? "a?b?" : name) << "control characters alone are replaced";
        ASSERT_TRUE(in.images().member(key)) << name;
        EXPECT_EQ(in.images().read(key)->name(), key) << name;
    }
}

TEST_F(mrFileMatTest, WhatCannotBeWrittenOrIsEmpty)
{
    mrFileMat const plain(properties({string_prop("a", "b")}), {}, mrFileMat().images());
    for (std::string const& bad :
         {folder.path("missing/a"), folder.path(""), std::string(), std::string("/dev/full")})
        EXPECT_EQ(plain.write(bad.c_str()), 0) << bad;

    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    images["null"] = nullptr;
    EXPECT_EQ(mrFileMat(plain.file_props(), {}, images).write(path), 0);

    EXPECT_EQ(mrFileMat().write(path), 1);
    EXPECT_THAT(reports(), ElementsAre(state));
    mrFileMat in;
    EXPECT_EQ(in.read(path), mrFileMatReadOK);
    EXPECT_TRUE(in.empty());
}

TEST_F(mrFileMatTest, StatusOfEachKindOfFile)
{
    write_sample("weave", false);
    std::string const plain = read_bytes(path.c_str());
    EXPECT_TRUE(plain.ends_with("</multimat>\n"));
    write_sample("weave", true);
    std::string const good = read_bytes(path.c_str());
    std::string const document = good.substr(0, good.find("</multimat>") + 11);
    using Case = std::pair<std::string, mrFileMatReadStatus>;
    for (auto const& [bytes, status] : {
             Case{plain + good, mrFileMatReadOK}, // "none" is believed
             Case{document, mrFileMatReadOK},
             Case{document + "\n\n123456789", mrFileMatReadOK},
             Case{document + "\n\n1234567890", mrFileMatBadContent},
             Case{with(good, "</multimat>\n\n", "</multimat>\n"), mrFileMatBadContent},
             Case{with(good, "embedded_png", "embedded_gif"), mrFileMatBadContent},
             Case{"<?xml version=\"1.0\"?>\n", mrFileMatNoDocument},
             Case{"", mrFileMatNoDocument},
             Case{with(plain, "</multimat>", "</multi>"), mrFileMatNoDocument},
             Case{with(plain, "<multimat>", "<multimat version=\"1\">"), mrFileMatNoDocument},
             Case{with(plain, "matt red", std::string(1100, 'x')), mrFileMatNoDocument},
         })
        EXPECT_EQ(status_of(bytes), status) << bytes;
    EXPECT_EQ(mrFileMat().read(folder.path("missing").c_str()), mrFileMatOpenFailed);
    EXPECT_NE(mrFileMat().read(folder.path("").c_str()), mrFileMatReadOK) << "a folder";

    std::size_t const third = plain.rfind("weave");
    write_bytes(path.c_str(), plain.substr(0, third) + plain.substr(third + 5));
    mrFileMat in;
    EXPECT_EQ(in.read(path), mrFileMatBadContent);
    EXPECT_EQ(in.file_props().size(), 1u);
    EXPECT_TRUE(in.facets().empty()) << "the first two go with the third";
}

TEST_F(mrFileMatTest, NoDamageDoesMoreThanFail)
{
    write_sample("weave", true);
    std::string const good = read_bytes(path.c_str());
    std::size_t const closed = good.find("</multimat>") + 11;
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_EQ(status_of(good.substr(0, length)) == mrFileMatNoDocument, length < closed) << length;
    for (std::size_t at = 0; at < good.size(); ++at)
        for (int flip : {1, 0x80, 0xff}) {
            std::string changed = good;
            changed[at] = static_cast<char>(changed[at] ^ flip);
            EXPECT_NE(status_of(changed), mrFileMatOpenFailed);
        }
    EXPECT_EQ(status_of(good + "x"), mrFileMatReadOK);
}
