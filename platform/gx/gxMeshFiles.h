// How Assimp is given files. Used inside the project; not installed.
#pragma once

#include "utExport.h"

#include <locale.h>

namespace Assimp {
class IOSystem;
}

/// Opens only regular files, for reading: the mesh file itself, and the files that it names. Throws "the file ends
/// too early" when a reader keeps asking for more at the end of a file, as the one for PLY does.
/// @return a new object, which the Assimp::Importer that takes it deletes
UT_API Assimp::IOSystem* gx_new_mesh_files();

/// Has this thread's C functions read numbers with a point while it lives: some of Assimp's readers leave that
/// to the locale, which is the application's.
class gxPointLocale
{
public:
    gxPointLocale() = default;
    ~gxPointLocale()
    {
        uselocale(m_before);
        if (m_point)
            freelocale(m_point);
    }
    gxPointLocale(gxPointLocale const&) = delete;
    gxPointLocale& operator=(gxPointLocale const&) = delete;

private:
    locale_t m_point = newlocale(LC_NUMERIC_MASK, "C", duplocale(LC_GLOBAL_LOCALE));
    locale_t m_before = uselocale(m_point);
};
