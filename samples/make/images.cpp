// Pictures in several formats.
#include "samples.h"

#include "colours.h"
#include "noise.h"
#include "picture.h"
#include "sampleFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

// ---- A dahlia on nothing, with a soft shadow: a PNG with transparency

struct Ring
{
    double reach;
    double length;
    double width;
    gsRGB inner;
    gsRGB outer;
};

std::array<Ring, 4> const rings{{{0.20, 0.14, 0.075, colours::ochre, colours::cream},
                                 {0.36, 0.19, 0.115, colours::terracotta, colours::ochre},
                                 {0.54, 0.23, 0.16, colours::brick, colours::terracotta},
                                 {0.68, 0.25, 0.20, colours::plum, colours::brick}}};

/// A place and its mirror image share everything: all that counts is where it lies in a sixteenth of the
/// circle, along the axis of a petal and away from it.
struct Place
{
    double along;
    double away;
};

constexpr double cos_22 = 0.92387953251128674;
constexpr double sin_22 = 0.38268343236508978;

/// Mirrors at the line that is 22.5 degrees up.
Place at_next_axis(Place place)
{
    return {place.along * cos_22 + place.away * sin_22, std::abs(place.along * sin_22 - place.away * cos_22)};
}

Place folded(double x, double y)
{
    double const far = std::max(std::abs(x), std::abs(y));
    double const near = std::min(std::abs(x), std::abs(y));
    if (near * cos_22 <= far * sin_22)
        return {far, near};
    constexpr double half = 0.70710678118654752;
    return {(far + near) * half, std::abs(far - near) * half};
}

Paint dahlia_at(double x, double y)
{
    double const dx = 2 * x - 1;
    double const dy = 2 * y - 1;
    double const from_middle = std::sqrt(dx * dx + dy * dy);
    if (from_middle < 0.1)
        return {mix(colours::cream, colours::ochre, from_middle / 0.1)};
    Place place = folded(dx, dy);
    for (Ring const& ring : rings) {
        double const along = (place.along - ring.reach) / ring.length;
        double const away = place.away / ring.width;
        if (along * along + away * away < 1)
            return {step_mix(ring.inner, ring.outer, 0.6 + 0.45 * along - 0.45 * away * away, 16)};
        place = at_next_axis(place);
    }
    double const shadow_y = dy - 0.04;
    double const from_shadow = std::sqrt(dx * dx + shadow_y * shadow_y);
    return {colours::charcoal, static_cast<int>(110 * smooth_step(0.98, 0.7, from_shadow))};
}

// ---- Hills at dusk: a BMP with a palette of 16 colours

constexpr int hills_width = 256;
constexpr int hills_height = 160;

/// Six colours of sky, the sun, then five hills from the far to the near one.
std::array<gsRGB, 16> hills_palette()
{
    std::array<gsRGB, 16> palette;
    for (std::size_t band = 0; band < 6; ++band)
        palette[band] = mix(gsRGB{92, 112, 140}, gsRGB{250, 206, 150}, static_cast<double>(band) / 5);
    palette[6] = {255, 240, 208};
    for (std::size_t hill = 0; hill < 5; ++hill)
        palette[7 + hill] = mix(gsRGB{212, 140, 112}, gsRGB{48, 40, 60}, static_cast<double>(hill) / 4);
    return palette;
}

unsigned hills_index_at(int x, int y)
{
    for (int hill = 4; hill >= 0; --hill) {
        double const detail = 3 + hill;
        double const top = 78 + 15 * hill - 34 * cloud(x * detail / hills_width, hill, 64, 64, 3, 3 + hill);
        if (y >= top)
            return static_cast<unsigned>(7 + hill);
    }
    int const dx = x - 176;
    int const dy = y - 56;
    if (dx * dx + dy * dy < 24 * 24)
        return 6;
    return static_cast<unsigned>(std::min(y / 13, 5));
}

std::string hills_bmp()
{
    std::string pixels;
    for (int y = hills_height - 1; y >= 0; --y)
        for (int x = 0; x < hills_width; x += 2)
            append_bytes(pixels, hills_index_at(x, y) << 4 | hills_index_at(x + 1, y), 1);

    constexpr unsigned header = 14 + 40 + 4 * 16;
    std::string bmp = "BM";
    append_bytes(bmp, header + static_cast<unsigned>(pixels.size()), 4);
    append_bytes(bmp, 0, 4);
    append_bytes(bmp, header, 4);
    append_bytes(bmp, 40, 4);
    append_bytes(bmp, hills_width, 4);
    append_bytes(bmp, hills_height, 4);
    append_bytes(bmp, 1, 2); // planes
    append_bytes(bmp, 4, 2); // bits a pixel
    append_bytes(bmp, 0, 4); // not compressed
    append_bytes(bmp, static_cast<unsigned>(pixels.size()), 4);
    append_bytes(bmp, 2835, 4); // pixels a metre, 72 an inch
    append_bytes(bmp, 2835, 4);
    append_bytes(bmp, 16, 4); // colours in the palette, and how many of them matter
    append_bytes(bmp, 16, 4);
    for (gsRGB const& colour : hills_palette())
        append_bytes(bmp, static_cast<unsigned>(colour.red() << 16 | colour.green() << 8 | colour.blue()), 4);
    return bmp + pixels;
}

// ---- Arcs that wander: a PBM, one bit a pixel

bool arc_at(int x, int y)
{
    constexpr int tile = 32;
    bool const turned = scatter(x / tile, y / tile, 15) < 0.5;
    double const across = (turned ? x % tile : tile - 1 - x % tile) + 0.5;
    double const down = y % tile + 0.5;
    auto const on_arc = [](double dx, double dy) {
        return std::abs(std::sqrt(dx * dx + dy * dy) - tile / 2) < tile / 8;
    };
    return on_arc(across, down) || on_arc(tile - across, tile - down);
}

std::string arcs_pbm()
{
    constexpr int side = 256;
    std::string pbm = "P4\n256 256\n";
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; x += 8) {
            unsigned bits = 0;
            for (int bit = 0; bit < 8; ++bit)
                bits = bits << 1 | (arc_at(x + bit, y) ? 1u : 0u);
            append_bytes(pbm, bits, 1);
        }
    return pbm;
}

// ---- A compass rose: an SVG

std::string hex(gsRGB const& colour)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string text = "#";
    for (int part : {colour.red(), colour.green(), colour.blue()}) {
        text += digits[part / 16];
        text += digits[part % 16];
    }
    return text;
}

std::string circle(int radius, gsRGB const& colour)
{
    return "  <circle r=\"" + std::to_string(radius) + "\" fill=\"" + hex(colour) + "\"/>\n";
}

/// "x,y" of the place so far from the middle, the angle in sixteenths of the circle clockwise from the top.
std::string place(double radius, double sixteenths)
{
    double const angle = sixteenths * std::numbers::pi / 8;
    return decimal(radius * std::sin(angle), 1) + ',' + decimal(-radius * std::cos(angle), 1);
}

/// One point of the rose: two halves, the first in the light and the second in the shade.
std::string rose_point(double radius, double waist, int sixteenths, gsRGB const& light, gsRGB const& shade)
{
    auto const half = [&](double side, gsRGB const& colour) {
        return "  <path fill=\"" + hex(colour) + "\" d=\"M0,0 L" + place(waist, sixteenths + side) + " L" +
               place(radius, sixteenths) + " Z\"/>\n";
    };
    return half(-1, light) + half(1, shade);
}

std::string compass_svg()
{
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" "
                      "viewBox=\"-128 -128 256 256\">\n";
    svg += circle(124, colours::slate) + circle(116, colours::cream) + circle(112, colours::slate);
    svg += circle(84, colours::cream) + circle(81, colours::slate);
    for (int point = 1; point < 16; point += 2)
        svg += rose_point(70, 24, point, colours::sage, colours::teal);
    for (int point = 2; point < 16; point += 4)
        svg += rose_point(88, 30, point, colours::ochre, colours::terracotta);
    for (int point = 0; point < 16; point += 4)
        svg += rose_point(108, 34, point, colours::cream, colours::brick);
    svg += circle(9, colours::charcoal) + circle(5, colours::ochre);
    return svg + "</svg>\n";
}

} // namespace

void make_images(std::filesystem::path const& samples)
{
    std::filesystem::path const folder = samples / "images";
    write_file(folder / "dahlia.png", png(*paint("dahlia", 256, 256, 2, dahlia_at)));
    write_file(folder / "hills.bmp", hills_bmp());
    write_file(folder / "arcs.pbm", arcs_pbm());
    write_file(folder / "compass.svg", compass_svg());
}
