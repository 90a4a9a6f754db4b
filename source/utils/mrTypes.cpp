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

constexpr Word<mrColourEncoding> encodings[] = {
    {mrColourEncodingRgb8, "rgb8"}, {mrColourEncodingCmy8, "cmy8"}, {mrColourEncodingCmyk, "cmyk"}};

/// @param name  the enumeration in the report
template <class Enum, std::size_t count>
void print_word(Word<Enum> const (&words)[count], char const* name, Enum value, utString& out)
{
    for (Word<Enum> const& word : words)
        if (word.value == value) {
            out += word.text;
            return;
        }
    ut_report_assert_failure(__FILE__, __LINE__,
                             ut_build_assert_varargs("%s: %d", name, static_cast<int>(value)));
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
    print_word(prop_types, "enum mrMatPropType", value, out);
}

void mrTypes::print(mrImageEncapsulationType value, utString& out)
{
    print_word(encapsulation_types, "Enum mrImageEncapsulationType", value, out);
}

void mrTypes::print(mrTexLayerType value, utString& out)
{
    print_word(layer_types, "Enum mrTexLayerType", value, out);
}

void mrTypes::print(mrColourEncoding value, utString& out)
{
    print_word(encodings, "Enum mrColourEncoding", value, out);
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
