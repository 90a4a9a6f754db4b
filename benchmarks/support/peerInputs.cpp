// Makes the files that peers works on: mr_peer_inputs FOLDER.
#include "material.h"
#include "table.h"

#include "giVector3.h"
#include "gxPNG.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace {

static_assert(std::endian::native == std::endian::little, "STL files have the other order of bytes");

struct File
{
    explicit File(std::string const& path) : stream(std::fopen(path.c_str(), "wb"))
    {
        require(stream, "a file cannot be opened");
    }
    ~File() { require(std::fclose(stream) == 0, "a file cannot be written"); }
    File(File const&) = delete;
    File& operator=(File const&) = delete;

    std::FILE* stream;
};

/// A point of a ring with ripples, some of them sharp, that is wound around an axis.
giVector3 point_of_ring(double around, double across)
{
    double const ripple = 0.05 * std::abs(std::sin(12.0 * around)) + 0.02 * std::sin(40.0 * across);
    double const radius = 0.4 + ripple;
    double const distance = 1.0 + radius * std::cos(across);
    return {distance * std::cos(around), distance * std::sin(around),
            radius * std::sin(across) + 0.2 * std::sin(3.0 * around)};
}

void append(std::string& bytes, giVector3 const& vector)
{
    float const numbers[] = {static_cast<float>(vector.x), static_cast<float>(vector.y),
                             static_cast<float>(vector.z)};
    bytes.append(reinterpret_cast<char const*>(numbers), sizeof numbers);
}

/// @param states_normals  else they are zeros, which readers take as none
void append_facet(std::string& bytes, giVector3 const& a, giVector3 const& b, giVector3 const& c,
                  bool states_normals)
{
    giVector3 normal(0.0, 0.0, 0.0);
    if (states_normals) {
        normal = (b - a).cross(c - a);
        normal.unitize();
    }
    for (giVector3 const& vector : {normal, a, b, c})
        append(bytes, vector);
    bytes.append(2, '\0');
}

/// Writes a binary STL file of 2 * around * across triangles.
void write_ring(std::string const& path, int around, int across, bool states_normals)
{
    File const file(path);
    std::string bytes(80, ' ');
    auto const count = static_cast<std::uint32_t>(2 * around * across);
    bytes.append(reinterpret_cast<char const*>(&count), sizeof count);
    auto const point = [&](int i, int j) {
        double const whole = 2.0 * std::numbers::pi;
        return point_of_ring(whole * (i % around) / around, whole * (j % across) / across);
    };
    for (int i = 0; i < around; ++i) {
        for (int j = 0; j < across; ++j) {
            giVector3 const corners[] = {point(i, j), point(i + 1, j), point(i + 1, j + 1), point(i, j + 1)};
            append_facet(bytes, corners[0], corners[1], corners[2], states_normals);
            append_facet(bytes, corners[0], corners[2], corners[3], states_normals);
        }
        require(std::fwrite(bytes.data(), 1, bytes.size(), file.stream) == bytes.size(),
                "a file cannot be written");
        bytes.clear();
    }
}

void write_picture(std::string const& path, int side)
{
    File const file(path);
    require(gxPNGWriterDuctImage::write_file(*material_picture("", side, 1), file.stream,
                                             utStringutStringcoTable(4, 50)),
            "a picture cannot be written");
}

} // namespace

int main(int argc, char** argv)
{
    require(argc == 2, "the folder for the files is missing");
    std::string const folder = std::string(argv[1]) + "/";
    write_ring(folder + "118k.stl", 295, 200, true);
    write_ring(folder + "118k-bare.stl", 295, 200, false);
    write_ring(folder + "1m.stl", 1000, 500, true);
    write_ring(folder + "1m-bare.stl", 1000, 500, false);
    write_ring(folder + "2m-bare.stl", 1000, 1000, false);
    write_ring(folder + "4m-bare.stl", 2000, 1000, false);
    write_picture(folder + "2048.png", 2048);
    write_picture(folder + "4096.png", 4096);
    return 0;
}
