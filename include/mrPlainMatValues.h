// The values of a plain material.
#pragma once

#include "giColour.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "mrMatProp.h"
#include "utString.h"

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
