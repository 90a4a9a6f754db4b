#include "mrFileMultimat.h"

#include "materialText.h"
#include "mrFMFacet.h"

#include <memory>

TEST(mrFileMultimat, WritesAndReadsTheExampleOfTheFormat)
{
    auto const file_props = properties(
        {string_prop("supplier", "Weaver & Sons"), mrMatProp(mrMatPropTypeDoubleTag, "price", 12.5, 7)});
    mrFMFacet plain(new mrFMPlainMat("matt red", properties({}), 12345, giColour(200, 30, 30, 0), 0.5, 0.0,
                                     0.0, 0.0, 1.0, "line one\nline two"),
                    {});
    mrFMTexturecoDList layer;
    layer.append(mrFMTexture("weave", mrTexLayerColour, 1, giColour(120, 60, 20, 0)));
    mrFMFacet layered(red("pale"), layer);
    mrFMFacetcoDListPtrcoPtrcoDList facets, back;
    facets.append(&plain);
    facets.append(&layered);

    // It stands in the description of the format.
    std::string const page = read_bytes(sample("../docs/material-file.md"));
    std::size_t const start = page.find("\n<?xml") + 1;
    std::string const document = page.substr(start, page.find("```", start) - start);
    std::ostringstream out;
    mrFileMultimat::write(out, mrImageEncapsulationEmbeddedPng, file_props, facets);
    EXPECT_EQ(out.str(), document + "\n") << "a byte before the images";

    utString const other_number(with(document, "64bAAAAAAAA4D8=", "0.5"));
    mrImageEncapsulationType encapsulation = mrImageEncapsulationNone;
    auto props = properties({});
    EXPECT_EQ(mrFileMultimat::read(other_number, encapsulation, props, back), 1);
    EXPECT_EQ(encapsulation, mrImageEncapsulationEmbeddedPng);
    ASSERT_EQ(back.size(), 2u);
    std::unique_ptr<mrFMFacet> const first(*back.begin()), second(*++back.begin());
    EXPECT_TRUE(*first == plain && *second == layered);
}
