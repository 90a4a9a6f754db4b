// The library's enumerations, the statuses of its readers among them, and their words in files.
#pragma once

#include "mrExport.h"
#include "utString.h"

/// The type of a property's value.
enum mrMatPropType : int
{
    mrMatPropString = 0,  ///< "string"
    mrMatPropInteger = 1, ///< "integer"
    mrMatPropDouble = 2   ///< "double"
};

// Tags that choose one of mrMatProp's constructors; they carry no data.

enum mrMatPropTypeString
{
    mrMatPropTypeStringTag
};

enum mrMatPropTypeInteger
{
    mrMatPropTypeIntegerTag
};

enum mrMatPropTypeDouble
{
    mrMatPropTypeDoubleTag
};

/// How a material file carries its images.
enum mrImageEncapsulationType : int
{
    mrImageEncapsulationNone = 0,       ///< "none": without images
    mrImageEncapsulationEmbeddedPng = 1 ///< "embedded_png": as PNG images after the document
};

/// The kind of a texture layer. Further kinds can be added without a new format.
enum mrTexLayerType : int
{
    mrTexLayerColour = 0 ///< "colour": its image is the surface's colour
};

/// The status of reading a material file or an image cache file.
enum mrFileMatReadStatus : int
{
    mrFileMatOpenFailed = 0, ///< the file could not be opened for reading, or is no regular file
    mrFileMatReadOK = 1,     ///< the file was read completely
    mrFileMatNoDocument = 2, ///< the file holds no complete document
    mrFileMatBadContent = 3  ///< the document or the embedded images could not be parsed or understood
};

/// The status of reading a palette file.
enum mrPaletteFileError : int
{
    mrPaletteFileOK = 0,         ///< no line was in error
    mrPaletteFileOpenFailed = 1, ///< the file could not be opened for reading, or is no regular file
    /// A line is no colour, or a number in it is too large. From mrColourPaletteCache also: the file has no colour. With
    /// not enough memory too.
    mrPaletteFileBadFormat = 2,
    mrPaletteFileDuplicateName = 3, ///< the palette has a colour of this name already
    mrPaletteFileOutOfRange = 4     ///< a component is out of range
};

/// The meaning of a colour's component values.
enum mrColourEncoding : int
{
    mrColourEncodingNone = 0, ///< unknown
    mrColourEncodingRgb8 = 1, ///< red, green, blue, 0 to 255 each
    mrColourEncodingCmy8 = 2, ///< cyan, magenta, yellow, 0 to 255 each
    mrColourEncodingCmyk = 3  ///< cyan, magenta, yellow, black, 0 to 100 per cent each
};

/// Turns enumerators into the words of files and back. Words are compared exactly, case and blanks included. Only
/// print() and find_word() may throw std::bad_alloc.
class MR_API mrTypes
{
public:
    /// Appends the word of the value.
    /// @report "enum mrMatPropType: %d", with the value for %d, when it is no enumerator; nothing is appended
    static void print(mrMatPropType value, utString& out);
    /// Appends the word of the value.
    /// @report "Enum mrImageEncapsulationType: %d", as above
    static void print(mrImageEncapsulationType value, utString& out);
    /// Appends the word of the value.
    /// @report "Enum mrTexLayerType: %d", as above
    static void print(mrTexLayerType value, utString& out);

    /// Returns the word of the value as print() appends it, an invalid string after a report.
    template <class Enum>
    static utString find_word(Enum value)
    {
        utString word;
        print(value, word);
        return word;
    }

    /// Finds the value of the word.
    /// @return 1, or 0 with @p out untouched when @p text is another word
    static int parse(utString const& text, mrMatPropType& out);
    static int parse(utString const& text, mrImageEncapsulationType& out);
    static int parse(utString const& text, mrTexLayerType& out);

    /// The same with one signature, for mrXMLUtils::find_child_text_enum.
    static int parse_mrMatPropType(utString const& text, int& out);
    static int parse_mrImageEncapsulationType(utString const& text, int& out);
    static int parse_mrTexLayerType(utString const& text, int& out);
};
