// What all elements of a material file are read and written with.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "xmlParser.h"

#include <cstddef>
#include <cstdint>
#include <istream>

class giColour;
class utString;
class xmlElement;
struct mrFault;

/// Finding, reading and appending child elements. Nothing here reports; a failure is a result of 0. Every
/// reader is safe for untrusted input.
class MR_API mrXMLUtils
{
public:
    /// The text of the first child element of the name that holds something; deeper ones are not looked at.
    /// @param out  the text, or invalid when there is none
    static int find_child_text_string(xmlElement const& element, utString const& name, utString& out);

    // Each takes the text as above, and leaves @p out untouched where the text is missing or no such value.

    /// @param out  the text in decimal
    static int find_child_text_integer(xmlElement const& element, utString const& name, int& out);
    /// @return 1 when the integer is from @p low to @p high; one beyond is stored all the same
    static int find_child_text_integer_range(xmlElement const& element, utString const& name, int low,
                                             int high, int& out);
    /// @param out  from "64b" and the text of gsBase64::encode, or from plain decimal text
    static int find_child_text_double(xmlElement const& element, utString const& name, double& out);
    /// @return 1 when the double is from @p low to @p high; one beyond, a NaN too, is stored all the same
    static int find_child_text_double_range(xmlElement const& element, utString const& name, double low,
                                            double high, double& out);
    /// @param parser  one of the adaptors of mrTypes
    static int find_child_text_enum(xmlElement const& element, utString const& name,
                                    int (*parser)(utString const&, int&), int& out);

    /// The colour in the one child of the name; two of them are none.
    static int find_named_colour(xmlElement const& element, utString const& name, giColour& out);
    /// The colour in the one child "rgb8": its children "red", "green" and "blue", 0 to 255 each.
    /// @param out  its fourth byte becomes 0; untouched on failure
    static int find_colour(xmlElement const& element, giColour& out);

    // Each appends a last child and returns it.

    static xmlElement* append_child_text_element_int(xmlElement& element, utString const& name, int value);
    /// Holds "64b" and the text of gsBase64::encode.
    static xmlElement* append_child_text_element_double_base64(xmlElement& element, utString const& name,
                                                               double value);
    /// An element "rgb8" with "red", "green" and "blue".
    static xmlElement* append_child_colour_element(xmlElement& element, giColour const& colour);

    /// Characters of the longest line that read_doc reads.
    static constexpr int max_line = 1022;
    /// Bytes of the longest document that read_doc reads, line breaks included: what can be parsed.
    static constexpr std::size_t max_document = xmlParser::max_length;

    /// Cuts a document out of a stream that may hold other data before and after it: the lines from the one
    /// that holds "<ROOT>" to the one that holds "</ROOT>", each with a line break after it. The stream is
    /// left just past the last of them.
    ///
    /// A line is searched up to its first NUL. One in a line of the document stays in the text, where it
    /// makes the document unreadable.
    /// @param out  receives the lines at its end, also those gathered before a failure
    /// @return 1, or 0 when the stream ends first, a line is longer than max_line, or the lines would come to
    ///         more than max_document
    static int read_doc(std::istream& in, utString const& root, utString& out);
    /// @param first_line  receives the line of the stream in which the document begins, from 1
    /// @param fault       receives what is wrong and where, when the result is 0
    static int read_doc(std::istream& in, utString const& root, utString& out, std::int64_t& first_line,
                        mrFault& fault);

    // Collections: a writer appends an element "properties", "textures" or "facets" with the members in their
    // order and returns it. A reader adds the members of all such children of the element, in document order;
    // where there are none it adds none and succeeds. They differ in what they leave when a member fails;
    // a fault then receives which member, and why.

    static xmlElement* write_properties(xmlElement& element, mrMatPropcoSet const& properties);
    /// @return 1, or 0 at the first member that fails: the set is then empty, whatever it held before
    static int read_properties(xmlElement const& element, mrMatPropcoSet& properties);
    static int read_properties(xmlElement const& element, mrMatPropcoSet& properties, mrFault& fault);

    static xmlElement* write_textures(xmlElement& element, mrFMTexturecoDList const& textures);
    /// @return 1, or 0 at the first member that fails: the list then holds those read before it
    static int read_textures(xmlElement const& element, mrFMTexturecoDList& textures);
    static int read_textures(xmlElement const& element, mrFMTexturecoDList& textures, mrFault& fault);

    static xmlElement* write_facets(xmlElement& element, mrFMFacetcoDListPtrcoPtrcoDList const& facets);
    /// @param facets  receives new facets, which the list's owner deletes
    /// @return 1, or 0 at the first member that fails: every facet of the list is then deleted, also those
    ///         that it held before, and the list is empty
    static int read_facets(xmlElement const& element, mrFMFacetcoDListPtrcoPtrcoDList& facets);
    static int read_facets(xmlElement const& element, mrFMFacetcoDListPtrcoPtrcoDList& facets,
                           mrFault& fault);
};
