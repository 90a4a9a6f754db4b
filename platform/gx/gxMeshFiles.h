// How Assimp is given files. Used inside the project; not installed.
#pragma once

#include "utExport.h"

#include <locale.h>

namespace Assimp {
class IOSystem;
}

/// Opens regular files alone, for reading: the file itself, and those that it names. A file that is cut is
/// given up, with "the file ends too early", when a reader asks for more at its end for ever, as PLY's does.
/// @return new; whoever it is handed to deletes it, which an Assimp::Importer does
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
