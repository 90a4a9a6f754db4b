// mr-scene-reader: reads a file for a process that does not want to itself. scReader starts it.
#include "readHere.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc == 3)
        return sc::run_reader(argv[1], argv[2]);
    std::fputs("mr-scene-reader is started by the library mrscene, and by nobody else\n", stderr);
    return 2;
}
