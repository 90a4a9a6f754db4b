// Queries of the file system.
#pragma once

#include "ntFileDate.h"
#include "utExport.h"

class utString;

/// Questions about files, by path. What cannot be found out, for want of rights too, counts as not there.
class UT_API ntFileOps
{
public:
    /// 1 when there is something of that path: a file, a folder or anything else. Nothing has a path with a NUL.
    static int exists(utString const& path);

    /// Zeros for what is not there. A date beyond what std::filesystem expresses, here before 1882 or from
    /// 2262 on, comes out as another or as zeros.
    /// @param path  not null
    static ntFileDate file_modified_date(char const* path);

    /// In bytes, taken modulo 2^32, so that a size from 2^31 on may come out negative. 0 for what is not
    /// there or is no file.
    /// @param path  not null
    static int file_size(char const* path);

    /// Turns every back slash into "/".
    static void back_slash_to_proper_ones(utString& path);
};
