// A palette of colours.
#pragma once

#include "coPageArr.h"
#include "giColour.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "mrTypes.h"
#include "utCheckValid.h"
#include "utString.h"

/// Colours in a row, each with its encoding, some with a name or with the component values that they were
/// computed from. A colour's index is its position, from 0; colours are only ever added.
///
/// A name is found by its bytes, and finds the newest colour that was appended under it. An invalid string
/// stands for no name; an empty valid one is a name.
///
/// Without enough memory the constructor and append() throw std::bad_alloc, with nothing appended; colour() does so
/// when there is none for the copy of a name.
class MR_API mrColourPalette
{
public:
    /// A palette without colours.
    mrColourPalette();
    ~mrColourPalette();

    mrColourPalette(mrColourPalette const&) = delete;
    mrColourPalette& operator=(mrColourPalette const&) = delete;

    /// 1 without colours.
    int empty() const;

    /// How many colours there are.
    int size() const;

    /// Adds a colour without component values.
    /// @param name      invalid for none
    /// @param encoding  any value is stored
    /// @report "Args" when the palette has the name already, which from now on finds this colour; the older
    ///         one keeps it too
    void append(giColour const& colour, utString const& name, mrColourEncoding const& encoding);

    /// Adds the colour that mrUtils::colour_from_components makes of the values, and a copy of these.
    /// @param name        invalid for none
    /// @param components  walked with the list's own cursor, which is past the end afterwards
    /// @report "Args!" when there are no values; the colour is added all the same
    /// @report what mrUtils::colour_from_components does; where that makes no colour, black is added
    /// @report "Already present!" when the new colour's index has values already, which cannot be as long as
    ///         indices are used once
    /// @report "Args" when the palette has the name already, as above
    void append(utString const& name, mrColourEncoding const& encoding, doublecoDList& components);

    /// @param name  receives the colour's name, or becomes invalid when it has none
    /// @return the palette's own, for as long as it lives; black for an index out of range
    /// @report "argument out of range | CO_PAGEARR::index" for an index out of range
    giColour const& colour(int index, utString& name) const;

    /// @param index  receives the index of the colour of this name, or -1
    /// @return 1 when there is one
    /// @report "Args" when the name has no characters; it is looked up all the same
    int find_colour(utString const& name, int& index) const;

    /// mrColourEncodingNone for an index out of range.
    mrColourEncoding colour_encoding(int index) const;

    /// @param values  receives the component values in order; empty for a colour without any
    /// @return 1 when the colour was appended with component values; 0 also without enough memory
    int colour_components(int index, doublecoDList& values) const;

private:
    struct Entry
    {
        giColour colour;
        mrColourEncoding encoding = mrColourEncodingNone;
        utString name;
        int components = none;   ///< their number
        int first_component = 0; ///< in m_components
    };
    static constexpr int none = -1;

    int has(int index) const;
    int has_components(int index) const;
    void append(Entry const& entry);

    coPageArr<Entry> m_colours;
    coPageArr<double> m_components; ///< of all colours
    utStringmrColourIndexcoTable m_by_name{mrInitialSize, mrFillLimit};
    utCheckValid m_check{this};
};
