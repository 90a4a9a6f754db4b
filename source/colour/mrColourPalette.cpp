#include "mrColourPalette.h"

#include "mrUtils.h"

#include "coHash.h"
#include "utAssert.h"

#include <algorithm>
#include <limits>
#include <new>

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
    if (entry.name == none)
        name.set_invalid();
    else
        name = utString(name_at(entry.name));
    return entry.colour;
}

int mrColourPalette::find_colour(utString const& name, int& index) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!name.empty(), "Args");
    int const place = name.invalid() ? none : place_of(name.view());
    index = place == none ? none : m_names[static_cast<std::size_t>(place)];
    return index != none;
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

std::string_view mrColourPalette::name_at(int place) const
{
    int const* const head = &m_names[static_cast<std::size_t>(place)];
    return std::string_view(reinterpret_cast<char const*>(head + name_head),
                            static_cast<std::size_t>(head[1]));
}

int mrColourPalette::place_of(std::string_view name) const
{
    return m_by_name.find(hash_of(name), [&](int place) { return name_at(place) == name; });
}

/// Without enough memory, or with more names than a place can tell (8 GiB), nothing has changed.
int mrColourPalette::add_name(std::string_view name)
{
    constexpr std::size_t most = std::numeric_limits<int>::max();
    std::size_t const place = m_names.size();
    if (place > most || name.size() > most)
        throw std::bad_alloc();
    m_names.resize(place + name_head + (name.size() + sizeof(int) - 1) / sizeof(int));
    int* const head = &m_names[place];
    head[0] = size();
    head[1] = static_cast<int>(name.size());
    std::copy(name.begin(), name.end(), reinterpret_cast<char*>(head + name_head));
    return static_cast<int>(place);
}

void mrColourPalette::append(Entry entry, utString const& name)
{
    if (name.invalid()) {
        m_colours.append(entry);
        return;
    }
    m_by_name.reserve_one(); // so that no colour gets a name by which it cannot be found
    entry.name = add_name(name.view());
    m_colours.append(entry);
    UT_REQUIRE(place_of(name.view()) == none, "Args");
    m_by_name.set(hash_of(name.view()), entry.name, [&](int place) { return name_at(place) == name.view(); });
}
