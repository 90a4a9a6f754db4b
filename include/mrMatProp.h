// A named, typed property of a material.
#pragma once

#include "mrExport.h"
#include "mrTypes.h"
#include "utCheckValid.h"
#include "utString.h"

#include <cstddef>
#include <cstdint>

class mrElementReader;
class xmlElement;
struct mrFault;

/// A property that the application attaches to a material or a material file: a name, a value that is a string, an
/// integer or a double, and an integer of client data for the application to use.
///
/// A plain value. Valid exactly when its name is. Making one, and copying, which then changes nothing, may throw
/// std::bad_alloc.
class MR_API mrMatProp
{
public:
    /// An invalid property of type string: no name, no string, numbers 0.
    mrMatProp() = default;

    /// A string property.
    /// @report "Args" when @p name is empty, and again when @p value is; the property is built all the same
    mrMatProp(mrMatPropTypeString, utString const& name, utString const& value, int const& client_data);
    /// An integer property, without a string.
    /// @report "Args" when @p name is empty; the property is built all the same
    mrMatProp(mrMatPropTypeInteger, utString const& name, int value, int const& client_data);
    /// A double property, without a string. Any double is taken.
    /// @report "Args" when @p name is empty; the property is built all the same
    mrMatProp(mrMatPropTypeDouble, utString const& name, double value, int const& client_data);

    mrMatProp(mrMatProp const& other) : mrMatProp() { *this = other; }
    /// Copies all fields, also of an invalid property.
    mrMatProp& operator=(mrMatProp const& other);

    /// 1 without a name.
    int invalid() const;

    // The fields. Each reports "State" when the property is invalid; a value reports it again when the property has
    // another type. Each is returned all the same.

    mrMatPropType prop_type() const { return check().m_type; }
    utString const& name() const { return check().m_name; }
    utString const& string_value() const { return check(mrMatPropString).m_string_value; }
    int integer_value() const { return check(mrMatPropInteger).m_integer_value; }
    double double_value() const { return check(mrMatPropDouble).m_double_value; }
    /// Copied with the property and written, but never read back.
    int const& client_data() const { return check().m_client_data; }

    /// 1 when both names are equal or both properties are invalid; values are not compared.
    ///
    /// Not const, because callers rely on the signature. clang warns of an ambiguity when neither side is const;
    /// write `first == std::as_const(second)` there.
    int operator==(mrMatProp const& other);

    /// Appends the property to @p parent as a "property" element. May throw std::bad_alloc, with @p parent unchanged.
    /// @report "State" when the property is invalid; the element is appended all the same
    /// @report "enum mrMatPropType: %d", at source/utils/mrTypes.cpp and with the value for %d, and then "State" when
    ///         the type is no enumerator; "type" is then written empty, and no "value"
    void xml_write(xmlElement& parent) const;

    /// Fills the property from a "property" element; the client data and the values of other types stay as they
    /// are. Safe for untrusted input.
    /// @param fault  unless null, receives the reason and the place of a failure
    /// @return 1, or 0 when a child is missing or wrong: the name stays, the type may be the one that was read, and a
    ///         missing string value makes the string invalid
    int xml_read(xmlElement const& element) { return xml_read(element, nullptr); }
    int xml_read(xmlElement const& element, mrFault* fault);

private:
    friend MR_API std::uint32_t co_hash(mrMatProp const& property);
    friend MR_API std::size_t co_bucket_hash(mrMatProp const& property);

    mrMatProp const& check() const;
    mrMatProp const& check(mrMatPropType type) const;
    int read_fields(mrElementReader const& reader);
    int read_value(mrElementReader const& reader);

    utString m_name;
    utString m_string_value;
    int m_integer_value = 0;
    double m_double_value = 0.0;
    int m_client_data = 0;
    mrMatPropType m_type = mrMatPropString;
    utCheckValid m_check{this};
};

/// The hash of the value: the co_hash of a string, an integer itself, or the co_hash of a double's bytes in memory.
///
/// Equality compares names alone, so a set deliberately holds two properties of one name when their values differ, and
/// one when their values are equal.
MR_API std::uint32_t co_hash(mrMatProp const& property);

/// The coBucketHash of the name, so that a set stays fast with many properties of one value.
MR_API std::size_t co_bucket_hash(mrMatProp const& property);
