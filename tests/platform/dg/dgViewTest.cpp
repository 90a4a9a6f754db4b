#include "dgView.h"

#include "mrTest.h"
#include "testImage.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

namespace {

double const not_a_number = std::numeric_limits<double>::quiet_NaN();

class dgViewTest : public testing::Test
{
protected:
    dgViewTest() { view->view_port_dc(giBox2({0, 0}, {200, 100})); }

    /// The box around the corners of a box as the view shows them.
    giBox3 shown(giPoint3 const& low, giPoint3 const& high)
    {
        giBox3 box;
        for (int corner = 0; corner < 8; ++corner)
            box.extend(view->projection().device(
                {corner & 1 ? low.x : high.x, corner & 2 ? low.y : high.y, corner & 4 ? low.z : high.z}));
        return box;
    }

    dgCounted<dgView> view{new dgView(nullptr, nullptr)};
};

} // namespace

TEST_F(dgViewTest, FitsTheBoxWithAMarginAllRound)
{
    // The margin is 4 of the viewport's 100 pixels; what is no box is taken as the unit cube.
    giBox3 const tall({10, 20, 30}, {11, 21, 32});
    giBox3 const wide({-30, -1, 0}, {30, 1, 1});
    giBox3 const unit({0, 0, 0}, {1, 1, 1});
    giBox2 const upright({54, 4}, {146, 96});
    std::tuple<giBox3, giBox3, giBox2> const cases[] = {
        {tall, tall, upright},
        {wide, wide, giBox2({4, 46.8}, {196, 53.2})},
        {giBox3(), unit, upright},
        {giBox3({0, 0, not_a_number}, {5, 5, 5}), unit, upright}};
    for (auto const& [box, seen, picture] : cases) {
        view->view_bounding_box(box, dgBoundingViewFit);
        giBox3 const found = shown(seen.low(), seen.high());
        EXPECT_NEAR(found.low().x, picture.low().x, 1e-9);
        EXPECT_NEAR(found.low().y, picture.low().y, 1e-9);
        EXPECT_NEAR(found.high().x, picture.high().x, 1e-9);
        EXPECT_NEAR(found.high().y, picture.high().y, 1e-9);
    }
    giPoint3 const before = view->projection().device({1, 2, 3});
    view->view_bounding_box(wide, dgBoundingViewNone);
    EXPECT_EQ(view->projection().device({1, 2, 3}), before);
}

TEST_F(dgViewTest, FitsWhateverIsFinite)
{
    view->orientation({0, 0, 0}, {0, -3, 4}, {0, 0, 1});
    double const huge = std::numeric_limits<double>::max() / 2;
    std::pair<giPoint3, giPoint3> const boxes[] = {
        {{-huge, -huge, -huge}, {huge, huge, huge}},
        {{huge, huge, huge}, {1.9 * huge, 1.9 * huge, 1.9 * huge}},
        {{1e-310, 0, 0}, {3e-310, 1e-310, 1e-310}},
        {{1e9, 1e9, 1e9}, {1e9 + 1, 1e9 + 2, 1e9 + 3}},
        {{0, -3, 4}, {0, -3, 4}},
        {{0, 3, -4}, {0, -3, 4}}, // turned inside out
    };
    for (auto const& [low, high] : boxes) {
        view->view_bounding_box(giBox3(low, high), dgBoundingViewFit);
        giBox3 const box = shown(low, high);
        SCOPED_TRACE(testing::Message() << low.x << ' ' << low.y << ' ' << low.z);
        EXPECT_FALSE(box.empty());
        EXPECT_GE(std::min(box.low().x, box.low().y), 4 - 1e-5);
        EXPECT_LE(std::max(box.high().x - 100, box.high().y), 96 + 1e-5);
        EXPECT_LE(std::max(-box.low().z, box.high().z), 1 + 1e-9);
    }
}

TEST_F(dgViewTest, LooksFromTheNormalWithUpMadePerpendicularOrDownTheZAxis)
{
    double const half = std::sqrt(0.5);
    giVector3 const z(0, 0, 1);
    giVector3 const y(0, 1, 0);
    giVector3 const back(0, -1, 0);
    std::tuple<giVector3, giVector3, giVector3, giVector3> const cases[] = {
        {{0, -3e200, 0}, {0, 5, 1e-3}, back, z},
        {{1, 1, 0}, {1, 0, 0}, {half, half, 0}, {half, -half, 0}},
        {{0, 0, 0}, back, z, y},
        {back, {0, 8, 1e-12}, z, y},
        {giVector3(), back, z, y},
        {back, giVector3(), z, y},
        {{not_a_number, 1, 0}, back, z, y}};
    for (auto const& [normal, up, shown_normal, shown_up] : cases) {
        view->orientation({0, 0, 0}, {1, 0, 0}, {0, 0, 1});
        view->orientation({0, 0, 0}, normal, up);
        dgProjection const& projection = view->projection();
        EXPECT_NEAR((projection.normal - shown_normal).length(), 0.0, 1e-12) << normal.y << " " << up.y;
        EXPECT_NEAR((projection.up - shown_up).length(), 0.0, 1e-12) << normal.y << " " << up.y;
        EXPECT_NEAR((projection.right - shown_up.cross(shown_normal)).length(), 0.0, 1e-12);
    }
}
