#include "palettePicture.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace mrtool {

namespace {

struct SwatchSize
{
    int side;
    int gap;
};

constexpr SwatchSize sizes[] = {{64, 8}, {48, 8}, {32, 4}, {24, 4}, {16, 2}, {12, 2}, {8, 1},
                                {6, 1},  {5, 0},  {4, 0},  {3, 0},  {2, 0},  {1, 0}};

giColour const background(240, 240, 240, 0);

/// Of the line around a swatch that may have the background's colour; drawn when the gap has room for it.
giColour const frame(200, 200, 200, 0);

/// Up to this many colours share a row.
constexpr std::size_t least_columns = 8;

/// The width of a picture that is aimed at, in heights.
constexpr double aspect = 1.5;

std::uint64_t count_rows(std::vector<std::size_t> const& counts, std::size_t columns)
{
    std::uint64_t rows = 0;
    for (std::size_t const count : counts)
        rows += (count + columns - 1) / columns;
    return rows;
}

/// @return the layout with swatches of this size, or nothing when it takes more than @p most_side pixels
std::optional<SwatchLayout> lay_out(std::vector<std::size_t> const& counts, SwatchSize size, int most_side)
{
    std::size_t const largest = *std::max_element(counts.begin(), counts.end());
    std::uint64_t const total = std::reduce(counts.begin(), counts.end());
    int const step = size.side + size.gap;
    std::size_t const most = std::min(largest, static_cast<std::size_t>((most_side - size.gap) / step));
    auto const wanted = static_cast<std::size_t>(std::ceil(std::sqrt(aspect * static_cast<double>(total))));

    SwatchLayout layout{size.side, size.gap};
    std::size_t columns = std::min(most, std::max(wanted, least_columns));
    auto const height = [&] {
        return count_rows(counts, columns) * static_cast<std::uint64_t>(step) +
               static_cast<std::uint64_t>(size.gap) +
               (counts.size() - 1) * static_cast<std::uint64_t>(layout.extra());
    };
    while (height() > static_cast<std::uint64_t>(most_side)) {
        if (columns == most)
            return std::nullopt;
        columns = std::min(most, columns + columns / 8 + 1);
    }
    layout.columns = static_cast<int>(columns);
    layout.width = layout.columns * step + size.gap;
    layout.height = static_cast<int>(height());
    return layout;
}

void fill(dgDuctImage& image, int left, int top, int width, int height, giColour const& colour)
{
    unsigned char const pixel[] = {colour.red(), colour.green(), colour.blue(), 255};
    for (int y = top; y < top + height; ++y) {
        unsigned char* at = image.pixels() + 4 * (std::ptrdiff_t{y} * image.width() + left);
        for (int x = 0; x < width; ++x)
            at = std::copy(std::begin(pixel), std::end(pixel), at);
    }
}

} // namespace

std::optional<SwatchLayout> find_layout(std::vector<std::size_t> const& counts)
{
    for (SwatchSize const size : sizes)
        if (auto const layout = lay_out(counts, size, SwatchLayout::usual_side))
            return layout;
    return lay_out(counts, *std::rbegin(sizes), SwatchLayout::max_side);
}

dgCounted<dgDuctImage> draw_swatches(Swatches const& swatches, SwatchLayout const& layout)
{
    auto image = dg_hold(new dgDuctImage("palette", layout.width, layout.height));
    fill(*image, 0, 0, layout.width, layout.height, background);
    int const step = layout.swatch + layout.gap;
    int top = layout.gap;
    for (std::vector<giColour> const& palette : swatches) {
        int column = 0;
        for (giColour const& colour : palette) {
            if (column == layout.columns) {
                column = 0;
                top += step;
            }
            int const left = layout.gap + column++ * step;
            if (layout.gap > 1)
                fill(*image, left - 1, top - 1, layout.swatch + 2, layout.swatch + 2, frame);
            fill(*image, left, top, layout.swatch, layout.swatch, colour);
        }
        top += step + layout.extra();
    }
    return image;
}

} // namespace mrtool
