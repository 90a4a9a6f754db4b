#include "mrTypes.h"

#include "utAssert.h"

#include <cstddef>

namespace {

template <class Enum>
struct Word
{
    Enum value;
    char const* text;
};

constexpr Word<mrMatPropType> prop_types[] = {
    {mrMatPropString, "string"}, {mrMatPropInteger, "integer"}, {mrMatPropDouble, "double"}};

constexpr Word<mrImageEncapsulationType> encapsulation_types[] = {
    {mrImageEncapsulationNone, "none"}, {mrImageEncapsulationEmbeddedPng, "embedded_png"}};

constexpr Word<mrTexLayerType> layer_types[] = {{mrTexLayerColour, "colour"}};

/// @return 1, or 0 when the value has no word
template <class Enum, std::size_t count>
int print_word(Word<Enum> const (&words)[count], Enum value, utString& out)
{
    for (Word<Enum> const& word : words)
        if (word.value == value) {
            out += word.text;
            return 1;
        }
    return 0;
}

/// @param out  an Enum or an int
template <class Enum, std::size_t count, class Out>
int parse_word(Word<Enum> const (&words)[count], utString const& text, Out& out)
{
    for (Word<Enum> const& word : words)
        if (text.view() == word.text) {
            out = word.value;
            return 1;
        }
    return 0;
}

} // namespace

void mrTypes::print(mrMatPropType value, utString& out)
{
    UT_REQUIRE(print_word(prop_types, value, out),
               ut_build_assert_varargs("enum mrMatPropType: %d", static_cast<int>(value)));
}

void mrTypes::print(mrImageEncapsulationType value, utString& out)
{
    UT_REQUIRE(print_word(encapsulation_types, value, out),
               ut_build_assert_varargs("Enum mrImageEncapsulationType: %d", static_cast<int>(value)));
}

void mrTypes::print(mrTexLayerType value, utString& out)
{
    UT_REQUIRE(print_word(layer_types, value, out),
               ut_build_assert_varargs("Enum mrTexLayerType: %d", static_cast<int>(value)));
}

int mrTypes::parse(utString const& text, mrMatPropType& out)
{
    return parse_word(prop_types, text, out);
}

int mrTypes::parse(utString const& text, mrImageEncapsulationType& out)
{
    return parse_word(encapsulation_types, text, out);
}

int mrTypes::parse(utString const& text, mrTexLayerType& out)
{
    return parse_word(layer_types, text, out);
}

int mrTypes::parse_mrMatPropType(utString const& text, int& out)
{
    return parse_word(prop_types, text, out);
}

int mrTypes::parse_mrImageEncapsulationType(utString const& text, int& out)
{
    return parse_word(encapsulation_types, text, out);
}

int mrTypes::parse_mrTexLayerType(utString const& text, int& out)
{
    return parse_word(layer_types, text, out);
}
