#include "picture.h"

#include "gsTriUtils.h"

#include <list>

namespace {

gsColour colour_of(Pixel const& pixel)
{
    return {pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0};
}

void append(dgStructure& scene, giTriBlock const& block, Square const& square)
{
    scene.append(new dgSurfColour(colour_of(square.colour)));
    scene.append(new dgReflectionModel(square.lit ? dgReflectionBlinnPhong : dgReflectionNone));
    scene.append(
        new dgReflectionAttributes(0.1, 0.5, 0.0, square.specular, 100.0, gsColour(1, 1, 1), gsColour()));
    scene.append(new dgBackFaceFlag(square.culled));
    scene.append(new dgTextureFlag(square.image != nullptr, 0));
    if (square.image)
        scene.append(new dgTexture(square.image, dgTextureImageAsIs, dgTextureFilterLinear,
                                   dgTextureWrapRepeat, dgTextureModulate, 0));
    scene.append(new dgTriangleBlock(block, 0));
}

} // namespace

giTriBlock block_of(Square const& square)
{
    giTriBlock block;
    giPoint3 const& at = square.corner;
    for (giVector3 const& side : {giVector3(0, 0, 0), square.right, square.up, square.right + square.up})
        gsTriUtils::check_out_nodes(block).append({at.x + side.x, at.y + side.y, at.z + side.z});
    gsTriUtils::check_out_normals(block) = square.normals;
    for (giPoint2 const& coordinate : square.coordinates)
        gsTriUtils::check_out_tus(block).append(coordinate);
    gsTriUtils::check_out_triangles(block) = {{0, 1, 3}, {0, 3, 2}};
    return block;
}

Renderer Pictures::start()
{
    utString reason;
    Renderer started(dgOffscreenRenderer::create(reason));
    EXPECT_TRUE(started) << reason.c_str();
    if (started)
        started->reference();
    return started;
}

Image Pictures::draw(std::initializer_list<Square> squares)
{
    std::list<giTriBlock> blocks;
    auto* const scene = new dgClientStructure;
    for (Square const& square : squares)
        append(*scene, square.block ? *square.block : blocks.emplace_back(block_of(square)), square);
    dgCounted<dgView> const view(new dgView(renderer.get(), nullptr));
    view->background_colour(colour_of(background));
    view->view_port_dc(giBox2({0, 0}, {side, side}));
    view->root(scene);
    view->view_bounding_box(scene->bounding_box(1), dgBoundingViewFit);
    view->erase(dgEraseColourAndDepth);
    view->render_network(nullptr);
    renderer->begin_read_image();
    Image image(renderer->read_image(dgImageRGBA, "picture", 0, 0, side, side, dgSetAlphaEverywhere, 255));
    renderer->end_read_image();
    return image;
}
