// Reads and writes the children of a material file's elements.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "xmlParser.h"

#include <cstddef>
#include <cstdint>
#include <istream>

class giColour;
class xmlElement;
struct mrFault;

/// Finds, reads and appends child elements. Nothing here reports or throws; a failure, the lack of memory too, is a
/// result of 0. Every reader is safe for untrusted input.
class MR_API mrXMLUtils
{
public:
    /// Finds the text of the first direct child of the name that has a node.
    /// @param out  the text, or invalid on failure: no child of the name has a node, or its first node is no text
    static int find_child_text_string(xmlElement const& element, utString const& name, utString& out);

    // Each takes the text as above, and leaves @p out untouched when the text is missing or cannot be parsed.

    /// @param out  the text in decimal
    static int find_child_text_integer(xmlElement const& element, utString const& name, int& out);
    /// @return 1 when the integer is from @p low to @p high; any other integer is stored all the same
    static int find_child_text_integer_range(xmlElement const& element, utString const& name, int low,
                                             int high, int& out);
    /// @param out  from "64b" and the text of gsBase64::encode, or from plain decimal text
    static int find_child_text_double(xmlElement const& element, utString const& name, double& out);
    /// @return 1 when the double is from @p low to @p high; any other, a NaN too, is stored all the same
    static int find_child_text_double_range(xmlElement const& element, utString const& name, double low,
                                            double high, double& out);
    /// @param parser  one of mrTypes
    static int find_child_text_enum(xmlElement const& element, utString const& name,
                                    int (*parser)(utString const&, int&), int& out);

    /// Finds the colour in the child of the name, of which there must be exactly one.
    static int find_named_colour(xmlElement const& element, utString const& name, giColour& out);
    /// Reads the colour from the child "rgb8", exactly one: its children "red", "green" and "blue", 0 to 255 each.
    /// @param out  its fourth byte becomes 0; untouched on failure
    static int find_colour(xmlElement const& element, giColour& out);

    // Each appends a child at the end and returns it, or null, with nothing appended, without enough memory.

    static xmlElement* append_child_text_element_int(xmlElement& element, utString const& name, int value);
    /// Holds "64b" and the text of gsBase64::encode.
    static xmlElement* append_child_text_element_double_base64(xmlElement& element, utString const& name,
                                                               double value);
    /// An element "rgb8" with "red", "green" and "blue".
    static xmlElement* append_child_colour_element(xmlElement& element, giColour const& colour);

    /// Characters of the longest line for read_doc.
    static constexpr int max_line = 1022;
    /// Bytes of the longest document for read_doc, line breaks included: that of xmlParser.
    static constexpr std::size_t max_document = xmlParser::max_length;

    /// Cuts a document out of a stream that may hold other data before and after it: the lines from the one
    /// that holds "<ROOT>" to the one that holds "</ROOT>", each with a line break after it. The stream is
    /// left just past the last line.
    ///
    /// A line is searched up to its first NUL. A NUL in the document stays in the text and makes it unreadable.
    /// @param out  the lines are appended, also those gathered before a failure
    /// @return 1, or 0 when the stream ends first, a line is longer than max_line, or the lines together are longer
    ///         than max_document
    static int read_doc(std::istream& in, utString const& root, utString& out);
    /// @param first_line  receives the line of the stream where the document begins, from 1
    /// @param fault       receives the reason and the line of a failure
    static int read_doc(std::istream& in, utString const& root, utString& out, std::int64_t& first_line,
                        mrFault& fault);

    // Collections. A writer appends an element "properties", "textures" or "facets" with the members in their
    // order and returns it, or null as above. A reader adds the members of all such children, in document order; without such children
    // it succeeds. The lack of memory counts as a failure of the member that lacks it. The fault, unless null, receives
    // the member that failed and the reason.

    static xmlElement* write_properties(xmlElement& element, mrMatPropcoSet const& properties);
    /// @return 1, or 0 at the first member that fails: the set is then empty, also of earlier members
    static int read_properties(xmlElement const& element, mrMatPropcoSet& properties)
    {
        return read_properties(element, properties, nullptr);
    }
    static int read_properties(xmlElement const& element, mrMatPropcoSet& properties, mrFault* fault);

    static xmlElement* write_textures(xmlElement& element, mrFMTexturecoDList const& textures);
    /// @return 1, or 0 at the first member that fails: the list then keeps those read before it
    static int read_textures(xmlElement const& element, mrFMTexturecoDList& textures)
    {
        return read_textures(element, textures, nullptr);
    }
    static int read_textures(xmlElement const& element, mrFMTexturecoDList& textures, mrFault* fault);

    /// Null facets are left out.
    static xmlElement* write_facets(xmlElement& element, mrFMFacetcoDListPtrcoPtrcoDList const& facets);
    /// @param facets  receives new facets, which the list's owner deletes
    /// @return 1, or 0 at the first member that fails: the list is then empty and all its facets are deleted, also
    ///         earlier ones
    static int read_facets(xmlElement const& element, mrFMFacetcoDListPtrcoPtrcoDList& facets)
    {
        return read_facets(element, facets, nullptr);
    }
    static int read_facets(xmlElement const& element, mrFMFacetcoDListPtrcoPtrcoDList& facets,
                           mrFault* fault);

private:
    friend class mrFileMat;

    /// As read_doc, but throws std::bad_alloc.
    static int gather_doc(std::istream& in, utString const& root, utString& out, std::int64_t& first_line,
                          mrFault& fault);
};
