#include "readHere.h"

#include "notes.h"
#include "readers.h"

#include "gsTriUtils.h"
#include "gx_read_dmt_file.h"
#include "gxFileHints.h"

namespace sc {

namespace {

Expected<scScene> read_by_format(std::string const& path)
{
    if (gx_extension(path) == "obj")
        return read_obj(path);
    return is_gltf(path) ? read_gltf(path) : read_with_assimp(path);
}

} // namespace

Expected<scScene> read_materials_here(std::string const& path)
{
    Expected<scScene> scene = read_by_format(path);
    if (!scene)
        return because("not a readable scene: " + make_note(scNoteFailed, "%1", scene.error()).words());
    settle(*scene);
    return scene;
}

Expected<std::vector<scSurface>> read_surfaces_here(std::string const& path)
{
    giTriBlockcoDListPtrcoPtrcoDList blocks;
    std::vector<utString> materials;
    utString reason;
    if (!gx_read_dmt_file(utString(path), blocks, &reason, &materials))
        return because(ut_concat("not a readable mesh: ", reason));
    std::vector<scSurface> surfaces;
    for (giTriBlock* const block : blocks)
        surfaces.push_back(
            {std::unique_ptr<giTriBlock>(block), std::string(materials[surfaces.size()].view()), {}});
    return surfaces;
}

Expected<dgCounted<dgDuctImage>> read_image_here(std::string const& path, gxImageFileFormat format)
{
    utString reason;
    auto image = dg_hold(gxImageFileUtils::read_image_file(utString(path), format, &reason));
    if (!image)
        return because(ut_concat("not a readable image: ", reason));
    return image;
}

} // namespace sc
