// Values as they go from the child to the parent, for comparing them too.
#pragma once

#include "mrTest.h"

#include "sceneWire.h"

#include <fcntl.h>
#include <unistd.h>

template <class T>
std::string wired(T& value)
{
    TestFolder const folder;
    int const file = open(folder.path("wire").c_str(), O_CREAT | O_WRONLY, 0600);
    sandbox::WireWriter wire(file);
    wire(value);
    EXPECT_TRUE(wire.finish());
    close(file);
    return read_bytes(folder.path("wire"));
}
