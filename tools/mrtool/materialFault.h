// What is wrong with a material file that does not read.
#pragma once

#include "mrTypes.h"

#include <string>

namespace mrtool {

/// Finds the first fault of a file that mrFileMat did not read.
/// @param status  what mrFileMat::read said; not mrFileMatReadOK
/// @return where it is and what, as far as that can be known: "facet 2, plain material: \"polish\" is missing
///         or no number from 0 to 1"
std::string material_fault(std::string const& path, mrFileMatReadStatus status);

} // namespace mrtool
