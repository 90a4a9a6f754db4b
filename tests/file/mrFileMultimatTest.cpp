#include "mrFileMultimat.h"

#include "materialText.h"
#include "mrFMFacet.h"
#include "mrXMLUtils.h"

#include <locale>

namespace {

/// What a document holds; deletes its facets.
struct Content
{
    Content() = default;
    Content(Content const&) = delete;
    Content& operator=(Content const&) = delete;
    ~Content()
    {
        for (mrFMFacet* facet : facets)
            delete facet;
    }

    /// A facet and a property with the text for each of their strings.
    explicit Content(utString const& text)
    {
        file_props.add(string_prop(text, text));
        facets.append(new mrFMFacet(new mrFMPlainMat(text, file_props, 12345, giColour(200, 30, 30, 0), 0.5,
                                                     0.0, 0.0, 0.0, 1234.5, text),
                                    layers({text})));
    }

    std::string document() const
    {
        std::ostringstream out;
        mrFileMultimat::write(out, encapsulation, file_props, facets);
        return out.str();
    }

    int read(utString const& text) { return mrFileMultimat::read(text, encapsulation, file_props, facets); }

    mrImageEncapsulationType encapsulation = mrImageEncapsulationNone;
    mrMatPropcoSet file_props{mrInitialSize, mrFillLimit};
    mrFMFacetcoDListPtrcoPtrcoDList facets;
};

/// Writes the text in every place and reads it back as a file is read; no line is too long.
void expect_carried(std::string const& text)
{
    SCOPED_TRACE(text.substr(0, 20) + ", " + std::to_string(text.size()) + " bytes");
    Content const original{utString(text)};
    std::istringstream lines(original.document());
    for (std::string line; std::getline(lines, line);)
        ASSERT_LE(line.size(), 1022u);

    std::istringstream in(original.document());
    utString cut;
    ASSERT_EQ(mrXMLUtils::read_doc(in, "multimat", cut), 1);
    Content back;
    ASSERT_EQ(back.read(cut), 1);
    EXPECT_TRUE(back.file_props == original.file_props);
    ASSERT_EQ(back.facets.size(), 1u);
    EXPECT_TRUE(**back.facets.begin() == **original.facets.begin());
}

std::string repeated(std::string const& text, std::size_t length)
{
    std::string result;
    while (result.size() < length)
        result += text;
    return result;
}

/// The example in the description of the format.
std::string example_document()
{
    std::string const page = read_bytes(sample("../docs/material-file.md"));
    std::size_t const start = page.find("\n<?xml") + 1;
    return page.substr(start, page.find("```", start) - start);
}

/// Decimal commas and grouped digits.
struct Comma : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

} // namespace

TEST(mrFileMultimat, WritesTheExampleOfTheFormatInEveryLocale)
{
    Content example;
    example.encapsulation = mrImageEncapsulationEmbeddedPng;
    example.file_props.add(string_prop("supplier", "Weaver & Sons"));
    example.file_props.add(mrMatProp(mrMatPropTypeDoubleTag, "price", 12.5, 7));
    example.facets.append(
        new mrFMFacet(new mrFMPlainMat("matt red", properties({}), 12345, giColour(200, 30, 30, 0), 0.5, 0.0,
                                       0.0, 0.0, 1.0, "line one\nline two"),
                      {}));
    mrFMTexturecoDList layer;
    layer.append(mrFMTexture("weave", mrTexLayerColour, 1, giColour(120, 60, 20, 0)));
    example.facets.append(new mrFMFacet(red("pale"), layer));

    std::string const document = example_document();
    EXPECT_EQ(example.document(), document + "\n") << "a byte before the images";
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Comma));
    example.encapsulation = mrImageEncapsulationNone;
    EXPECT_EQ(example.document(), with(document, "embedded_png", "none"));
    Content back;
    EXPECT_EQ(back.read(with(document, "64bAAAAAAAA4D8=", "0.5").c_str()), 1);
    EXPECT_EQ(back.encapsulation, mrImageEncapsulationEmbeddedPng);
    std::locale::global(before);
    ASSERT_EQ(back.facets.size(), 2u);
    EXPECT_TRUE(**back.facets.begin() == **example.facets.begin());
    EXPECT_TRUE(**++back.facets.begin() == **++example.facets.begin());
}

TEST(mrFileMultimat, EveryTextIsCarried)
{
    for (char const* text : {" ",
                             "\n",
                             "\r",
                             "\t",
                             "\r\n\r\n",
                             " a \n b ",
                             "]]>",
                             "]]",
                             "<!-- -->",
                             "-->",
                             "<multimat>",
                             "</multimat>",
                             "\n</multimat>\n",
                             "&amp;&#10;&",
                             "<a b=\"c\">'",
                             "<![CDATA[x]]>",
                             "<?xml version=\"1.0\"?>",
                             "gr\xc3\xbcn",
                             "gr\xfcn",
                             "\xc3",
                             "\xff\xfe",
                             "\xef\xbf\xbe",
                             "\xef\xbf\xbf",
                             "\xed\xa0\x80",
                             "\xf4\x90\x80\x80",
                             "\x7f"})
        expect_carried(text);
    for (char const* pattern : {"x", "\xc3\xa9", "\xe9", "&", "]]>", "\xe2\x82\xac\r\xf0\x9f\x98\x80 \n"})
        expect_carried(repeated(pattern, 100'000));
    for (std::size_t length = 960; length <= 1030; ++length)
        for (char const* pattern : {"x", "\xc3\xa9", "\xe9<"})
            expect_carried(repeated(pattern, length));
}

TEST(mrFileMultimat, RefusalsAndWhatTheyLeave)
{
    std::string const good = Content("x").document();
    using Case = std::pair<std::string, std::size_t>;
    for (auto const& [bad, file_props] : {
             Case{"", 0},
             Case{with(good, "</facets>", ""), 0},
             Case{good + "<multimat/>", 0},
             Case{with(good, "<multimat>", "<!DOCTYPE multimat [<!ENTITY e \"x\">]>\n<multimat>"), 0},
             Case{with(with(good, "<multimat>", "<m>"), "</multimat>", "</m>"), 0},
             Case{with(good, ">none<", ">None<"), 0},
             Case{with(good, ">string<", ">text<"), 0},
             Case{with(good, ">12345<", ">x<"), 1},
             Case{with(good, "</facets>", "<facet/></facets>"), 1},
         }) {
        Content content;
        EXPECT_EQ(content.read(bad.c_str()), 0) << bad;
        EXPECT_EQ(content.file_props.size(), file_props) << bad;
        EXPECT_TRUE(content.facets.empty()) << bad;
    }

    Content content;
    EXPECT_EQ(
        mrFileMultimat::extract(xmlDocument(), content.encapsulation, content.file_props, content.facets), 0);
}
