// The untextured base of a facet.
#pragma once

#include "mrExport.h"
#include "mrPlainMatValues.h"
#include "utCheckValid.h"

class xmlElement;
struct mrFault;

/// A plain material: how a surface looks without textures. Valid exactly when its name is.
class MR_API mrFMPlainMat
{
public:
    /// The largest refractive index that is read.
    static constexpr double max_refractive_index = 1e7;

    /// An invalid material: no name, no shader definition, no properties, black, numbers 0.
    mrFMPlainMat();

    /// @param affinity           any number of the application's
    /// @param transparency       0 to 1 for a material that is to be read back; not tested here
    /// @param refractive_index   0 to max_refractive_index, likewise
    /// @param shader_definition  an empty one counts as none
    /// @report "Args" once for each of these, in this order: @p name is empty; @p polish, @p reflect or
    ///         @p emission is not within 0 to 1. The material is built all the same
    mrFMPlainMat(utString const& name, mrMatPropcoSet const& properties, int affinity,
                 giColour const& diffuse_colour, double polish, double reflect, double transparency,
                 double emission, double refractive_index, utString const& shader_definition);

    /// @report as above
    explicit mrFMPlainMat(mrPlainMatValues const& values);

    ~mrFMPlainMat();
    mrFMPlainMat(mrFMPlainMat const&) = delete;
    mrFMPlainMat& operator=(mrFMPlainMat const&) = delete;

    /// 1 when there is no name.
    int invalid() const;

    /// 1 when all fields are equal, numbers exactly, or both materials are invalid.
    int operator==(mrFMPlainMat const& other) const;

    /// All values at once, also of an invalid material.
    mrPlainMatValues const& values() const;

    // The fields. Each reports "State" when the material is invalid, and returns the field all the same.

    utString const& name() const;
    mrMatPropcoSet const& properties() const;
    int affinity() const;
    giColour const& diffuse_colour() const;
    double polish() const;
    double reflect() const;
    double transparency() const;
    double emission() const;
    double refractive_index() const;
    /// Invalid when there is none.
    utString const& shader_definition() const;

    /// Appends the material to @p parent as a "plain_material" element.
    /// @report "State" when the material is invalid; the element is appended all the same
    void xml_write(xmlElement& parent) const;

    /// Fills the material from a "plain_material" element, adding to the properties that it has. Safe for
    /// untrusted input.
    /// @return 1, or 0 at the first child that is missing or wrong: the fields read before it are updated, a
    ///         number out of its range too, and the name is not; when a property fails there are none left
    int xml_read(xmlElement const& element);
    /// @param fault  receives what is wrong and where, when the result is 0
    int xml_read(xmlElement const& element, mrFault& fault);

private:
    mrPlainMatValues m_values;
    utCheckValid m_check{this};
};
