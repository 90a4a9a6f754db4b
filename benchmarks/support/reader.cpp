// Reads the material file it is given and prints the most memory that it held, in KiB.
#include "mrFileMat.h"

#include "utString.h"

#include <cstdio>
#include <fstream>
#include <string>

int main(int argc, char** argv)
{
    mrFileMat material;
    if (argc != 2 || material.read(utString(argv[1])) != mrFileMatReadOK)
        return 1;
    // Not getrusage(): what it gives counts the process that started this one, up to its exec.
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            std::printf("%s\n", line.c_str() + 6);
    return 0;
}
