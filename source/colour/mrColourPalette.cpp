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
    m_colours.append(colour);
    mrColourIndex const index = size() - 1;
    m_encodings[index] = encoding;
    set_name(index, name);
}

void mrColourPalette::append(utString const& name, mrColourEncoding const& encoding,
                             doublecoDList& components)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!components.empty(), "Args!");
    giColour colour;
    mrUtils::colour_from_components(encoding, components, colour);
    m_colours.append(colour);

    auto const kept = std::make_shared<doublecoDList>();
    components.restart();
    while (double const* value = components.next())
        kept->append(*value);

    mrColourIndex const index = size() - 1;
    UT_REQUIRE(!m_components.member(index), "Already present!");
    m_components[index] = kept;
    m_encodings[index] = encoding;
    set_name(index, name);
}

giColour const& mrColourPalette::colour(int index, utString& name) const
{
    UT_CHECK_VALID(m_check);
    name = m_names.read(index);
    return m_colours[index];
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
    return m_encodings.read(index);
}

int mrColourPalette::colour_components(int index, doublecoDList& values) const
{
    UT_CHECK_VALID(m_check);
    values.clear();
    doublecoDListcoPrf const& kept = m_components.read(index);
    if (!kept)
        return 0;
    for (double const value : *kept)
        values.append(value);
    return 1;
}

void mrColourPalette::set_name(mrColourIndex index, utString const& name)
{
    if (name.invalid())
        return;
    UT_REQUIRE(!m_indices.member(name), "Args");
    m_indices[name] = index;
    m_names[index] = name;
}
