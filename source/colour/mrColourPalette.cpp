#include "mrColourPalette.h"

#include "mrGuard.h"
#include "mrUtils.h"

#include "utAssert.h"

mrColourPalette::mrColourPalette() = default;

mrColourPalette::~mrColourPalette()
{
    UT_CHECK_VALID(m_check);
}

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
    append(Entry{.colour = colour, .encoding = encoding, .name = name});
}

void mrColourPalette::append(utString const& name, mrColourEncoding const& encoding,
                             doublecoDList& components)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!components.empty(), "Args!");
    Entry entry;
    entry.encoding = encoding;
    entry.name = name;
    entry.components = static_cast<int>(components.size());
    entry.first_component = static_cast<int>(m_components.size());
    mrUtils::colour_from_components(encoding, components, entry.colour);
    UT_REQUIRE(!has_components(size()), "Already present!");

    components.restart();
    while (double const* value = components.next())
        m_components.append(*value);
    append(entry);
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
    int const* const found = m_by_name.find(name);
    index = found ? *found : none;
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
    if (!has_components(index))
        return 0;
    Entry const& entry = m_colours[index];
    bool const enough_memory = mr_guard(false, [&] {
        for (int i = 0; i < entry.components; ++i)
            values.append(m_components[entry.first_component + i]);
        return true;
    });
    if (!enough_memory)
        values.clear();
    return enough_memory;
}

int mrColourPalette::has(int index) const
{
    return index >= 0 && index < size();
}

int mrColourPalette::has_components(int index) const
{
    return has(index) && m_colours[index].components != none;
}

void mrColourPalette::append(Entry const& entry)
{
    m_colours.append(entry);
    if (entry.name.invalid())
        return;
    UT_REQUIRE(!m_by_name.member(entry.name), "Args");
    try {
        m_by_name[entry.name] = size() - 1;
    } catch (...) {
        m_colours.remove_last();
        throw;
    }
}
