#include "textures.h"

#include "colours.h"
#include "noise.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int side = 256;
constexpr int no_repeat = 1 << 20;

// ---- oak

Paint oak_at(double x, double y)
{
    static gsRGB const dark{134, 88, 50};
    static gsRGB const light{222, 180, 126};
    static gsRGB const joint{70, 44, 26};
    constexpr int boards = 4;

    int const board = static_cast<int>(y * boards);
    double const across = fraction(y * boards);
    double const end = scatter(board, 0, 5);
    if (across < 0.025 || fraction(x - end) < 0.006)
        return {joint};

    int const seed = 11 + 7 * board;
    double const wave = cloud(x * 2, across * 2, 2, no_repeat, 2, seed);
    double const ring = fraction(across * 3 + wave * 4);
    double const fibre = noise(x * 8, across * 34, 8, no_repeat, seed + 3);
    double const tone = 0.42 + 0.30 * ring * ring - 0.34 * fibre * fibre + 0.34 * scatter(board, 1, 5);
    return {step_mix(dark, light, tone, 18)};
}

// ---- weaves

/// How light a round thread is, from its edge (0 or 1) over its middle (0.5).
double roundness(double across)
{
    return 4 * across * (1 - across);
}

/// Yarn comes in four shades, 0 to 1.
double yarn(int thread, int seed)
{
    return std::floor(4 * scatter(thread, 0, seed)) / 3;
}

Paint grey(double lightness)
{
    return {step_mix({20, 20, 22}, {255, 255, 252}, lightness, 24)};
}

Paint linen_at(double x, double y)
{
    constexpr int threads = 16;
    int const column = static_cast<int>(x * threads);
    int const row = static_cast<int>(y * threads);
    bool const warp_above = (column + row) % 2 == 0;
    double const across = warp_above ? fraction(x * threads) : fraction(y * threads);
    double const along = warp_above ? fraction(y * threads) : fraction(x * threads);
    double const shade = warp_above ? yarn(column, 21) : yarn(row, 22);
    double const twist = fraction(along * 2 + across) < 0.5 ? 0.0 : 0.05;
    return grey(0.30 + 0.34 * roundness(across) + 0.16 * roundness(along) + 0.13 * shade - twist);
}

Paint herringbone_at(double x, double y)
{
    constexpr int columns = 8;
    constexpr int threads = 16;
    int const column = static_cast<int>(x * columns);
    double const sideways = x * columns * (threads / columns);
    double const slant = column % 2 == 0 ? sideways : -sideways;
    double const strand = fraction(y * threads + slant);
    double const seam = roundness(fraction(x * columns));
    int const thread = static_cast<int>(std::floor(y * threads + slant)) & (threads - 1);
    return grey(0.22 + 0.44 * roundness(strand) + 0.14 * std::min(1.0, 3 * seam) +
                0.15 * yarn(thread, 4 + column % 2));
}

// ---- terrazzo

/// One chip of stone in a cell of the grid, cut by six edges that face away from its middle.
bool in_chip(double x, double y, int key, int seed, double size)
{
    static constexpr std::array<std::array<double, 2>, 6> outward{
        {{1, 0}, {0.5, 0.87}, {-0.5, 0.87}, {-1, 0}, {-0.5, -0.87}, {0.5, -0.87}}};
    for (int edge = 0; edge < 6; ++edge) {
        double const nx = outward[static_cast<std::size_t>(edge)][0] + 0.6 * (scatter(key, edge, seed) - 0.5);
        double const ny =
            outward[static_cast<std::size_t>(edge)][1] + 0.6 * (scatter(key, edge, seed + 1) - 0.5);
        double const reach = size * (0.55 + 0.45 * scatter(key, edge, seed + 2));
        if (x * nx + y * ny > reach * std::sqrt(nx * nx + ny * ny))
            return false;
    }
    return true;
}

/// The chip of a grid that covers a place, as a number from 0 on, or -1.
int chip_at(double x, double y, int cells, int seed, double size)
{
    int const column = static_cast<int>(std::floor(x * cells));
    int const row = static_cast<int>(std::floor(y * cells));
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
            int const key = (column + dx + cells) % cells + (row + dy + cells) % cells * cells;
            double const middle_x = column + dx + 0.15 + 0.7 * scatter(key, 10, seed);
            double const middle_y = row + dy + 0.15 + 0.7 * scatter(key, 11, seed);
            double const grown = size * (0.6 + 0.4 * scatter(key, 12, seed));
            if (in_chip(x * cells - middle_x, y * cells - middle_y, key, seed, grown))
                return key;
        }
    return -1;
}

Paint terrazzo_at(double x, double y)
{
    static std::array<gsRGB, 6> const stones{colours::terracotta, colours::sage,     colours::ochre,
                                             colours::slate,      colours::charcoal, colours::white};
    auto const stone = [](int chip, int seed) {
        return stones[static_cast<std::size_t>(scatter(chip, 20, seed) * stones.size())];
    };
    int const large = chip_at(x, y, 7, 31, 0.46);
    if (large >= 0)
        return {stone(large, 31)};
    int const small = chip_at(x, y, 19, 47, 0.36);
    if (small >= 0 && scatter(small, 21, 47) < 0.8)
        return {mix(stone(small, 47), colours::cream, 0.2)};
    return {colours::cream};
}

// ---- marble

/// How close a place is to one of the lines on which @p slope is a whole number, 1 on it.
double vein(double slope, double width)
{
    return 1 - smooth_step(0, width, 1 - std::abs(2 * fraction(slope) - 1));
}

Paint marble_at(double x, double y)
{
    static gsRGB const deep{22, 64, 60};
    static gsRGB const light{70, 132, 118};
    static gsRGB const pale{226, 234, 218};

    double const bend = cloud(x * 3, y * 3, 3, 3, 4, 61);
    double const drift = cloud(x * 4, y * 4, 4, 4, 3, 71);
    double const body = cloud(x * 4 + 2 * bend, y * 4 + 2 * drift, 4, 4, 3, 81);
    double const broad = vein(x + y + 1.5 * bend, 0.05 + 0.10 * drift);
    double const fine = vein(2 * x - y + 1.8 * drift + 0.6 * bend, 0.03 + 0.04 * body);
    gsRGB const ground = step_mix(deep, light, smooth_step(0.25, 0.8, body), 10);
    return {step_mix(ground, pale, std::max(broad * (0.3 + body), 0.7 * fine * drift), 8)};
}

// ---- tiles

Paint scale_tile(int column, int row, double from_middle, double down)
{
    static std::array<gsRGB, 5> const glazes{colours::teal, gsRGB{56, 140, 132}, gsRGB{96, 164, 148},
                                             gsRGB{36, 104, 112}, colours::sage};
    constexpr double grout = 0.93;
    if (from_middle > grout)
        return {colours::cream};
    gsRGB const glaze = glazes[static_cast<std::size_t>(scatter(column, row, 103) * glazes.size())];
    gsRGB const lit = step_mix(glaze, colours::white, 0.2 * smooth_step(0.6, -0.4, down), 41);
    return {step_mix(lit, colours::charcoal, 0.3 * smooth_step(0.78, grout, from_middle), 21)};
}

Paint scale_tiles_at(double x, double y)
{
    constexpr int columns = 4;
    constexpr int rows = 2 * columns;
    double const across = x * columns;
    double const down = y * columns;
    // Rows lie half a tile apart, each over the upper part of the next: the first that covers a place shows.
    int const first = static_cast<int>(std::floor(2 * down)) - 1;
    for (int row = first; row <= first + 2; ++row) {
        double const shift = row % 2 == 0 ? 0.0 : 0.5;
        int const column = static_cast<int>(std::floor(across - shift));
        double const dx = 2 * (across - shift - column - 0.5);
        double const dy = 2 * (down - row * 0.5);
        double const from_middle = std::sqrt(dx * dx + dy * dy);
        if (from_middle <= 1)
            return scale_tile((column + columns) % columns, (row + rows) % rows, from_middle, dy);
    }
    return {colours::cream};
}

Paint star_tiles_at(double x, double y)
{
    constexpr int tiles = 2;
    // A tile is the same in all eight turns and mirrorings: one of them, from its middle, is enough.
    double far = std::abs(2 * fraction(x * tiles) - 1);
    double near = std::abs(2 * fraction(y * tiles) - 1);
    if (far < near)
        std::swap(far, near);
    double const from_corner = std::sqrt((1 - far) * (1 - far) + (1 - near) * (1 - near));
    double const from_middle = std::sqrt(far * far + near * near);
    double const petal_x = (far - 0.70) / 0.26;
    double const petal_y = near / 0.15;

    if (far > 0.985)
        return {mix(colours::sand, colours::charcoal, 0.2)};
    if (from_corner < 0.62)
        return {from_corner < 0.26   ? colours::ochre
                : from_corner < 0.34 ? colours::cream
                : from_corner < 0.54 ? colours::slate
                : from_corner < 0.57 ? colours::cream
                                     : colours::slate};
    if (petal_x * petal_x + petal_y * petal_y < 1)
        return {colours::sage};
    if (from_middle < 0.15)
        return {colours::ochre};
    if (from_middle < 0.22)
        return {colours::cream};
    bool const in_star = far < 0.36 || far + near < 0.51;
    return {in_star ? colours::terracotta : colours::cream};
}

} // namespace

Image oak()
{
    return paint("oak", side, side, 1, oak_at);
}

Image linen()
{
    return paint("linen", side, side, 1, linen_at);
}

Image herringbone()
{
    return paint("herringbone", side, side, 1, herringbone_at);
}

Image terrazzo()
{
    return paint("terrazzo", side, side, 2, terrazzo_at);
}

Image marble()
{
    return paint("marble", side, side, 1, marble_at);
}

Image scale_tiles()
{
    return paint("scale tiles", side, side, 2, scale_tiles_at);
}

Image star_tiles()
{
    return paint("star tiles", side, side, 3, star_tiles_at);
}
