// Keeps a graphics driver from talking to the user.
#pragma once

/// While it lives, drops everything that this thread writes through the C library's standard error.
///
/// A starting driver writes lines there about things that it can do without: a cache folder that it may not make, a
/// device file that it may not open. Output of other threads passes through, and the file handle stays as it is.
/// Where the C library's standard error cannot be replaced, nothing is dropped.
class dgOffscreenQuiet
{
public:
    dgOffscreenQuiet();
    dgOffscreenQuiet(dgOffscreenQuiet const&) = delete;
    dgOffscreenQuiet& operator=(dgOffscreenQuiet const&) = delete;
    ~dgOffscreenQuiet();
};
