// Pictures of palettes.
#pragma once

#include "dgCounted.h"

#include "dgDuctImage.h"
#include "giColour.h"

#include <optional>
#include <vector>

namespace mrtool {

/// The colours of palettes, one palette after the other.
using Swatches = std::vector<std::vector<giColour>>;

/// How swatches lie in a picture, in pixels, with a gap around and between them. Each palette begins a new row.
struct SwatchLayout
{
    /// The largest side of a picture. Only swatches of one pixel may exceed the usual one.
    static constexpr int usual_side = 2048;
    static constexpr int max_side = 8191;

    int swatch = 0; ///< the side of one
    int gap = 0;
    int columns = 0;
    int width = 0; ///< of the picture
    int height = 0;

    /// The distance between two palettes, in addition to the gap between rows.
    int extra() const { return 2 * gap; }
};

/// Finds the layout with the largest swatches, 64 down to 1 pixel.
/// @param counts  the number of colours of each palette, at least 1; at least one palette
/// @return nothing when no picture has room for them
std::optional<SwatchLayout> find_layout(std::vector<std::size_t> const& counts);

/// Draws the colours in order, rows from left to right and from the top, on a light background.
/// @param layout  what find_layout made for their numbers
dgCounted<dgDuctImage> draw_swatches(Swatches const& swatches, SwatchLayout const& layout);

} // namespace mrtool
