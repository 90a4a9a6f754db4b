// Keeps a graphics driver from talking to the user.
#pragma once

/// For as long as it lives, what this thread writes through the C library's standard error is dropped.
///
/// A driver that is being started says lines there about what it can do without (a cache folder that it may
/// not make, a device file that it may not open). What other threads write passes through, and the file
/// handle itself stays as it is. Where the C library lets nobody change its standard error, nothing is
/// dropped.
class dgOffscreenQuiet
{
public:
    dgOffscreenQuiet();
    dgOffscreenQuiet(dgOffscreenQuiet const&) = delete;
    dgOffscreenQuiet& operator=(dgOffscreenQuiet const&) = delete;
    ~dgOffscreenQuiet();
};
