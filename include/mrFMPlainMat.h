// The untextured base of a facet.
#pragma once

#include "giColour.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "utCheckValid.h"
#include "utString.h"

class xmlElement;

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

    ~mrFMPlainMat();
    mrFMPlainMat(mrFMPlainMat const&) = delete;
    mrFMPlainMat& operator=(mrFMPlainMat const&) = delete;

    /// 1 when there is no name.
    int invalid() const;

    /// 1 when all fields are equal, numbers exactly, or both materials are invalid.
    int operator==(mrFMPlainMat const& other) const;

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

private:
    int read_numbers(xmlElement const& element);

    utString m_name;
    mrMatPropcoSet m_properties;
    int m_affinity = 0;
    giColour m_diffuse_colour;
    double m_polish = 0.0;
    double m_reflect = 0.0;
    double m_transparency = 0.0;
    double m_emission = 0.0;
    double m_refractive_index = 0.0;
    utString m_shader_definition;
    utCheckValid m_check{this};
};
