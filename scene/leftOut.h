// Tables of what a material file has no place for.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace sc {

/// A value that is left out, and the two numbers at which it makes no difference.
struct LeftOutValue
{
    std::string_view key;
    char const* words;
    double neutral;
    double also_neutral;

    bool makes_no_difference(auto const* values, std::size_t count) const
    {
        auto const all = [=](double same) {
            return std::all_of(values, values + count, [=](double each) { return each == same; });
        };
        return all(neutral) || all(also_neutral);
    }
};

/// A map that is left out.
template <class Key>
struct LeftOutMap
{
    Key key;
    char const* words;
};

/// @return the row of the table with that key, or null
template <class Row, std::size_t Size, class Key>
Row const* find_row(Row const (&table)[Size], Key const& key)
{
    auto const found =
        std::find_if(std::begin(table), std::end(table), [&](Row const& each) { return each.key == key; });
    return found == std::end(table) ? nullptr : found;
}

} // namespace sc
