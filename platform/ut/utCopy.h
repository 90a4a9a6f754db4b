// The tag that copying constructors take.
#pragma once

enum utCopy
{
    utCopyDeep = 0 ///< a copy that shares nothing with its source
};
