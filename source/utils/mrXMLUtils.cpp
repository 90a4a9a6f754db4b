#include "mrXMLUtils.h"

#include "mrElementReader.h"
#include "mrGuard.h"

#include "giColour.h"
#include "gsBase64.h"
#include "gsTriUtils.h"
#include "mlMath.h"
#include "utConcat.h"
#include "xmlUtils.h"

#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view base64_mark = "64b";

utString const rgb8_name = "rgb8";
utString const channel_names[] = {"red", "green", "blue"};

/// Finds the child of the name; null when there is none, or more than one.
xmlElement const* find_only_child(xmlElement const& element, utString const& name)
{
    xmlNodeList const& children = element.child_nodes();
    xmlElement const* found = nullptr;
    for (std::size_t i = 0; i < children.length(); ++i) {
        xmlElement const* const child = children.item(i).element();
        if (!child || !(child->node_name() == name))
            continue;
        if (found)
            return nullptr;
        found = child;
    }
    return found;
}

/// Does what returns a new element; null without enough memory.
template <class Work>
xmlElement* guard_element(Work const& work)
{
    return mr_guard(static_cast<xmlElement*>(nullptr), work);
}

/// Explains why the stream ended before the document.
/// @param first_line  the line of the opening tag, 0 when it was not found
/// @param number      the line at which the stream ended
void explain_missing(std::istream const& in, utString const& opening, std::int64_t first_line,
                     std::int64_t number, mrFault& fault)
{
    if (in.bad())
        fault = {"reading it failed before its end"};
    else if (!in.eof())
        fault = {.reason = utString(
                     ut_concat("line ", number, " is longer than ", mrXMLUtils::max_line, " characters")),
                 .line = number};
    else if (first_line == 0)
        fault = {utString(ut_concat("no line holds \"", opening, "\""))};
    else
        fault = {.reason = utString(ut_concat("\"", opening, "\" in line ", first_line, " is never closed")),
                 .line = first_line};
}

} // namespace

int mrXMLUtils::find_child_text_string(xmlElement const& element, utString const& name, utString& out)
{
    out.set_invalid();
    return mr_guard(0, [&] {
        utString const* const text = mrElementReader::find_text(element, name);
        if (text)
            out = *text;
        return text ? 1 : 0;
    });
}

int mrXMLUtils::find_child_text_integer(xmlElement const& element, utString const& name, int& out)
{
    utString const* const text = mrElementReader::find_text(element, name);
    return text ? text->parse(out) : 0;
}

int mrXMLUtils::find_child_text_integer_range(xmlElement const& element, utString const& name, int low,
                                              int high, int& out)
{
    return find_child_text_integer(element, name, out) && gsTriUtils::in_range_inclusive(out, low, high);
}

int mrXMLUtils::find_child_text_double(xmlElement const& element, utString const& name, double& out)
{
    return mr_guard(0, [&] {
        utString const* const text = mrElementReader::find_text(element, name);
        if (!text)
            return 0;
        if (!text->view().starts_with(base64_mark))
            return text->parse(out);
        return gsBase64::decode(utString(text->view().substr(base64_mark.size())), out);
    });
}

int mrXMLUtils::find_child_text_double_range(xmlElement const& element, utString const& name, double low,
                                             double high, double& out)
{
    return find_child_text_double(element, name, out) && mlMath::in_range(out, low, high);
}

int mrXMLUtils::find_child_text_enum(xmlElement const& element, utString const& name,
                                     int (*parser)(utString const&, int&), int& out)
{
    utString const* const text = mrElementReader::find_text(element, name);
    return text && parser(*text, out) ? 1 : 0;
}

int mrXMLUtils::find_named_colour(xmlElement const& element, utString const& name, giColour& out)
{
    xmlElement const* const named = find_only_child(element, name);
    return named ? find_colour(*named, out) : 0;
}

int mrXMLUtils::find_colour(xmlElement const& element, giColour& out)
{
    xmlElement const* const colour = find_only_child(element, rgb8_name);
    if (!colour)
        return 0;
    unsigned char channels[3];
    for (int i = 0; i < 3; ++i) {
        int value = 0;
        if (!find_child_text_integer_range(*colour, channel_names[i], 0, 255, value))
            return 0;
        channels[i] = static_cast<unsigned char>(value);
    }
    out = giColour(channels[0], channels[1], channels[2], 0);
    return 1;
}

xmlElement* mrXMLUtils::append_child_text_element_int(xmlElement& element, utString const& name, int value)
{
    return guard_element([&] {
        utString text;
        text.append_integer(value);
        return &xmlUtils::append_child_text_element(element, name, text);
    });
}

xmlElement* mrXMLUtils::append_child_text_element_double_base64(xmlElement& element, utString const& name,
                                                                double value)
{
    return guard_element([&] {
        utString text(base64_mark);
        text += gsBase64::encode(value);
        return &xmlUtils::append_child_text_element(element, name, text);
    });
}

xmlElement* mrXMLUtils::append_child_colour_element(xmlElement& element, giColour const& colour)
{
    return guard_element([&] {
        xmlElement& rgb8 = element.owner_document().create_element(rgb8_name);
        mr_need(append_child_text_element_int(rgb8, channel_names[0], colour.red()));
        mr_need(append_child_text_element_int(rgb8, channel_names[1], colour.green()));
        mr_need(append_child_text_element_int(rgb8, channel_names[2], colour.blue()));
        element.append_child(rgb8);
        return &rgb8;
    });
}

int mrXMLUtils::read_doc(std::istream& in, utString const& root, utString& out)
{
    std::int64_t first_line = 0;
    mrFault ignored;
    return read_doc(in, root, out, first_line, ignored);
}

int mrXMLUtils::read_doc(std::istream& in, utString const& root, utString& out, std::int64_t& first_line,
                         mrFault& fault)
{
    return mr_guard(fault, 0, [&] { return gather_doc(in, root, out, first_line, fault); });
}

int mrXMLUtils::gather_doc(std::istream& in, utString const& root, utString& out, std::int64_t& first_line,
                           mrFault& fault)
{
    utString const opening(ut_concat("<", root, ">"));
    utString const closing(ut_concat("</", root, ">"));
    char line[max_line + 1];
    first_line = 0;
    std::int64_t number = 1;
    for (std::size_t gathered = 0; in.getline(line, sizeof line); ++number) {
        if (first_line == 0 && std::strstr(line, opening.c_str()))
            first_line = number;
        if (first_line == 0)
            continue;
        // The count includes the line break, unless the file ends without one. A NUL stays in the text and the
        // parser refuses it.
        auto const length = static_cast<std::size_t>(in.gcount() - (in.eof() ? 0 : 1));
        gathered += length + 1;
        if (gathered > max_document) {
            fault = {"the document is longer than 268,435,456 bytes"};
            static_assert(max_document == 268'435'456);
            return 0;
        }
        out += std::string_view(line, length);
        out += '\n';
        if (std::strstr(line, closing.c_str()))
            return 1;
    }
    explain_missing(in, opening, first_line, number, fault);
    return 0;
}
