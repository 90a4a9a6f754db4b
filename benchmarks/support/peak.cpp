#include "peak.h"

#include "table.h"

#include <cstdio>

double peak_of_reading(std::string const& material_file)
{
    std::string const command = std::string("'") + MR_BENCHMARK_READER + "' '" + material_file + "'";
    std::FILE* const output = popen(command.c_str(), "r");
    require(output != nullptr, "no process can be started");
    double kibibytes = 0.0;
    int const found = std::fscanf(output, "%lf", &kibibytes);
    require(pclose(output) == 0 && found == 1, "the material was not read in a process of its own");
    return kibibytes * 1024.0;
}
