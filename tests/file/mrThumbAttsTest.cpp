#include "mrThumbAtts.h"

#include "mrPieChart.h"
#include "mrTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

using Table = mrThumbAtts::FaceCountTable;

std::string const args = "source/file/mrThumbAtts.cpp: Args";
std::string const state = "source/file/mrThumbAtts.cpp: State";

giTriBlock block_a, block_b;
mrPieChart const pie_chart, other_chart;

/// A table with one list of blocks for each of 1, 2, 3 … facets; the key is only a place here.
struct Filled : Table
{
    Filled(std::initializer_list<std::initializer_list<giTriBlock*>> lists)
        : Table(mrInitialSize, mrFillLimit)
    {
        int key = 1;
        for (auto const& blocks : lists) {
            auto& list = (*this)[key++] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
            for (giTriBlock* block : blocks)
                list->append(block);
        }
    }
};

Filled const one_entry{{&block_a}};
Filled const empty{};

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
    atts.geom_view_up_vector(giVector3());
    EXPECT_THAT(reports(), ElementsAre(args, state));
    atts.height(48);
    atts.surface_colour(Atts().surface);
    atts.geom_view_normal_vector({1, 0, 0});
    atts.geom_view_up_vector({0, 0, 1});
    atts.width(64);
    EXPECT_THAT(reports(), ElementsAre(state, state, state, state, state));
    EXPECT_TRUE(atts == (Atts{.background = gsRGB(), .tex_blocks = nullptr}));
    EXPECT_THAT(reports(), ElementsAre(args));
}

TEST(mrThumbAtts, ComparesAllButThePieChart)
{
    mrThumbAtts const usual = Atts{};
    EXPECT_TRUE(usual == mrThumbAtts(utCopyDeep, usual));
    EXPECT_TRUE(usual == Atts{.chart = &other_chart});
    EXPECT_TRUE(usual.equal(Atts{.normal = {1, 0.0001, 0}})); // 0.0057 degrees
    for (Atts const& different :
         {Atts{.width = 65}, Atts{.height = 49}, Atts{.surface = gsRGB()}, Atts{.background = gsRGB()},
          Atts{.normal = {1, 0.00035, 0}}, Atts{.up = {1, 0, 0}}, Atts{.plain_block = &block_a}})
        EXPECT_TRUE(usual != different);
    EXPECT_TRUE(mrThumbAtts() == mrThumbAtts());
    EXPECT_TRUE(mrThumbAtts() != usual);
}

TEST(mrThumbAtts, TheLastPairOfListsDecides)
{
    giTriBlock* const a = &block_a;
    giTriBlock* const b = &block_b;
    struct Case
    {
        Filled mine, theirs;
        int equal;
    } const cases[] = {{{{a, b}}, {{a, b}}, 1},
                       {{{a, b}}, {{b, a}}, 0},
                       {{{a}}, {{a, b}}, 0},
                       {{{a}, {b}}, {{b}, {b}}, 1},
                       {{{b}, {a}}, {{b}, {b}}, 0},
                       {{{a}, {b}}, {{a}}, 1},
                       {{{a}}, {{a}, {b}}, 1},
                       {{}, {}, 1},
                       {{}, {{a}}, 0},
                       {{{a}}, {}, 0}};
    for (Case const& each : cases) {
        mrThumbAtts const mine = Atts{.tex_blocks = &each.mine};
        EXPECT_EQ(mine == Atts{.tex_blocks = &each.theirs}, each.equal) << &each - cases;
    }
    EXPECT_EQ(reports().size(), 4u); // "Args" of the empty tables
}
