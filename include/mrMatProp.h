// A named, typed property of a material.
#pragma once

#include "mrExport.h"
#include "mrTypes.h"
#include "utCheckValid.h"
#include "utString.h"

#include <cstddef>
#include <cstdint>

class xmlElement;
struct mrFault;

/// A property that the application attaches to a material or a material file: a name, a string, an integer or
/// a double, and an integer of client data that is the application's own.
///
/// A plain value. Valid exactly when its name is.
class MR_API mrMatProp
{
public:
    /// An invalid property of type string: no name, no string, numbers 0.
    mrMatProp();

    /// A string property.
    /// @report "Args" when @p name is empty, and again when @p value is; the property is built all the same
    mrMatProp(mrMatPropTypeString, utString const& name, utString const& value, int const& client_data);
    /// An integer property, without a string.
    /// @report "Args" when @p name is empty; the property is built all the same
    mrMatProp(mrMatPropTypeInteger, utString const& name, int value, int const& client_data);
    /// A double property, without a string. Any double will do.
    /// @report "Args" when @p name is empty; the property is built all the same
    mrMatProp(mrMatPropTypeDouble, utString const& name, double value, int const& client_data);

    mrMatProp(mrMatProp const& other);
    /// Takes over all fields, also those of an invalid property.
    mrMatProp& operator=(mrMatProp const& other);

    /// 1 when there is no name.
    int invalid() const;

    // The fields, each returned whatever is reported.

    /// @report "State" when the property is invalid
    mrMatPropType prop_type() const;
    /// @report "State" when the property is invalid
    utString const& name() const;
    /// @report "State" when the property is invalid, and again when it is no string
    utString const& string_value() const;
    /// @report "State" when the property is invalid, and again when it is no integer
    int integer_value() const;
    /// @report "State" when the property is invalid, and again when it is no double
    double double_value() const;
    /// Copied with the property and written, but never read back.
    /// @report "State" when the property is invalid
    int const& client_data() const;

    /// 1 when both names are equal or both properties are invalid; values play no part.
    ///
    /// Not const, for the sake of those who rely on its signature. Where neither side is const, clang warns
    /// of an ambiguity with the sides exchanged; write `first == std::as_const(second)` there.
    int operator==(mrMatProp const& other);

    /// Appends the property to @p parent as a "property" element.
    /// @report "State" when the property is invalid; the element is appended all the same
    /// @report "State" when its type is none of mrMatPropType
    void xml_write(xmlElement& parent) const;

    /// Fills the property from a "property" element; the client data stays as it is. Safe for untrusted
    /// input.
    /// @return 1, or 0 when something is missing or wrong: the name is then as it was, the type may have been
    ///         read already, and a string value that is missing leaves none
    int xml_read(xmlElement const& element);
    /// @param fault  receives what is wrong and where, when the result is 0
    int xml_read(xmlElement const& element, mrFault& fault);

private:
    friend MR_API std::uint32_t co_hash(mrMatProp const& property);
    friend MR_API std::size_t co_bucket_hash(mrMatProp const& property);

    int read_value(xmlElement const& element);

    utString m_name;
    utString m_string_value;
    int m_integer_value = 0;
    double m_double_value = 0.0;
    int m_client_data = 0;
    mrMatPropType m_type = mrMatPropString;
    utCheckValid m_check{this};
};

/// The hash of the value: of a string its co_hash, an integer itself, of a double the co_hash of its bytes in
/// memory.
///
/// Since equality looks at the name alone, a set holds two properties of one name when their values differ,
/// and one when they do not. That is meant.
MR_API std::uint32_t co_hash(mrMatProp const& property);

/// The coBucketHash of the name, so that a set stays fast with many properties of one value.
MR_API std::size_t co_bucket_hash(mrMatProp const& property);
