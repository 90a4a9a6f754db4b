#include "sampleFile.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <stdexcept>

void write_file(std::filesystem::path const& path, std::string const& bytes)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path.string());
}

std::string decimal(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string number(text);
    if (number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.back() == '.')
            number.pop_back();
    }
    return number == "-0" ? "0" : number;
}

void append_bytes(std::string& bytes, unsigned value, int count)
{
    for (int byte = 0; byte < count; ++byte)
        bytes += static_cast<char>(value >> (8 * byte) & 255u);
}

void append_float(std::string& bytes, double value)
{
    append_bytes(bytes, std::bit_cast<std::uint32_t>(static_cast<float>(value)), 4);
}
