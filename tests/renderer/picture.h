// Pictures of small scenes, for the tests of the renderer.
#pragma once

#include "dgOffscreenRenderer.h"
#include "dgView.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>

struct Unreference
{
    void operator()(dgBase* object) const { object->unreference(); }
};

using Image = std::unique_ptr<dgDuctImage, Unreference>;

/// Red, green, blue and alpha of a pixel, from the top left.
std::array<int, 4> pixel(dgDuctImage const& image, int x, int y);

/// Whether each channel differs by at most @p tolerance.
testing::AssertionResult close(std::array<int, 4> const& a, std::array<int, 4> const& b, int tolerance);

/// A square from (x, 0, z) to (x + 1, 1, z), its normals along z, its texture coordinates 0 to @p repeats.
giTriBlock square(double x = 0.0, double z = 0.0, double repeats = 1.0);

/// A ball of radius 1 around the origin.
giTriBlock ball(int rings);

/// One renderer for the tests of a suite, and what they draw with it.
class Pictures : public testing::Test
{
protected:
    static constexpr int side = 100; ///< of the pictures, in pixels
    static inline gsColour const background{0.0, 0.0, 1.0};
    static inline std::array<int, 4> const background_pixel{0, 0, 255, 255};

    static void SetUpTestSuite();
    static void TearDownTestSuite() { renderer.reset(); }

    /// Draws the elements that @p fill appends, fitted as they are; null when the renderer gives none.
    static Image draw(std::function<void(dgStructure&)> const& fill);

    /// The same of blocks in one colour, drawn as materials are.
    static Image draw_blocks(gsColour const& colour, std::initializer_list<giTriBlock const*> blocks);

    /// A block and the colour it is drawn in.
    static void append(dgStructure& scene, giTriBlock const& block, gsColour const& colour);

    static inline std::unique_ptr<dgOffscreenRenderer, Unreference> renderer;
};
