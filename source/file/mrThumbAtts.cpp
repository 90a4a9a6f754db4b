#include "mrThumbAtts.h"

#include "mrPieChart.h"

#include "utAssert.h"
#include "utNeverDestroyed.h"

#include <algorithm>

namespace {

using FaceCountTable = mrThumbAtts::FaceCountTable;
using BlockList = giTriBlockcoDListPtrcoPtrcoDList;

FaceCountTable const& table_or_empty(FaceCountTable const* table)
{
    static utNeverDestroyed<FaceCountTable> const empty(mrInitialSize, mrFillLimit);
    return table ? *table : *empty;
}

BlockList const& list_or_empty(BlockList const* list)
{
    static utNeverDestroyed<BlockList> const empty;
    return list ? *list : *empty;
}

/// Compares the block pointers and their order, not the contents of the blocks.
bool alike(BlockList const* a, BlockList const* b)
{
    BlockList const& mine = list_or_empty(a);
    BlockList const& theirs = list_or_empty(b);
    return mine.size() == theirs.size() && std::equal(mine.begin(), mine.end(), theirs.begin());
}

bool alike(FaceCountTable const& mine, FaceCountTable const& theirs)
{
    bool result = mine.size() == theirs.size();
    auto other = theirs.begin();
    // Each pair overwrites the verdict on the one before: the last one visited decides.
    for (auto entry = mine.begin(); entry != mine.end() && other != theirs.end(); ++entry, ++other)
        result = alike(entry->value.get(), other->value.get());
    return result;
}

} // namespace

mrThumbAtts::mrThumbAtts()
{
    init_dg();
}

mrThumbAtts::mrThumbAtts(int width, int height, gsRGB const& surface, gsRGB const& background,
                         giVector3 const& view_normal, giVector3 const& view_up,
                         giTriBlock const* plain_block, FaceCountTable const* tex_blocks,
                         mrPieChart const* pie_chart)
    : m_width(width),
      m_height(height),
      m_surface_colour(surface),
      m_background_colour(background),
      m_view_normal(view_normal),
      m_view_up(view_up),
      m_plain_block(plain_block),
      m_tex_blocks(tex_blocks),
      m_pie_chart(pie_chart)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(width > 0, "Args");
    UT_REQUIRE(height > 0, "Args");
    UT_REQUIRE(!view_normal.invalid(), "Args");
    UT_REQUIRE(!view_up.invalid(), "Args");
    UT_REQUIRE(tex_blocks && !tex_blocks->empty(), "Args");
    UT_REQUIRE(pie_chart, "Args");
}

mrThumbAtts::mrThumbAtts(utCopy, mrThumbAtts const& other)
{
    init_dg();
    become_dg(other);
}

mrThumbAtts::~mrThumbAtts()
{
    UT_CHECK_VALID(m_check);
}

void mrThumbAtts::width(int width)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(width > 0, "Args");
    UT_REQUIRE(!invalid(), "State");
    m_width = width;
}

void mrThumbAtts::height(int height)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(height > 0, "Args");
    UT_REQUIRE(!invalid(), "State");
    m_height = height;
}

void mrThumbAtts::surface_colour(gsRGB const& colour)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    m_surface_colour = colour;
}

void mrThumbAtts::geom_view_normal_vector(giVector3 const& normal)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!normal.invalid(), "Args");
    UT_REQUIRE(!invalid(), "State");
    m_view_normal = normal;
}

void mrThumbAtts::geom_view_up_vector(giVector3 const& up)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!up.invalid(), "Args");
    UT_REQUIRE(!invalid(), "State");
    m_view_up = up;
}

int mrThumbAtts::width() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    return m_width;
}

int mrThumbAtts::height() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    return m_height;
}

gsRGB const& mrThumbAtts::surf_colour() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    return m_surface_colour;
}

gsRGB const& mrThumbAtts::background_colour() const
{
    UT_CHECK_VALID(m_check);
    return m_background_colour;
}

giVector3 const& mrThumbAtts::geom_view_normal_vector() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    return m_view_normal;
}

giVector3 const& mrThumbAtts::geom_view_up_vector() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    return m_view_up;
}

giTriBlock const* mrThumbAtts::plain_block() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    return m_plain_block;
}

FaceCountTable const& mrThumbAtts::tex_blocks() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "State");
    return table_or_empty(m_tex_blocks);
}

mrPieChart const& mrThumbAtts::pie_chart()
{
    UT_CHECK_VALID(m_check);
    static utNeverDestroyed<mrPieChart> const default_chart;
    return m_pie_chart ? *m_pie_chart : *default_chart;
}

void mrThumbAtts::become(mrThumbAtts const& other)
{
    UT_CHECK_VALID(m_check);
    become_dg(other);
}

int mrThumbAtts::equal(mrThumbAtts const& other) const
{
    UT_CHECK_VALID(m_check);
    return equal_dg(other);
}

int mrThumbAtts::operator==(mrThumbAtts const& other) const
{
    UT_CHECK_VALID(m_check);
    return equal_dg(other);
}

int mrThumbAtts::operator!=(mrThumbAtts const& other) const
{
    UT_CHECK_VALID(m_check);
    return !equal_dg(other);
}

int mrThumbAtts::invalid() const
{
    UT_CHECK_VALID(m_check);
    return invalid_dg();
}

void mrThumbAtts::init_dg()
{
    UT_CHECK_VALID(m_check);
    m_width = 0;
    m_height = 0;
}

int mrThumbAtts::invalid_dg() const
{
    UT_CHECK_VALID(m_check);
    return m_width == 0;
}

void mrThumbAtts::become_dg(mrThumbAtts const& other)
{
    UT_CHECK_VALID(m_check);
    m_width = other.m_width;
    m_height = other.m_height;
    m_background_colour = other.m_background_colour;
    m_surface_colour = other.m_surface_colour;
    m_view_normal = other.m_view_normal;
    m_view_up = other.m_view_up;
    m_plain_block = other.m_plain_block;
    m_tex_blocks = other.m_tex_blocks;
    m_pie_chart = other.m_pie_chart;
}

int mrThumbAtts::equal_dg(mrThumbAtts const& other) const
{
    UT_CHECK_VALID(m_check);
    if (invalid() || other.invalid())
        return invalid() && other.invalid();

    giAngle const tolerance(0.01, giAngleUnit::degrees);
    bool const scalars_equal =
        m_width == other.m_width && m_height == other.m_height &&
        m_background_colour == other.m_background_colour && m_surface_colour == other.m_surface_colour &&
        m_view_normal.parallel(other.m_view_normal, tolerance) &&
        m_view_up.parallel(other.m_view_up, tolerance) && m_plain_block == other.m_plain_block;
    return scalars_equal && alike(table_or_empty(m_tex_blocks), table_or_empty(other.m_tex_blocks));
}
