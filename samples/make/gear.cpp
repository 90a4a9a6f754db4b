// A gear that stands on its teeth: an STL mesh, in millimetres, z up.
#include "samples.h"

#include "giPoint.h"
#include "giVector3.h"
#include "sampleFile.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr int teeth = 12;

/// A corner of a tooth: where it stands from one tooth's root to the next, 0 to 1, and how much of the tooth's
/// height it has.
struct Corner
{
    double at;
    double height;
};
constexpr std::array<Corner, 5> tooth{{{0, 0}, {0.22, 0}, {0.40, 1}, {0.60, 1}, {0.78, 0}}};

/// One ring of points about the axis, smooth or toothed, so far in front of the middle.
struct Level
{
    double radius;
    double tooth_height;
    double front;
};

/// From the rear end of the bore through it to the front, outwards, back along the teeth, and inwards.
constexpr std::array<Level, 13> levels{{{9, 0, -6},
                                        {9, 0, 8},
                                        {10, 0, 9},
                                        {16, 0, 9},
                                        {17, 0, 8},
                                        {19, 0, 2.5},
                                        {29, 0, 2.5},
                                        {32, 0, 7},
                                        {37.6, 8, 7},
                                        {39, 9, 5.4},
                                        {39, 9, -5.4},
                                        {37.6, 8, -7},
                                        {10, 0, -7}}};

giPoint3 point(Level const& level, std::size_t index)
{
    Corner const& corner = tooth[index % tooth.size()];
    double const turn = 2 * std::numbers::pi / teeth;
    double const angle = turn * (static_cast<double>(index / tooth.size()) + corner.at);
    double const radius = level.radius + level.tooth_height * corner.height;
    // Rounded, so that the last bit of a sine makes no difference.
    auto const rounded = [](double value) { return std::floor(value * 4096 + 0.5) / 4096; };
    return {rounded(radius * std::cos(angle)), -level.front, rounded(radius * std::sin(angle))};
}

giVector3 between(giPoint3 const& from, giPoint3 const& to)
{
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

void append_vector(std::string& bytes, double x, double y, double z)
{
    for (double component : {x, y, z})
        append_float(bytes, component);
}

void append_triangle(std::string& bytes, giPoint3 const& a, giPoint3 const& b, giPoint3 const& c)
{
    giVector3 normal = between(a, b).cross(between(a, c));
    normal.unitize();
    append_vector(bytes, normal.x, normal.y, normal.z);
    for (giPoint3 const& corner : {a, b, c})
        append_vector(bytes, corner.x, corner.y, corner.z);
    append_bytes(bytes, 0, 2);
}

} // namespace

void make_gear(std::filesystem::path const& samples)
{
    constexpr std::size_t around = teeth * tooth.size();
    std::string stl = "gear";
    stl.resize(80, ' ');
    append_bytes(stl, static_cast<unsigned>(2 * around * levels.size()), 4);
    for (std::size_t level = 0; level < levels.size(); ++level)
        for (std::size_t index = 0; index < around; ++index) {
            Level const& next = levels[(level + 1) % levels.size()];
            std::size_t const after = (index + 1) % around;
            giPoint3 const a = point(levels[level], index);
            giPoint3 const b = point(levels[level], after);
            giPoint3 const c = point(next, after);
            giPoint3 const d = point(next, index);
            append_triangle(stl, a, c, b);
            append_triangle(stl, a, d, c);
        }
    write_file(samples / "meshes/gear.stl", stl);
}
