// Lists of component values, and what is asked of colours, for tests.
#pragma once

#include "giColour.h"
#include "mrContainers.h"

#include <ostream>
#include <vector>

inline doublecoDList values(std::vector<double> const& numbers)
{
    doublecoDList list;
    for (double const number : numbers)
        list.append(number);
    return list;
}

inline std::vector<double> numbers(doublecoDList const& list)
{
    return {list.begin(), list.end()};
}

inline giColour rgb(int red, int green, int blue)
{
    auto const byte = [](int channel) { return static_cast<unsigned char>(channel); };
    return giColour(byte(red), byte(green), byte(blue), 0);
}

inline void PrintTo(giColour const& colour, std::ostream* out)
{
    *out << +colour.red() << ' ' << +colour.green() << ' ' << +colour.blue();
}
