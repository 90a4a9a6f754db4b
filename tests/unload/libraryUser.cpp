// A part of an application that comes and goes, with the library.
#include "mrColourPaletteCache.h"
#include "mrRecolouredImageCache.h"
#include "mrThumbAtts.h"

#include "dgCounted.h"
#include "gx_read_dmt_file.h"
#include "gxImageFileUtils.h"

#include <fstream>

/// Fills the two caches, and has the libraries below read something.
/// @return how many entries the caches had
extern "C" __attribute__((visibility("default"))) int use()
{
    auto& palettes = mrColourPaletteCache::singleton();
    auto& images = mrRecolouredImageCache::singleton();
    int const found = palettes.size() + images.clear();

    std::ofstream palette("many.pcp");
    for (int i = 0; i < 10'000; ++i)
        palette << "rgb8 1 2 3 a name of more than a few letters " << i << '\n';
    palette.close();
    if (palettes.palette_exists("many.pcp"))
        palettes.remove_palette("many.pcp");
    palettes.load_palette("many.pcp");

    auto const image = dg_hold(new dgDuctImage("image", 2, 2));
    images.recoloured_image(image.get(), giColour(1, 2, 3, 0));

    auto const picture =
        dg_hold(gxImageFileUtils::read_image_file(MR_SAMPLES "/images/hills.bmp", gxImageFileBMP));
    giTriBlockcoDListPtrcoPtrcoDList meshes;
    gx_read_dmt_file(MR_SAMPLES "/meshes/gear.stl", meshes);
    bool const read = picture && !meshes.empty();
    for (giTriBlock const* const mesh : meshes)
        delete mesh;
    return read && palettes.size() == 1 ? found : -1;
}
