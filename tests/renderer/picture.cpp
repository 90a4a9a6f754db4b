#include "picture.h"

#include "gsTriUtils.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

std::array<int, 4> pixel(dgDuctImage const& image, int x, int y)
{
    short components[4];
    image.get_pixel(x, y, components);
    return {components[0], components[1], components[2], components[3]};
}

testing::AssertionResult close(std::array<int, 4> const& a, std::array<int, 4> const& b, int tolerance)
{
    for (std::size_t i = 0; i < 4; ++i)
        if (std::abs(a[i] - b[i]) > tolerance)
            return testing::AssertionFailure()
                   << testing::PrintToString(a) << " is not close to " << testing::PrintToString(b);
    return testing::AssertionSuccess();
}

giTriBlock square(double x, double z, double repeats)
{
    giTriBlock block;
    for (int i = 0; i < 4; ++i) {
        double const u = i % 2;
        double const v = i / 2;
        gsTriUtils::check_out_nodes(block).append({x + u, v, z});
        gsTriUtils::check_out_normals(block).push_back({0, 0, 1});
        gsTriUtils::check_out_tus(block).append({u * repeats, v * repeats});
    }
    gsTriUtils::check_out_triangles(block) = {{0, 1, 3}, {0, 3, 2}};
    return block;
}

giTriBlock ball(int rings)
{
    giTriBlock block;
    int const around = 2 * rings;
    for (int i = 0; i <= rings; ++i)
        for (int j = 0; j <= around; ++j) {
            double const down = std::numbers::pi * i / rings;
            double const turn = std::numbers::pi * j / rings;
            giVector3 const at(std::sin(down) * std::cos(turn), std::sin(down) * std::sin(turn),
                               std::cos(down));
            gsTriUtils::check_out_nodes(block).append({at.x, at.y, at.z});
            gsTriUtils::check_out_normals(block).push_back(at);
            if (i == rings || j == around)
                continue;
            int const a = i * (around + 1) + j;
            int const below = a + around + 1;
            gsTriUtils::check_out_triangles(block).push_back({a, below, below + 1});
            gsTriUtils::check_out_triangles(block).push_back({a, below + 1, a + 1});
        }
    return block;
}

void Pictures::SetUpTestSuite()
{
    utString reason;
    renderer.reset(dgOffscreenRenderer::create(reason));
    ASSERT_TRUE(renderer) << reason.c_str();
    renderer->reference();
}

Image Pictures::draw(std::function<void(dgStructure&)> const& fill)
{
    auto* const scene = new dgClientStructure;
    fill(*scene);
    std::unique_ptr<dgView, Unreference> const view(new dgView(renderer.get(), nullptr));
    view->background_colour(background);
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

Image Pictures::draw_blocks(gsColour const& colour, std::initializer_list<giTriBlock const*> blocks)
{
    return draw([&](dgStructure& scene) {
        for (giTriBlock const* block : blocks)
            append(scene, *block, colour);
    });
}

void Pictures::append(dgStructure& scene, giTriBlock const& block, gsColour const& colour)
{
    scene.append(new dgSurfColour(colour));
    scene.append(new dgReflectionAttributes(0.1, 0.5, 0.0, 0.5, 100.0, gsColour(1, 1, 1), gsColour(0, 0, 0)));
    scene.append(new dgTriangleBlock(block, 0));
}
