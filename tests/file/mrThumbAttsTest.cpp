#include "mrThumbAtts.h"

#include "mrPieChart.h"
#include "mrTest.h"

#include <gmock/gmock.h>

#include <cmath>
#include <initializer_list>
#include <numbers>

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

using Table = mrThumbAtts::FaceCountTable;

std::string const args = "source/file/mrThumbAtts.cpp: Args";
std::string const state = "source/file/mrThumbAtts.cpp: State";

gsRGB const surface(180, 181, 182);
gsRGB const background(10, 20, 30);
giVector3 const normal(1.0, 0.0, 0.0);
giVector3 const up(0.0, 0.0, 1.0);
giVector3 const unset;

giTriBlock block_a, block_b;
mrPieChart const pie_chart, other_chart;

/// A table with one list of blocks for each of 1, 2, 3 … facets; the key is only a place here.
std::unique_ptr<Table> table(std::initializer_list<std::initializer_list<giTriBlock*>> lists)
{
    auto made = std::make_unique<Table>(mrInitialSize, mrFillLimit);
    int key = 1;
    for (auto const& blocks : lists) {
        auto list = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        for (giTriBlock* block : blocks)
            list->append(block);
        (*made)[key++] = std::move(list);
    }
    return made;
}

std::unique_ptr<Table> const one_entry = table({{&block_a}});

/// Attributes that differ from the usual ones in a thing or two.
struct Atts
{
    int width = 64;
    int height = 48;
    gsRGB surface_colour = surface;
    gsRGB background_colour = background;
    giVector3 view_normal = normal;
    giVector3 view_up = up;
    giTriBlock const* plain_block = nullptr;
    Table const* tex_blocks = one_entry.get();
    mrPieChart const* chart = &pie_chart;

    operator mrThumbAtts() const
    {
        return {width,       height,     surface_colour, background_colour, view_normal, view_up,
                plain_block, tex_blocks, chart};
    }
};

bool equal(mrThumbAtts const& a, mrThumbAtts const& b)
{
    EXPECT_EQ(a == b, a.equal(b));
    EXPECT_EQ(a != b, !a.equal(b));
    return a == b;
}

giVector3 turned(double degrees)
{
    double const radians = degrees * std::numbers::pi / 180.0;
    return {std::cos(radians), std::sin(radians), 0.0};
}

} // namespace

TEST(mrThumbAtts, HoldsWhatItIsGiven)
{
    mrThumbAtts const atts = Atts{.plain_block = &block_b};
    mrThumbAtts copy(utCopyDeep, atts);
    EXPECT_FALSE(copy.invalid());
    EXPECT_EQ(copy.width(), 64);
    EXPECT_EQ(copy.height(), 48);
    EXPECT_EQ(copy.surf_colour(), surface);
    EXPECT_EQ(copy.background_colour(), background);
    EXPECT_EQ(copy.geom_view_normal_vector().x, 1.0);
    EXPECT_EQ(copy.geom_view_up_vector().z, 1.0);
    EXPECT_EQ(copy.plain_block(), &block_b);
    EXPECT_EQ(&copy.tex_blocks(), one_entry.get());
    EXPECT_EQ(&copy.pie_chart(), &pie_chart);
}

TEST(mrThumbAtts, ReportsEachArgumentOnceAndStoresItAllTheSame)
{
    Table const empty(mrInitialSize, mrFillLimit);
    for (Atts const& wrong :
         {Atts{.width = -1}, Atts{.height = 0}, Atts{.view_normal = unset}, Atts{.view_up = unset},
          Atts{.tex_blocks = nullptr}, Atts{.tex_blocks = &empty}, Atts{.chart = nullptr}}) {
        mrThumbAtts atts = wrong;
        EXPECT_THAT(reports(), ElementsAre(args));
        EXPECT_EQ(atts.width(), wrong.width);
        EXPECT_EQ(atts.height(), wrong.height);
        EXPECT_EQ(atts.tex_blocks().size(), wrong.tex_blocks == one_entry.get() ? 1u : 0u);
        EXPECT_EQ(atts.pie_chart().blocks(2).size(), 2u);
    }
}

TEST(mrThumbAtts, DefaultBuiltIsInvalidUntilItIsGivenData)
{
    mrThumbAtts atts;
    EXPECT_TRUE(atts.invalid());
    EXPECT_EQ(atts.background_colour(), gsRGB());
    EXPECT_EQ(atts.pie_chart().blocks(2).size(), 2u);
    EXPECT_EQ(atts.width(), 0);
    EXPECT_EQ(atts.height(), 0);
    atts.surf_colour();
    atts.geom_view_normal_vector();
    atts.geom_view_up_vector();
    EXPECT_EQ(atts.plain_block(), nullptr);
    EXPECT_TRUE(atts.tex_blocks().empty());
    EXPECT_THAT(reports(), testing::AllOf(SizeIs(7), Each(state)));

    atts.become(Atts{});
    EXPECT_TRUE(equal(atts, Atts{}));
    atts.become(mrThumbAtts());
    EXPECT_TRUE(atts.invalid());
}

TEST(mrThumbAtts, SettersReportAndStore)
{
    mrThumbAtts atts;
    atts.width(-5);
    EXPECT_THAT(reports(), ElementsAre(args, state));
    EXPECT_FALSE(atts.invalid());
    atts.width(0);
    EXPECT_THAT(reports(), ElementsAre(args));
    atts.height(0);
    EXPECT_THAT(reports(), ElementsAre(args, state));
    atts.geom_view_normal_vector(unset);
    EXPECT_THAT(reports(), ElementsAre(args, state));
    atts.geom_view_up_vector(unset);
    EXPECT_THAT(reports(), ElementsAre(args, state));
    atts.surface_colour(surface);
    atts.height(48);
    atts.geom_view_normal_vector(normal);
    atts.geom_view_up_vector(up);
    atts.width(64);
    EXPECT_THAT(reports(), testing::AllOf(SizeIs(5), Each(state)));
    EXPECT_TRUE(equal(atts, Atts{.background_colour = gsRGB(), .tex_blocks = nullptr}));
    EXPECT_THAT(reports(), ElementsAre(args));
}

TEST(mrThumbAtts, ComparesAllButThePieChart)
{
    mrThumbAtts const usual = Atts{};
    EXPECT_TRUE(equal(usual, Atts{.chart = &other_chart}));
    EXPECT_TRUE(equal(usual, Atts{.view_normal = turned(0.0057)}));
    EXPECT_TRUE(equal(usual, Atts{.view_normal = normal * 7.0}));
    for (Atts const& different :
         {Atts{.width = 65}, Atts{.height = 49}, Atts{.surface_colour = background},
          Atts{.background_colour = surface}, Atts{.view_normal = turned(0.02)},
          Atts{.view_normal = turned(180.0)}, Atts{.view_up = normal}, Atts{.plain_block = &block_a}})
        EXPECT_FALSE(equal(usual, different));
    EXPECT_TRUE(equal(mrThumbAtts(), mrThumbAtts()));
    EXPECT_FALSE(equal(mrThumbAtts(), usual));
    EXPECT_FALSE(equal(usual, mrThumbAtts()));
}

TEST(mrThumbAtts, TheLastPairOfListsDecides)
{
    giTriBlock* const a = &block_a;
    giTriBlock* const b = &block_b;
    struct Case
    {
        std::unique_ptr<Table> mine, theirs;
        bool equal;
    };
    Case const cases[] = {{table({{a, b}}), table({{a, b}}), true},
                          {table({{a, b}}), table({{b, a}}), false},
                          {table({{a}}), table({{a, b}}), false},
                          {table({{a}, {b}}), table({{b}, {b}}), true},
                          {table({{b}, {a}}), table({{b}, {b}}), false},
                          {table({{a}, {b}}), table({{a}}), true},
                          {table({{a}}), table({{a}, {b}}), true},
                          {table({}), table({}), true},
                          {table({}), table({{a}}), false},
                          {table({{a}}), table({}), false}};
    for (Case const& each : cases) {
        mrThumbAtts const mine = Atts{.tex_blocks = each.mine.get()};
        mrThumbAtts const theirs = Atts{.tex_blocks = each.theirs.get()};
        EXPECT_EQ(equal(mine, theirs), each.equal) << &each - cases;
    }
    reports(); // of the empty tables, which are looked at elsewhere

    Table null_list(mrInitialSize, mrFillLimit);
    null_list[1] = nullptr;
    auto const empty_list = table({{}});
    EXPECT_TRUE(equal(Atts{.tex_blocks = &null_list}, Atts{.tex_blocks = empty_list.get()}));
}
