#include "mrColourPalette.h"

#include "mrUtils.h"

#include "coHash.h"
#include "utAssert.h"

namespace {

std::uint32_t hash_of(std::string_view name)
{
    return static_cast<std::uint32_t>(co_bucket_of_text(name));
}

} // namespace

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
    Entry entry;
    entry.colour = colour;
    entry.encoding = encoding;
    append(entry, name);
}

void mrColourPalette::append(utString const& name, mrColourEncoding const& encoding,
                             doublecoDList& components)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!components.empty(), "Args!");
    Entry entry;
    entry.encoding = encoding;
    entry.components = static_cast<int>(components.size());
    entry.first_component = static_cast<int>(m_components.size());
    mrUtils::colour_from_components(encoding, components, entry.colour);
    UT_REQUIRE(!has_components(size()), "Already present!");

    components.restart();
    while (double const* value = components.next())
        m_components.append(*value);
    append(entry, name);
}

giColour const& mrColourPalette::colour(int index, utString& name) const
{
    UT_CHECK_VALID(m_check);
    Entry const& entry = m_colours[index];
    if (entry.name_length == none)
        name.set_invalid();
    else
        name = utString(name_of(entry));
    return entry.colour;
}

int mrColourPalette::find_colour(utString const& name, int& index) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!name.empty(), "Args");
    index = name.invalid() ? none : position_of(name.view());
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
    if (!has_components(index))
        return 0;
    Entry const& entry = m_colours[index];
    for (int i = 0; i < entry.components; ++i)
        values.append(m_components[entry.first_component + i]);
    return 1;
}

int mrColourPalette::has(int index) const
{
    return index >= 0 && index < size();
}

int mrColourPalette::has_components(int index) const
{
    return has(index) && m_colours[index].components != none;
}

std::string_view mrColourPalette::name_of(Entry const& entry) const
{
    return std::string_view(m_names).substr(entry.name, static_cast<std::size_t>(entry.name_length));
}

int mrColourPalette::position_of(std::string_view name) const
{
    return m_by_name.find(hash_of(name), [&](int index) { return name_of(m_colours[index]) == name; });
}

void mrColourPalette::append(Entry entry, utString const& name)
{
    if (name.invalid()) {
        m_colours.append(entry);
        return;
    }
    entry.name = m_names.size();
    entry.name_length = static_cast<int>(name.length());
    m_by_name.reserve_one(); // so that no colour gets a name by which it cannot be found
    m_names += name.view();
    m_colours.append(entry);
    UT_REQUIRE(position_of(name.view()) < 0, "Args");
    m_by_name.set(hash_of(name.view()), size() - 1,
                  [&](int index) { return name_of(m_colours[index]) == name.view(); });
}
