#include "mrColourPalette.h"

#include "mrUtils.h"

#include "coHash.h"
#include "utAssert.h"

namespace {

std::uint32_t hash_of(utString const& name)
{
    return static_cast<std::uint32_t>(co_bucket_of_text(name.view()));
}

} // namespace

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
    index = position_of(name);
    return index >= 0;
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

int mrColourPalette::position_of(utString const& name) const
{
    return m_by_name.find(hash_of(name), [&](int index) { return m_colours[index].name == name; });
}

void mrColourPalette::append(Entry const& entry)
{
    m_colours.append(entry);
    utString const& name = entry.name;
    if (name.invalid())
        return;
    UT_REQUIRE(position_of(name) < 0, "Args");
    m_by_name.set(hash_of(name), size() - 1, [&](int index) { return m_colours[index].name == name; });
}
