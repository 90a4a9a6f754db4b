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

/// The fault in words for the user, with what the status means before it: "bad content: " and so on.
std::string in_words(mrFileMatReadStatus status, std::string const& fault);

} // namespace mrtool
