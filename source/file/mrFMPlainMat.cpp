#include "mrFMPlainMat.h"

#include "mrMatProp.h"
#include "mrXMLUtils.h"

#include "mlMath.h"
#include "utAssert.h"
#include "xmlUtils.h"

namespace {

utString const plain_material_name = "plain_material";
utString const name_name = "name";
utString const affinity_name = "affinity";
utString const diffuse_colour_name = "diffuse_colour";
utString const polish_name = "polish";
utString const reflect_name = "reflect";
utString const transparency_name = "transparency";
utString const emission_name = "emission";
utString const refractive_index_name = "refractive_index";
utString const shader_definition_name = "lwshaderdef";

int is_share(double value)
{
    return mlMath::in_range(value, 0.0, 1.0);
}

} // namespace

mrFMPlainMat::mrFMPlainMat() : m_properties(mrInitialSize, mrFillLimit) {}

mrFMPlainMat::mrFMPlainMat(utString const& name, mrMatPropcoSet const& properties, int affinity,
                           giColour const& diffuse_colour, double polish, double reflect, double transparency,
                           double emission, double refractive_index, utString const& shader_definition)
    : m_name(name),
      m_properties(properties),
      m_affinity(affinity),
      m_diffuse_colour(diffuse_colour),
      m_polish(polish),
      m_reflect(reflect),
      m_transparency(transparency),
      m_emission(emission),
      m_refractive_index(refractive_index)
{
    if (!shader_definition.empty())
        m_shader_definition = shader_definition;

    UT_REQUIRE(!name.empty(), "Args");
    UT_REQUIRE(is_share(polish), "Args");
    UT_REQUIRE(is_share(reflect), "Args");
    UT_REQUIRE(is_share(emission), "Args");
}

mrFMPlainMat::~mrFMPlainMat() = default;

int mrFMPlainMat::invalid() const
{
    UT_CHECK_VALID(m_check);
    return m_name.invalid();
}

int mrFMPlainMat::operator==(mrFMPlainMat const& other) const
{
    UT_CHECK_VALID(m_check);
    if (m_name.invalid() && other.m_name.invalid())
        return 1;
    return m_name == other.m_name && m_properties == other.m_properties && m_affinity == other.m_affinity &&
           m_diffuse_colour == other.m_diffuse_colour && m_polish == other.m_polish &&
           m_reflect == other.m_reflect && m_transparency == other.m_transparency &&
           m_emission == other.m_emission && m_refractive_index == other.m_refractive_index &&
           m_shader_definition == other.m_shader_definition;
}

utString const& mrFMPlainMat::name() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_name;
}

mrMatPropcoSet const& mrFMPlainMat::properties() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_properties;
}

int mrFMPlainMat::affinity() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_affinity;
}

giColour const& mrFMPlainMat::diffuse_colour() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_diffuse_colour;
}

double mrFMPlainMat::polish() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_polish;
}

double mrFMPlainMat::reflect() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_reflect;
}

double mrFMPlainMat::transparency() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_transparency;
}

double mrFMPlainMat::emission() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_emission;
}

double mrFMPlainMat::refractive_index() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_refractive_index;
}

utString const& mrFMPlainMat::shader_definition() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return m_shader_definition;
}

void mrFMPlainMat::xml_write(xmlElement& parent) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");

    xmlElement& material = xmlUtils::append_child_element(parent, plain_material_name);
    xmlUtils::append_child_text_element(material, name_name, m_name);
    mrXMLUtils::write_properties(material, m_properties);
    mrXMLUtils::append_child_text_element_int(material, affinity_name, m_affinity);
    xmlElement& colour = xmlUtils::append_child_element(material, diffuse_colour_name);
    mrXMLUtils::append_child_colour_element(colour, m_diffuse_colour);
    mrXMLUtils::append_child_text_element_double_base64(material, polish_name, m_polish);
    mrXMLUtils::append_child_text_element_double_base64(material, reflect_name, m_reflect);
    mrXMLUtils::append_child_text_element_double_base64(material, transparency_name, m_transparency);
    mrXMLUtils::append_child_text_element_double_base64(material, emission_name, m_emission);
    mrXMLUtils::append_child_text_element_double_base64(material, refractive_index_name, m_refractive_index);
    xmlUtils::append_child_text_element(material, shader_definition_name, m_shader_definition);
}

int mrFMPlainMat::xml_read(xmlElement const& element)
{
    UT_CHECK_VALID(m_check);
    utString name;
    if (!mrXMLUtils::find_child_text_string(element, name_name, name) ||
        !mrXMLUtils::read_properties(element, m_properties) ||
        !mrXMLUtils::find_child_text_integer(element, affinity_name, m_affinity) ||
        !mrXMLUtils::find_named_colour(element, diffuse_colour_name, m_diffuse_colour) ||
        !read_numbers(element))
        return 0;
    // Files without a definition are complete.
    mrXMLUtils::find_child_text_string(element, shader_definition_name, m_shader_definition);
    m_name = name;
    return 1;
}

int mrFMPlainMat::read_numbers(xmlElement const& element)
{
    auto const read = [&element](utString const& name, double highest, double& out) {
        return mrXMLUtils::find_child_text_double_range(element, name, 0.0, highest, out);
    };
    return read(polish_name, 1.0, m_polish) && read(reflect_name, 1.0, m_reflect) &&
           read(transparency_name, 1.0, m_transparency) && read(emission_name, 1.0, m_emission) &&
           read(refractive_index_name, max_refractive_index, m_refractive_index);
}
