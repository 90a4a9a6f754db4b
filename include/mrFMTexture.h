// A texture layer of a facet: its image, its kind and its tint.
#pragma once

#include "giColour.h"
#include "mrExport.h"
#include "mrTypes.h"
#include "utCheckValid.h"
#include "utString.h"

class xmlElement;
struct mrFault;

/// A texture layer laid over a facet's plain material.
///
/// A plain value that names an image of the material file's image table and may ask for that image to be
/// tinted before use. Valid exactly when its image name is. Making one, and copying, which then changes nothing, may
/// throw std::bad_alloc.
class MR_API mrFMTexture
{
public:
    /// An invalid layer: no image name, layer type colour, not recoloured, black.
    mrFMTexture() = default;

    /// @param image_name  key in the material file's image table
    /// @param layer_type  any value is stored
    /// @param recoloured  1 to tint the image towards @p recolour, 0 to use it as it is; any value is stored
    /// @report "Args" when @p image_name is empty; the layer is built all the same
    mrFMTexture(utString const& image_name, mrTexLayerType layer_type, int recoloured,
                giColour const& recolour);

    /// Copies an invalid layer as an invalid one with the other fields at their defaults.
    mrFMTexture(mrFMTexture const& other) : mrFMTexture() { *this = other; }
    /// Copies all fields of a valid layer. An invalid one takes only the image name away.
    mrFMTexture& operator=(mrFMTexture const& other);

    /// 1 without an image name.
    int invalid() const;

    /// 1 when all four fields are equal, whether the layers are valid or not.
    int operator==(mrFMTexture const& other) const;

    // The fields. Each reports "Args" when the layer is invalid, and returns the field all the same.

    utString const& image_name() const { return check().m_image_name; }
    mrTexLayerType layer_type() const { return check().m_layer_type; }
    int recoloured() const { return check().m_recoloured; }
    /// The colour to tint towards, kept also while recoloured() is 0.
    giColour const& recolour() const { return check().m_recolour; }

    /// Appends the layer to @p parent as a "texture" element. May throw std::bad_alloc, with @p parent unchanged.
    /// @report "Args" when the layer is invalid; the element is appended all the same
    /// @report "Enum mrTexLayerType: %d", at source/utils/mrTypes.cpp and with the value for %d, when the
    ///         layer type is no enumerator; "layer_type" is then written empty
    void xml_write(xmlElement& parent) const;

    /// Fills the layer from a "texture" element, in which "recoloured" must be 0 or 1. Safe for untrusted
    /// input.
    /// @param fault  unless null, receives the reason and the place of a failure
    /// @return 1, or 0 at the first child that is missing or wrong: the image name stays; the fields read before
    ///         are updated, and so is a "recoloured" out of its range
    int xml_read(xmlElement const& element) { return xml_read(element, nullptr); }
    int xml_read(xmlElement const& element, mrFault* fault);

private:
    mrFMTexture const& check() const;

    utString m_image_name;
    mrTexLayerType m_layer_type = mrTexLayerColour;
    int m_recoloured = 0;
    giColour m_recolour;
    utCheckValid m_check{this};
};
