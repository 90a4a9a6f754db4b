// Doubles as text, bit for bit.
#pragma once

#include "utExport.h"
#include "utString.h"

/// The base64 form of a double: its eight bytes, least significant first, in the standard alphabet with
/// padding (RFC 4648, section 4). Always twelve characters, the last of them "=".
class UT_API gsBase64
{
public:
    static utString encode(double value);

    /// Takes exactly what encode() makes, for any bits of a double, and nothing else.
    /// @return 1, or 0 with @p value untouched
    static int decode(utString const& text, double& value);
};
