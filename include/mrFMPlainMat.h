// The untextured base of a facet.
#pragma once

#include "giColour.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "mrMatProp.h"
#include "utCheckValid.h"
#include "utString.h"

class xmlElement;
struct mrFault;

/// The values of a plain material. To make a material with some values changed:
///
///     mrPlainMatValues values = plain.values();
///     values.polish = 0.8;
///     auto* const polished = new mrFMPlainMat(values);
struct MR_API mrPlainMatValues
{
    utString name; ///< invalid in an invalid material
    mrMatPropcoSet properties{mrInitialSize, mrFillLimit};
    int affinity = 0; ///< any number, for the application to use
    giColour diffuse_colour;
    double polish = 0.0;           ///< 0 to 1
    double reflect = 0.0;          ///< 0 to 1
    double transparency = 0.0;     ///< 0 to 1
    double emission = 0.0;         ///< 0 to 1
    double refractive_index = 0.0; ///< 0 to mrFMPlainMat::max_refractive_index
    utString shader_definition;    ///< invalid when the material has none

    /// Compares numbers exactly.
    bool operator==(mrPlainMatValues const& other) const = default;
};

/// A plain material: the look of a surface without textures. Valid exactly when its name is. Making one may throw
/// std::bad_alloc.
class MR_API mrFMPlainMat
{
public:
    /// The largest refractive index that is read.
    static constexpr double max_refractive_index = 1e7;

    /// An invalid material: no name, no shader definition, no properties, black, numbers 0.
    mrFMPlainMat() = default;

    /// @param affinity           any number, for the application to use
    /// @param transparency       unchecked; a file is read with 0 to 1 only
    /// @param refractive_index   unchecked; a file is read with 0 to max_refractive_index only
    /// @param shader_definition  stored as invalid when empty
    /// @report "Args" once for each of these, in this order: @p name is empty; @p polish, @p reflect or
    ///         @p emission is outside 0 to 1 or no number. The material is built all the same
    mrFMPlainMat(utString const& name, mrMatPropcoSet const& properties, int affinity,
                 giColour const& diffuse_colour, double polish, double reflect, double transparency,
                 double emission, double refractive_index, utString const& shader_definition);

    /// @report as above
    explicit mrFMPlainMat(mrPlainMatValues const& values);

    ~mrFMPlainMat() = default;
    mrFMPlainMat(mrFMPlainMat const&) = delete;
    mrFMPlainMat& operator=(mrFMPlainMat const&) = delete;

    /// 1 without a name.
    int invalid() const;

    /// 1 when all fields are equal, numbers exactly, or both materials are invalid.
    int operator==(mrFMPlainMat const& other) const;

    /// All values at once, also of an invalid material.
    mrPlainMatValues const& values() const;

    // The fields. Each reports "State" when the material is invalid, and returns the field all the same.

    utString const& name() const { return check_values().name; }
    mrMatPropcoSet const& properties() const { return check_values().properties; }
    int affinity() const { return check_values().affinity; }
    giColour const& diffuse_colour() const { return check_values().diffuse_colour; }
    double polish() const { return check_values().polish; }
    double reflect() const { return check_values().reflect; }
    double transparency() const { return check_values().transparency; }
    double emission() const { return check_values().emission; }
    double refractive_index() const { return check_values().refractive_index; }
    /// Invalid when the material has no definition.
    utString const& shader_definition() const { return check_values().shader_definition; }

    /// Appends the material to @p parent as a "plain_material" element. May throw std::bad_alloc, with @p parent unchanged.
    /// @report "State" when the material is invalid; the element is appended all the same
    void xml_write(xmlElement& parent) const;

    /// Fills the material from a "plain_material" element and adds to its properties. Without a definition in the
    /// element it has none afterwards. Safe for untrusted input.
    /// @param fault  unless null, receives the reason and the place of a failure
    /// @return 1, or 0 at the first child that is missing or wrong: the name stays; the fields read before are
    ///         updated, and so is a number out of its range; a bad property leaves the material without properties
    int xml_read(xmlElement const& element) { return xml_read(element, nullptr); }
    int xml_read(xmlElement const& element, mrFault* fault);

private:
    mrPlainMatValues const& check_values() const;
    int read_values(xmlElement const& element, mrFault* fault);

    mrPlainMatValues m_values;
    utCheckValid m_check{this};
};
