#include "mrMatProp.h"

#include "mrElementReader.h"
#include "mrElementWriter.h"
#include "mrGuard.h"

#include "coHash.h"
#include "utAssert.h"

#include <utility>

namespace {

utString const properties_name = "properties";
utString const property_name = "property";
utString const name_name = "name";
utString const type_name = "type";
utString const value_name = "value";
utString const client_data_name = "client_data";

} // namespace

mrMatProp::mrMatProp(mrMatPropTypeString, utString const& name, utString const& value, int const& client_data)
    : m_name(name), m_string_value(value), m_client_data(client_data), m_type(mrMatPropString)
{
    UT_REQUIRE(!name.empty(), "Args");
    UT_REQUIRE(!value.empty(), "Args");
}

mrMatProp::mrMatProp(mrMatPropTypeInteger, utString const& name, int value, int const& client_data)
    : m_name(name), m_integer_value(value), m_client_data(client_data), m_type(mrMatPropInteger)
{
    UT_REQUIRE(!name.empty(), "Args");
}

mrMatProp::mrMatProp(mrMatPropTypeDouble, utString const& name, double value, int const& client_data)
    : m_name(name), m_double_value(value), m_client_data(client_data), m_type(mrMatPropDouble)
{
    UT_REQUIRE(!name.empty(), "Args");
}

mrMatProp& mrMatProp::operator=(mrMatProp const& other)
{
    UT_CHECK_VALID(m_check);
    // Both before either is changed: copying needs memory.
    utString name = other.m_name;
    utString string_value = other.m_string_value;
    m_name = std::move(name);
    m_string_value = std::move(string_value);
    m_integer_value = other.m_integer_value;
    m_double_value = other.m_double_value;
    m_client_data = other.m_client_data;
    m_type = other.m_type;
    return *this;
}

int mrMatProp::invalid() const
{
    UT_CHECK_VALID(m_check);
    return m_name.invalid();
}

mrMatProp const& mrMatProp::check() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_name.invalid(), "State");
    return *this;
}

mrMatProp const& mrMatProp::check(mrMatPropType type) const
{
    check();
    UT_REQUIRE(m_type == type, "State");
    return *this;
}

int mrMatProp::operator==(mrMatProp const& other)
{
    UT_CHECK_VALID(m_check);
    return m_name == other.m_name;
}

void mrMatProp::xml_write(xmlElement& parent) const
{
    check();
    xmlElement& property = parent.owner_document().create_element(property_name);
    xmlUtils::append_child_text_element(property, name_name, m_name);
    xmlUtils::append_child_text_element(property, type_name, mrTypes::find_word(m_type));
    switch (m_type) {
    case mrMatPropString:
        xmlUtils::append_child_text_element(property, value_name, m_string_value);
        break;
    case mrMatPropInteger:
        mr_need(mrXMLUtils::append_child_text_element_int(property, value_name, m_integer_value));
        break;
    case mrMatPropDouble:
        mr_need(mrXMLUtils::append_child_text_element_double_base64(property, value_name, m_double_value));
        break;
    default:
        ut_report_assert_failure(__FILE__, __LINE__, "State");
    }
    mr_need(mrXMLUtils::append_child_text_element_int(property, client_data_name, m_client_data));
    parent.append_child(property);
}

int mrMatProp::xml_read(xmlElement const& element, mrFault* fault)
{
    UT_CHECK_VALID(m_check);
    return mr_guard(fault, 0, [&] { return read_fields(mrElementReader(element, fault)); });
}

int mrMatProp::read_fields(mrElementReader const& reader)
{
    utString name;
    if (!reader.read_string(name_name, name) ||
        !reader.read_enum(type_name, mrTypes::parse_mrMatPropType,
                          "none of \"string\", \"integer\" and \"double\"", m_type))
        return 0;
    if (!read_value(reader))
        return reader.fail(value_name, "not of the property's type");
    m_name = std::move(name);
    return 1;
}

int mrMatProp::read_value(mrElementReader const& reader)
{
    switch (m_type) {
    case mrMatPropString:
        return reader.read_string(value_name, m_string_value);
    case mrMatPropInteger:
        return mrXMLUtils::find_child_text_integer(reader.element(), value_name, m_integer_value);
    case mrMatPropDouble:
        return mrXMLUtils::find_child_text_double(reader.element(), value_name, m_double_value);
    }
    return 0;
}

xmlElement* mrXMLUtils::write_properties(xmlElement& element, mrMatPropcoSet const& properties)
{
    return mr_write_collection(element, properties_name, [&](xmlElement& collection) {
        for (mrMatProp const& property : properties)
            property.xml_write(collection);
    });
}

int mrXMLUtils::read_properties(xmlElement const& element, mrMatPropcoSet& properties, mrFault* fault)
{
    auto const read = [&](xmlElement const& member) {
        mrMatProp property;
        if (!property.xml_read(member, fault))
            return 0;
        properties.add(property);
        return 1;
    };
    if (mr_guard(fault, 0, [&] {
            return mrElementReader(element, fault).read_members(properties_name, property_name, read);
        }))
        return 1;
    properties.clear();
    return 0;
}

std::uint32_t co_hash(mrMatProp const& property)
{
    switch (property.m_type) {
    case mrMatPropString:
        return co_hash(property.m_string_value);
    case mrMatPropInteger:
        return static_cast<std::uint32_t>(property.m_integer_value);
    case mrMatPropDouble:
        return co_hash(&property.m_double_value, sizeof property.m_double_value);
    }
    return 0;
}

std::size_t co_bucket_hash(mrMatProp const& property)
{
    return coBucketHash<utString>()(property.m_name);
}
