#include "mrFMPlainMat.h"

#include "mrElementReader.h"
#include "mrGuard.h"

#include "mlMath.h"
#include "utAssert.h"

#include <utility>

namespace {

utString const plain_material_name = "plain_material";
utString const name_name = "name";
utString const affinity_name = "affinity";
utString const diffuse_colour_name = "diffuse_colour";
utString const shader_definition_name = "lwshaderdef";

constexpr char share_flaw[] = "no number from 0 to 1";

/// A number of a material in its element, from 0.
struct Number
{
    utString name;
    double mrPlainMatValues::*value;
    double most;
    char const* flaw; ///< the fault of any other text
};

// In the order of the file.
Number const numbers[] = {{"polish", &mrPlainMatValues::polish, 1.0, share_flaw},
                          {"reflect", &mrPlainMatValues::reflect, 1.0, share_flaw},
                          {"transparency", &mrPlainMatValues::transparency, 1.0, share_flaw},
                          {"emission", &mrPlainMatValues::emission, 1.0, share_flaw},
                          {"refractive_index", &mrPlainMatValues::refractive_index,
                           mrFMPlainMat::max_refractive_index, "no number from 0 to 10,000,000"}};

int is_share(double value)
{
    return mlMath::in_range(value, 0.0, 1.0);
}

} // namespace

mrFMPlainMat::mrFMPlainMat(utString const& name, mrMatPropcoSet const& properties, int affinity,
                           giColour const& diffuse_colour, double polish, double reflect, double transparency,
                           double emission, double refractive_index, utString const& shader_definition)
    : mrFMPlainMat(mrPlainMatValues{name, properties, affinity, diffuse_colour, polish, reflect, transparency,
                                    emission, refractive_index, shader_definition})
{}

mrFMPlainMat::mrFMPlainMat(mrPlainMatValues const& values) : m_values(values)
{
    if (values.shader_definition.empty())
        m_values.shader_definition.set_invalid();
    UT_REQUIRE(!values.name.empty(), "Args");
    UT_REQUIRE(is_share(values.polish), "Args");
    UT_REQUIRE(is_share(values.reflect), "Args");
    UT_REQUIRE(is_share(values.emission), "Args");
}

int mrFMPlainMat::invalid() const
{
    UT_CHECK_VALID(m_check);
    return m_values.name.invalid();
}

int mrFMPlainMat::operator==(mrFMPlainMat const& other) const
{
    UT_CHECK_VALID(m_check);
    return (invalid() && other.invalid()) || m_values == other.m_values;
}

mrPlainMatValues const& mrFMPlainMat::values() const
{
    UT_CHECK_VALID(m_check);
    return m_values;
}

mrPlainMatValues const& mrFMPlainMat::check_values() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_values.name.invalid(), "State");
    return m_values;
}

void mrFMPlainMat::xml_write(xmlElement& parent) const
{
    check_values();
    xmlElement& material = parent.owner_document().create_element(plain_material_name);
    xmlUtils::append_child_text_element(material, name_name, m_values.name);
    mr_need(mrXMLUtils::write_properties(material, m_values.properties));
    mr_need(mrXMLUtils::append_child_text_element_int(material, affinity_name, m_values.affinity));
    xmlElement& colour = xmlUtils::append_child_element(material, diffuse_colour_name);
    mr_need(mrXMLUtils::append_child_colour_element(colour, m_values.diffuse_colour));
    for (Number const& number : numbers)
        mr_need(mrXMLUtils::append_child_text_element_double_base64(material, number.name,
                                                                    m_values.*number.value));
    xmlUtils::append_child_text_element(material, shader_definition_name, m_values.shader_definition);
    parent.append_child(material);
}

int mrFMPlainMat::xml_read(xmlElement const& element, mrFault* fault)
{
    UT_CHECK_VALID(m_check);
    return mr_guard(fault, 0, [&] { return read_values(element, fault); });
}

int mrFMPlainMat::read_values(xmlElement const& element, mrFault* fault)
{
    mrElementReader const reader(element, fault);
    utString name;
    if (!reader.read_string(name_name, name) ||
        !mrXMLUtils::read_properties(element, m_values.properties, fault) ||
        !reader.read_integer(affinity_name, m_values.affinity) ||
        !reader.read_colour(diffuse_colour_name, m_values.diffuse_colour))
        return 0;
    for (Number const& number : numbers)
        if (!reader.read_double(number.name, number.most, number.flaw, m_values.*number.value))
            return 0;
    // The definition is optional.
    if (utString const* const definition = mrElementReader::find_text(element, shader_definition_name))
        m_values.shader_definition = *definition;
    else
        m_values.shader_definition.set_invalid();
    m_values.name = std::move(name);
    return 1;
}
