#include "materialFault.h"

#include "imageBlock.h"
#include "inputFile.h"
#include "materialDocument.h"
#include "utConcat.h"

#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"
#include "mrXMLUtils.h"

#include "giColour.h"
#include "xmlUtils.h"

namespace mrtool {

namespace {

/// A child that an element must have.
struct Field
{
    char const* name;
    bool (*reads)(xmlElement const& element, char const* name);
    char const* wanted;
};

bool reads_text(xmlElement const& element, char const* name)
{
    utString value;
    return mrXMLUtils::find_child_text_string(element, name, value) != 0;
}

bool reads_integer(xmlElement const& element, char const* name)
{
    int value = 0;
    return mrXMLUtils::find_child_text_integer(element, name, value) != 0;
}

bool reads_colour(xmlElement const& element, char const* name)
{
    giColour colour;
    return mrXMLUtils::find_named_colour(element, name, colour) != 0;
}

template <long High>
bool reads_double(xmlElement const& element, char const* name)
{
    double value = 0.0;
    return mrXMLUtils::find_child_text_double_range(element, name, 0.0, static_cast<double>(High), value) !=
           0;
}

bool reads_flag(xmlElement const& element, char const* name)
{
    int value = 0;
    return mrXMLUtils::find_child_text_integer_range(element, name, 0, 1, value) != 0;
}

template <int (*Parser)(utString const&, int&)>
bool reads_word(xmlElement const& element, char const* name)
{
    int value = 0;
    return mrXMLUtils::find_child_text_enum(element, name, Parser, value) != 0;
}

constexpr char any_text[] = "empty";
constexpr char any_integer[] = "no integer";
constexpr char any_colour[] = "not one colour \"rgb8\" of three numbers from 0 to 255";
constexpr char from_0_to_1[] = "no number from 0 to 1";
constexpr long max_index = static_cast<long>(mrFMPlainMat::max_refractive_index);

// In the order in which the library reads them, so that the first fault is the one it met.

constexpr Field root_fields[] = {{"image_encapsulation_type",
                                  reads_word<mrTypes::parse_mrImageEncapsulationType>,
                                  "neither \"none\" nor \"embedded_png\""}};

constexpr Field property_fields[] = {
    {"name", reads_text, any_text},
    {"type", reads_word<mrTypes::parse_mrMatPropType>, "none of \"string\", \"integer\" and \"double\""}};

constexpr Field name_field[] = {{"name", reads_text, any_text}};

constexpr Field plain_material_fields[] = {
    {"affinity", reads_integer, any_integer},
    {"diffuse_colour", reads_colour, any_colour},
    {"polish", reads_double<1>, from_0_to_1},
    {"reflect", reads_double<1>, from_0_to_1},
    {"transparency", reads_double<1>, from_0_to_1},
    {"emission", reads_double<1>, from_0_to_1},
    {"refractive_index", reads_double<max_index>, "no number from 0 to 10,000,000"}};

constexpr Field texture_fields[] = {
    {"image_name", reads_text, any_text},
    {"layer_type", reads_word<mrTypes::parse_mrTexLayerType>, "not \"colour\""},
    {"recoloured", reads_flag, "neither 0 nor 1"},
    {"recolour", reads_colour, any_colour}};

// Each gives the first fault, or an empty text when there is none.

template <std::size_t Count>
std::string field_fault(xmlElement const& element, Field const (&fields)[Count])
{
    for (Field const& field : fields)
        if (!field.reads(element, field.name))
            return ut_concat("\"", field.name, "\" is missing or ", field.wanted);
    return {};
}

std::string property_fault(xmlElement const& element)
{
    if (mrMatProp().xml_read(element))
        return {};
    std::string const fault = field_fault(element, property_fields);
    return fault.empty() ? "\"value\" is missing or not of the property's type" : fault;
}

std::string within(std::string const& place, std::string const& fault)
{
    return fault.empty() ? fault : ut_concat(place, ": ", fault);
}

/// The first fault among the members of an element's collections.
std::string members_fault(xmlElement const& element, char const* collection, char const* member,
                          std::string (*fault_of)(xmlElement const&))
{
    int number = 0;
    for (xmlElement const* each : xmlUtils::find_grandchild_elements_by_name(element, collection, member)) {
        std::string const fault = within(ut_concat(member, " ", ++number), fault_of(*each));
        if (!fault.empty())
            return fault;
    }
    return {};
}

std::string texture_fault(xmlElement const& element)
{
    return field_fault(element, texture_fields);
}

std::string plain_material_fault(xmlElement const& element)
{
    if (std::string const fault = field_fault(element, name_field); !fault.empty())
        return fault;
    if (std::string const fault = members_fault(element, "properties", "property", property_fault);
        !fault.empty())
        return fault;
    return field_fault(element, plain_material_fields);
}

std::string facet_fault(xmlElement const& element)
{
    auto const plain = xmlUtils::find_child_elements_by_name(element, "plain_material");
    if (plain.size() != 1)
        return ut_concat("there are ", plain.size(), " elements \"plain_material\" instead of one");
    std::string const fault = within("plain material", plain_material_fault(*plain.front()));
    return fault.empty() ? members_fault(element, "textures", "texture", texture_fault) : fault;
}

std::string content_fault(xmlElement const& root)
{
    if (!(root.node_name() == "multimat"))
        return ut_concat("the root element is \"", root.node_name(), "\", not \"multimat\"");
    std::string fault = field_fault(root, root_fields);
    if (fault.empty())
        fault = members_fault(root, "properties", "property", property_fault);
    return fault.empty() ? members_fault(root, "facets", "facet", facet_fault) : fault;
}

std::string images_fault(std::string const& path, long start)
{
    std::string const fault = read_image_block(path, start).fault;
    return fault.empty() ? "not enough memory for all its images" : fault;
}

std::string bad_content_fault(std::string const& path)
{
    MaterialDocument document;
    read_material_document(path, document);
    if (!document.fault.empty())
        return document.fault;
    std::string const fault = content_fault(*document.document.document_element());
    return fault.empty() ? images_fault(path, document.images_start) : fault;
}

std::string open_fault(std::string const& path)
{
    std::string fault;
    open_input(path, fault);
    return fault.empty() ? "not a file" : fault;
}

} // namespace

std::string material_fault(std::string const& path, mrFileMatReadStatus status)
{
    if (status == mrFileMatOpenFailed)
        return open_fault(path);
    return bad_content_fault(path);
}

std::string in_words(mrFileMatReadStatus status, std::string const& fault)
{
    switch (status) {
    case mrFileMatOpenFailed:
        return cannot_be_opened(fault);
    case mrFileMatNoDocument:
        return "not a material file: " + fault;
    default:
        return "bad content: " + fault;
    }
}

} // namespace mrtool
