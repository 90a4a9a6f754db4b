// Palette files, as a person would write them.
#include "samples.h"

#include "sampleFile.h"

namespace {

/// One encoding; groups told apart by comments alone.
constexpr char woods[] =
    R"(# Woods, oiled unless said otherwise: the mean colour of a planed board by daylight

# Pale
rgb8 236 217 184 Maple
rgb8 229 206 168 Ash
rgb8 226 199 158 Birch
rgb8 222 190 146 Beech, steamed
rgb8 214 184 138 Lime
rgb8 205 170 120 Pine, fresh

# Middling
rgb8 190 150 100 Oak
rgb8 178 132 84 Elm
rgb8 184 124 76 Pear
rgb8 168 104 64 Cherry
rgb8 160 98 56 Larch heartwood
rgb8 150 112 70 Oak, smoked

# Dark
rgb8 124 72 46 Plum heartwood
rgb8 108 66 44 Mahogany
rgb8 96 68 48 Walnut
rgb8 74 50 38 Walnut, waxed
rgb8 58 42 36 Bog oak
rgb8 34 28 28 Ebony

# Out of doors, grey with age
rgb8 156 150 140 Larch, ten winters
rgb8 128 124 118 Oak, thirty winters
)";

/// All three encodings, blanks in columns, comments behind colours, colours without names.
constexpr char wall_paints[] =
    R"(# Wall paints of one supplier. White comes by the bucket and is measured; the colours are known from
# the printed fan, in percent of ink; the glazes from the filters that match them.

# Whites: sRGB, measured on painted card
rgb8 250 250 248   Chalk
rgb8 244 240 230   Lime wash
rgb8 238 230 214   Ivory
rgb8 232 228 222   Pebble
rgb8 222 224 224   Overcast

# The fan: cyan, magenta, yellow, black
cmyk   0  18  60   5   Straw
cmyk   0  34  72  12   Ochre
cmyk   0  58  66  18   Terracotta
cmyk   0  74  62  36   Brick        # two coats
cmyk   8  62  30  44   Plum
cmyk  42  22   0  38   Slate blue
cmyk  64  12  24  40   Teal
cmyk  20   4  30  30   Sage
cmyk  52  18  70  48   Ivy
cmyk   6   8  16  58   Umber grey
cmyk   0   0   0  80   Soot
cmyk   0   0   0 100   Blackboard   # matt, for writing on

# Glazes over Chalk: cyan, magenta and yellow of the filter, 0 to 255
cmy8   8  24  70   Honey glaze
cmy8   6  66  58   Rose glaze
cmy8  70  30  12   Sky glaze
cmy8  64  16  60   Jade glaze

# Tried on the landing, not named yet
rgb8 206 198 176
rgb8 198 190 170
)";

} // namespace

void make_palettes(std::filesystem::path const& samples)
{
    write_file(samples / "palettes" / "woods.pcp", woods);
    write_file(samples / "palettes" / "wall-paints.pcp", wall_paints);
}
