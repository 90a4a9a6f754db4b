#include "dgView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace {

double const not_a_number = std::numeric_limits<double>::quiet_NaN();

/// Notes what it is asked to draw.
class Recorder final : public dgRenderer
{
public:
    std::vector<std::pair<giTriBlock const*, dgDrawState>> drawn;
    giBox2 erased;
    gsColour background;

    int select_read_buffer() const override { return 0; }
    void select_read_buffer(int) override {}
    void select_buffer(dgDoubleBuffer) override {}
    void erase(giBox2 const& view_port, gsColour const& colour, dgEraseZbuffer) override
    {
        erased = view_port;
        background = colour;
    }
    void draw(dgProjection const&, dgDrawState const& state, giTriBlock const& block) override
    {
        drawn.emplace_back(&block, state);
    }
    void begin_read_image() override {}
    dgDuctImage* read_image(dgImageType, char const*, int, int, int, int, dgSetAlpha, short) override
    {
        return nullptr;
    }
    void end_read_image() override {}
};

class dgViewTest : public testing::Test
{
protected:
    dgViewTest()
    {
        recorder->reference();
        view->reference();
        view->view_port_dc(giBox2({0, 0}, {200, 100}));
    }
    ~dgViewTest() override
    {
        view->unreference();
        EXPECT_EQ(recorder->references(), 1);
        recorder->unreference();
    }

    /// The box around the corners of a box as the view shows them.
    giBox3 shown(giPoint3 const& low, giPoint3 const& high)
    {
        giBox3 box;
        for (int corner = 0; corner < 8; ++corner)
            box.extend(view->projection().device(
                {corner & 1 ? low.x : high.x, corner & 2 ? low.y : high.y, corner & 4 ? low.z : high.z}));
        return box;
    }

    giBox3 fitted(giPoint3 const& low, giPoint3 const& high)
    {
        view->view_bounding_box(giBox3(low, high), dgBoundingViewFit);
        return shown(low, high);
    }

    void expect_directions(giVector3 const& normal, giVector3 const& up)
    {
        dgProjection const& projection = view->projection();
        giVector3 const right = up.cross(normal);
        EXPECT_NEAR((projection.normal - normal).length(), 0.0, 1e-12);
        EXPECT_NEAR((projection.up - up).length(), 0.0, 1e-12);
        EXPECT_NEAR((projection.right - right).length(), 0.0, 1e-12);
    }

    Recorder* recorder = new Recorder;
    dgView* view = new dgView(recorder, nullptr);
};

} // namespace

TEST_F(dgViewTest, ValuesHoldUntilReplacedAndTexturesForOneBlock)
{
    giTriBlock const blocks[3];
    auto* const image = new dgDuctImage("", 1, 1);
    auto* const scene = new dgClientStructure;
    scene->append(new dgSurfColour(gsColour(1, 0, 0)));
    scene->append(new dgShadingMethod(dgShadingFlat));
    scene->append(new dgReflectionModel(dgReflectionNone));
    scene->append(new dgBackFaceFlag(1));
    scene->append(new dgTextureFlag(1, 0));
    scene->append(new dgTexture(image, dgTextureImageAsIs, dgTextureFilterNearest, dgTextureWrapClamp,
                                dgTextureModulate, 0));
    scene->append(new dgTextureCoordGenUV(giBox2({0, 0}, {1, 1}), nullptr, 0));
    scene->append(new dgTriangleBlock(blocks[0], 0));
    scene->append(new dgSurfColour(gsColour(0, 1, 0)));
    scene->append(new dgTriangleBlock(blocks[1], 0));
    scene->append(new dgTriangleBlock(blocks[2], 0));
    view->root(scene);
    view->render_network(nullptr);

    ASSERT_EQ(recorder->drawn.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        auto const& [block, state] = recorder->drawn[i];
        EXPECT_EQ(block, &blocks[i]);
        EXPECT_EQ(state.surface, i == 0 ? gsColour(1, 0, 0) : gsColour(0, 1, 0));
        EXPECT_EQ(state.shading, dgShadingFlat);
        EXPECT_EQ(state.reflection_model, dgReflectionNone);
        EXPECT_TRUE(state.cull_back_faces);
        EXPECT_EQ(state.texturing, i == 0);
        EXPECT_EQ(state.texture.image, i == 0 ? image : nullptr);
        EXPECT_EQ(state.texture.filter, i == 0 ? dgTextureFilterNearest : dgTextureFilterLinear);
        EXPECT_EQ(state.texture.wrap, i == 0 ? dgTextureWrapClamp : dgTextureWrapRepeat);
        EXPECT_EQ(state.texture_range.empty(), i != 0);
    }
}

TEST_F(dgViewTest, DrawsTheStructureGivenOrTheRoot)
{
    giTriBlock const block;
    auto* const scene = new dgClientStructure;
    scene->reference();
    scene->append(new dgTriangleBlock(block, 0));
    view->render_network(nullptr);
    EXPECT_TRUE(recorder->drawn.empty());
    view->render_network(scene);
    EXPECT_EQ(recorder->drawn.size(), 1U);

    view->root(scene);
    view->root(scene);
    EXPECT_EQ(scene->references(), 2);
    view->background_colour(gsColour(0.1, 0.2, 0.3));
    view->erase(dgEraseColourAndDepth);
    EXPECT_EQ(recorder->erased, giBox2({0, 0}, {200, 100}));
    EXPECT_EQ(recorder->background, gsColour(0.1, 0.2, 0.3));

    auto* const blind = new dgView(nullptr, nullptr);
    blind->erase(dgEraseColourAndDepth);
    blind->render_network(scene);
    blind->unreference();
    scene->unreference();
}

TEST_F(dgViewTest, FitsTheBoxWithAMarginAllRound)
{
    // Limited by its height: 4 of 100 pixels free above and below.
    giBox3 box = fitted({10, 20, 30}, {11, 21, 32});
    EXPECT_NEAR(box.low().y, 4, 1e-9);
    EXPECT_NEAR(box.high().y, 96, 1e-9);
    EXPECT_NEAR(box.low().x, 54, 1e-9);
    EXPECT_NEAR(box.high().x, 146, 1e-9);

    // Limited by its width, and seen askew.
    view->orientation({0, 0, 0}, {1, -2, 3}, {0, 0, 1});
    box = fitted({-30, -1, 0}, {30, 1, 1});
    EXPECT_NEAR(box.low().x, 4, 1e-9);
    EXPECT_NEAR(box.high().x, 196, 1e-9);
    EXPECT_GT(box.low().y, 4);
    EXPECT_NEAR(box.low().y + box.high().y, 100, 1e-9);
}

TEST_F(dgViewTest, FitsWhateverIsFinite)
{
    view->orientation({0, 0, 0}, {0, -3, 4}, {0, 0, 1});
    double const huge = std::numeric_limits<double>::max() / 2;
    std::pair<giPoint3, giPoint3> const boxes[] = {
        {{-huge, -huge, -huge}, {huge, huge, huge}},
        {{1e-310, 0, 0}, {3e-310, 1e-310, 1e-310}},
        {{1e9, 1e9, 1e9}, {1e9 + 1, 1e9 + 2, 1e9 + 3}},
        {{0, 0, 5}, {1, 1, 5}},
        {{0, 0, 0}, {0, 0, 7}},
        {{0, -3, 4}, {0, -3, 4}},
        {{0, 3, -4}, {0, -3, 4}}, // turned inside out
    };
    for (auto const& [low, high] : boxes) {
        giBox3 const box = fitted(low, high);
        SCOPED_TRACE(testing::Message() << low.x << ' ' << low.y << ' ' << low.z);
        EXPECT_FALSE(box.empty());
        EXPECT_GE(box.low().x, 4 - 1e-5);
        EXPECT_LE(box.high().x, 196 + 1e-5);
        EXPECT_GE(box.low().y, 4 - 1e-5);
        EXPECT_LE(box.high().y, 96 + 1e-5);
        EXPECT_GE(box.low().z, -1 - 1e-9);
        EXPECT_LE(box.high().z, 1 + 1e-9);
    }
}

TEST_F(dgViewTest, TakesABoxThatIsNoneAsTheUnitCube)
{
    for (giBox3 const& none : {giBox3(), giBox3({0, 0, not_a_number}, {5, 5, 5})}) {
        view->view_bounding_box(giBox3({7, 7, 7}, {9, 9, 9}), dgBoundingViewFit);
        view->view_bounding_box(none, dgBoundingViewFit);
        EXPECT_NEAR(shown({0, 0, 0}, {1, 1, 1}).low().y, 4, 1e-9);
        EXPECT_NEAR(shown({0, 0, 0}, {1, 1, 1}).high().y, 96, 1e-9);
    }
    view->orientation({5, 6, 7}, {0, 0, 1}, {0, 1, 0});
    giPoint3 const before = view->projection().device({1, 2, 3});
    view->view_bounding_box(giBox3({0, 0, 0}, {90, 90, 90}), dgBoundingViewNone);
    EXPECT_EQ(view->projection().device({1, 2, 3}), before);
}

TEST_F(dgViewTest, LooksFromTheNormalWithUpMadePerpendicular)
{
    expect_directions({0, 0, 1}, {0, 1, 0});
    view->orientation({0, 0, 0}, {0, -3e200, 0}, {0, 5, 1e-3});
    expect_directions({0, -1, 0}, {0, 0, 1});
    view->orientation({0, 0, 0}, {1, 1, 0}, {1, 0, 0});
    double const half = std::sqrt(0.5);
    expect_directions({half, half, 0}, {half, -half, 0});
}

TEST_F(dgViewTest, LooksDownTheZAxisWhereDirectionsCannotServe)
{
    giVector3 const fine(0, -1, 0);
    std::pair<giVector3, giVector3> const cases[] = {
        {{0, 0, 0}, fine},
        {fine, {0, 0, 0}},
        {fine, fine},
        {fine, {0, 8, 1e-12}},
        {giVector3(), fine},
        {fine, giVector3()},
        {{not_a_number, 1, 0}, fine},
    };
    for (auto const& [normal, up] : cases) {
        view->orientation({0, 0, 0}, {1, 0, 0}, {0, 0, 1});
        view->orientation({0, 0, 0}, normal, up);
        expect_directions({0, 0, 1}, {0, 1, 0});
    }
}
