#include "mrFileMultimat.h"

#include "materialText.h"
#include "mrFMFacet.h"

namespace {

/// What a document holds; deletes its facets.
struct Content
{
    ~Content()
    {
        for (mrFMFacet* facet : facets)
            delete facet;
    }

    std::string document() const
    {
        std::ostringstream out;
        mrFileMultimat::write(out, encapsulation, file_props, facets);
        return out.str();
    }

    int read(std::string const& text)
    {
        return mrFileMultimat::read(utString(text), encapsulation, file_props, facets);
    }

    mrImageEncapsulationType encapsulation = mrImageEncapsulationNone;
    mrMatPropcoSet file_props{mrInitialSize, mrFillLimit};
    mrFMFacetcoDListPtrcoPtrcoDList facets;
};

/// The example in the description of the format.
std::string example_document()
{
    std::string const page = read_bytes(sample("../docs/material-file.md"));
    std::size_t const start = page.find("\n<?xml") + 1;
    return page.substr(start, page.find("```", start) - start);
}

} // namespace

TEST(mrFileMultimat, WritesAndReadsTheExampleOfTheFormat)
{
    Content example, back;
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
    EXPECT_EQ(back.read(with(document, "64bAAAAAAAA4D8=", "0.5")), 1);
    EXPECT_EQ(back.encapsulation, mrImageEncapsulationEmbeddedPng);
    ASSERT_EQ(back.facets.size(), 2u);
    EXPECT_TRUE(**back.facets.begin() == **example.facets.begin());
    EXPECT_TRUE(**++back.facets.begin() == **++example.facets.begin());
}

TEST(mrFileMultimat, RefusalsAndWhatTheyLeave)
{
    std::string const good = example_document();
    using Case = std::pair<std::string, std::size_t>;
    for (auto const& [bad, file_props] : {
             Case{with(with(good, "<multimat>", "<m>"), "</multimat>", "</m>"), 0},
             Case{with(good, ">embedded_png<", ">None<"), 0},
             Case{with(good, ">-7<", ">x<"), 2},
         }) {
        Content content;
        EXPECT_EQ(content.read(bad), 0) << bad;
        EXPECT_EQ(content.file_props.size(), file_props) << bad;
        EXPECT_TRUE(content.facets.empty()) << bad;
    }
}
