// How Assimp is given files. Used inside the project; not installed.
#pragma once

#include "utExport.h"

namespace Assimp {
class IOSystem;
}

/// Opens regular files alone, for reading: the file itself, and those that it names. A file that is cut is
/// given up, with "the file ends too early", when a reader asks for more at its end for ever, as PLY's does.
/// @return new; whoever it is handed to deletes it, which an Assimp::Importer does
UT_API Assimp::IOSystem* gx_new_mesh_files();
