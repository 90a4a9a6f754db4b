#include "mrThumbAtts.h"

#include "mrPieChart.h"
#include "mrTest.h"

#include <gmock/gmock.h>

#include <initializer_list>

using testing::ElementsAre;

namespace {

using Table = mrThumbAtts::FaceCountTable;

std::string const args = "source/file/mrThumbAtts.cpp: Args";
std::string const state = "source/file/mrThumbAtts.cpp: State";

giTriBlock block_a, block_b;
mrPieChart const pie_chart, other_chart;

/// A table of lists of one block each.
struct Filled : Table
{
    Filled(std::initializer_list<giTriBlock*> blocks) : Table(mrInitialSize, mrFillLimit)
    {
        int key = 0;
        for (giTriBlock* block : blocks) {
            (*this)[++key] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
            (*this)[key]->append(block);
        }
    }
};

Filled const one_entry{&block_a}, empty{};

/// Attributes that differ from the usual ones in a thing or two.
struct Atts
{
    int width = 64;
    int height = 48;
    gsRGB surface{180, 181, 182};
    gsRGB background{10, 20, 30};
    giVector3 normal{1, 0, 0};
    giVector3 up{0, 0, 1};
    giTriBlock const* plain_block = nullptr;
    Table const* tex_blocks = &one_entry;
    mrPieChart const* chart = &pie_chart;

    operator mrThumbAtts() const
    {
        return {width, height, surface, background, normal, up, plain_block, tex_blocks, chart};
    }
};

} // namespace

TEST(mrThumbAtts, ReportsAndStoresAllTheSame)
{
    for (Atts const& wrong :
         {Atts{.width = -1}, Atts{.height = 0}, Atts{.normal = giVector3()}, Atts{.up = giVector3()},
          Atts{.tex_blocks = nullptr}, Atts{.tex_blocks = &empty}, Atts{.chart = nullptr}}) {
        mrThumbAtts atts = wrong;
        EXPECT_THAT(reports(), ElementsAre(args));
        EXPECT_EQ(atts.height(), wrong.height);
        EXPECT_EQ(atts.tex_blocks().empty(), wrong.tex_blocks != &one_entry);
        EXPECT_EQ(atts.pie_chart().blocks(2).size(), 2u);
    }

    mrThumbAtts atts;
    EXPECT_EQ(atts.background_colour(), gsRGB());
    atts.height(-2);
    atts.surface_colour(gsRGB(7, 8, 9));
    atts.geom_view_normal_vector(giVector3());
    atts.geom_view_up_vector({0, 3, 0});
    EXPECT_THAT(reports(), ElementsAre(args, state, state, args, state, state));
    atts.width(5); // from here on it is valid
    EXPECT_THAT(reports(), ElementsAre(state));
    EXPECT_EQ(atts.width() * atts.height(), -10);
    EXPECT_EQ(atts.surf_colour(), gsRGB(7, 8, 9));
    EXPECT_TRUE(atts.geom_view_normal_vector().invalid());
    EXPECT_EQ(atts.geom_view_up_vector().y, 3.0);
}

TEST(mrThumbAtts, ComparesAllButThePieChart)
{
    mrThumbAtts const usual = Atts{};
    EXPECT_TRUE(usual == mrThumbAtts(utCopyDeep, usual));
    EXPECT_TRUE(usual == (Atts{.normal = {1, 0.0001, 0}, .chart = &other_chart})); // 0.0057 degrees
    for (Atts const& different :
         {Atts{.width = 65}, Atts{.height = 49}, Atts{.surface = gsRGB()}, Atts{.background = gsRGB()},
          Atts{.normal = {1, 0.00035, 0}}, Atts{.up = {1, 0, 0}}, Atts{.plain_block = &block_a}})
        EXPECT_TRUE(usual != different);
    EXPECT_TRUE(mrThumbAtts() != usual);
    mrThumbAtts const without_up = Atts{.up = giVector3()};
    EXPECT_THAT(reports(), ElementsAre(args));
    EXPECT_TRUE(without_up != without_up);

    // As the last pair of lists is.
    Filled const ab{&block_a, &block_b}, bb{&block_b, &block_b}, ba{&block_b, &block_a};
    mrThumbAtts const with_bb = Atts{.tex_blocks = &bb};
    EXPECT_TRUE(with_bb == Atts{.tex_blocks = &ab});
    EXPECT_TRUE(with_bb != Atts{.tex_blocks = &ba});
}
