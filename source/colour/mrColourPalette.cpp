#include "mrColourPalette.h"

#include "mrUtils.h"

#include "utAssert.h"

mrColourPalette::mrColourPalette() = default;

mrColourPalette::~mrColourPalette() = default;

int mrColourPalette::empty() const
{
    UT_CHECK_VALID(m_check);
    return m_colours.empty();
}

int mrColourPalette::size() const
{
    UT_CHECK_VALID(m_check);
    return static_cast<int>(m_colours.size());
}

void mrColourPalette::append(giColour const& colour, utString const& name, mrColourEncoding const& encoding)
{
    UT_CHECK_VALID(m_check);
    append({colour, encoding, name});
}

void mrColourPalette::append(utString const& name, mrColourEncoding const& encoding,
                             doublecoDList& components)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!components.empty(), "Args!");
    giColour colour;
    mrUtils::colour_from_components(encoding, components, colour);

    int const first = static_cast<int>(m_components.size());
    components.restart();
    while (double const* value = components.next())
        m_components.append(*value);
    append({colour, encoding, name, static_cast<int>(components.size()), first});
}

giColour const& mrColourPalette::colour(int index, utString& name) const
{
    UT_CHECK_VALID(m_check);
    Entry const& entry = m_colours[index];
    name = entry.name;
    return entry.colour;
}

int mrColourPalette::find_colour(utString const& name, int& index) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!name.empty(), "Args");
    mrColourIndex const* const found = m_indices.find(name);
    index = found ? *found : -1;
    return found ? 1 : 0;
}

mrColourEncoding mrColourPalette::colour_encoding(int index) const
{
    UT_CHECK_VALID(m_check);
    return has(index) ? m_colours[index].encoding : mrColourEncodingNone;
}

int mrColourPalette::colour_components(int index, doublecoDList& values) const
{
    UT_CHECK_VALID(m_check);
    values.clear();
    if (!has(index) || m_colours[index].components == none)
        return 0;
    Entry const& entry = m_colours[index];
    for (int i = 0; i < entry.components; ++i)
        values.append(m_components[entry.first + i]);
    return 1;
}

int mrColourPalette::has(int index) const
{
    return index >= 0 && index < size();
}

void mrColourPalette::append(Entry const& entry)
{
    m_colours.append(entry);
    if (entry.name.invalid())
        return;
    UT_REQUIRE(!m_indices.member(entry.name), "Args");
    m_indices[entry.name] = size() - 1;
}
