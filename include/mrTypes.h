// The library's enumerations, the words of those in material files, and the outcomes of reading a file.
#pragma once

#include "mrExport.h"

class utString;

/// What kind of value a property has.
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
    mrImageEncapsulationNone = 0,       ///< "none": there are none
    mrImageEncapsulationEmbeddedPng = 1 ///< "embedded_png": as PNG images after the document
};

/// What a texture layer does. A type of its own, so that there can be further kinds without a new format.
enum mrTexLayerType : int
{
    mrTexLayerColour = 0 ///< "colour": its image is the surface's colour
};

/// What became of reading a material file or an image cache file.
enum mrFileMatReadStatus : int
{
    mrFileMatOpenFailed = 0, ///< the file could not be opened for reading, or is no regular file
    mrFileMatReadOK = 1,     ///< the file was read completely
    mrFileMatNoDocument = 2, ///< the file was opened, but the end of its document is not in it
    mrFileMatBadContent = 3  ///< the document or the embedded images could not be parsed or understood
};

/// What became of reading a palette file.
enum mrPaletteFileError : int
{
    mrPaletteFileOK = 0,            ///< the input ended without an error
    mrPaletteFileOpenFailed = 1,    ///< the file could not be opened for reading, or is no regular file
    mrPaletteFileBadFormat = 2,     ///< a line is no colour, or a number in it is too large
    mrPaletteFileDuplicateName = 3, ///< the palette has a colour of this name already
    mrPaletteFileOutOfRange = 4     ///< a component is out of range
};

/// How a colour's component values are to be read.
enum mrColourEncoding : int
{
    mrColourEncodingNone = 0, ///< not at all
    mrColourEncodingRgb8 = 1, ///< red, green, blue, 0 to 255 each
    mrColourEncodingCmy8 = 2, ///< cyan, magenta, yellow, 0 to 255 each
    mrColourEncodingCmyk = 3  ///< cyan, magenta, yellow, black, 0 to 100 per cent each
};

/// From enumerators to the words of a material file and back. A word stands for itself alone: no other case,
/// no blanks.
class MR_API mrTypes
{
public:
    /// Appends the word of the value.
    /// @report "enum mrMatPropType: %d", with the value for %d, when it is none of the enumerators; nothing
    ///         is appended
    static void print(mrMatPropType value, utString& out);
    /// Appends the word of the value.
    /// @report "Enum mrImageEncapsulationType: %d", as above
    static void print(mrImageEncapsulationType value, utString& out);
    /// Appends the word of the value.
    /// @report "Enum mrTexLayerType: %d", as above
    static void print(mrTexLayerType value, utString& out);
    /// Appends the keyword of the encoding in palette files; mrColourEncodingNone has none.
    /// @report "Enum mrColourEncoding: %d", as above
    static void print(mrColourEncoding value, utString& out);

    /// Finds the value of the word.
    /// @return 1, or 0 with @p out untouched when @p text is none of the words
    static int parse(utString const& text, mrMatPropType& out);
    static int parse(utString const& text, mrImageEncapsulationType& out);
    static int parse(utString const& text, mrTexLayerType& out);

    /// The same with one signature for all three, which mrXMLUtils::find_child_text_enum takes.
    static int parse_mrMatPropType(utString const& text, int& out);
    static int parse_mrImageEncapsulationType(utString const& text, int& out);
    static int parse_mrTexLayerType(utString const& text, int& out);
};
