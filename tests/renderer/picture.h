// Pictures of small scenes, for the tests of the renderer.
#pragma once

#include "dgOffscreenRenderer.h"
#include "dgView.h"
#include "testImage.h"

#include <gmock/gmock.h>

#include <initializer_list>
#include <vector>

using Renderer = dgCounted<dgOffscreenRenderer>;

inline constexpr Pixel red{255, 0, 0, 255};
inline constexpr Pixel green{0, 255, 0, 255};
inline constexpr Pixel white{255, 255, 255, 255};
inline constexpr Pixel black{0, 0, 0, 255};
inline constexpr Pixel background{0, 0, 255, 255};

/// Matches a pixel each channel of which differs by at most @p tolerance.
inline auto near(Pixel const& pixel, double tolerance)
{
    return testing::Pointwise(testing::DoubleNear(tolerance), pixel);
}

inline std::vector<giPoint2> const whole_image{{0, 0}, {1, 0}, {0, 1}, {1, 1}};

/// A parallelogram and how it is drawn.
struct Square
{
    giTriBlock const* block = nullptr; ///< drawn instead, where there is one
    giPoint3 corner{0, 0, 0};          ///< lower left; the sides begin there
    giVector3 right{1, 0, 0};
    giVector3 up{0, 1, 0};
    giNormArr normals = giNormArr(4, {0, 0, 1});
    std::vector<giPoint2> coordinates = whole_image;
    Pixel colour = white;
    bool lit = false;
    double specular = 0.5;
    bool culled = false;
    dgDuctImage* image = nullptr; ///< its texture
};

giTriBlock block_of(Square const& square);

/// One renderer for the tests of a suite, and what they draw with it.
struct Pictures : testing::Test
{
    static constexpr int side = 100; ///< of the pictures, in pixels

    static void SetUpTestSuite() { renderer = start(); }
    static void TearDownTestSuite() { renderer.reset(); }

    static Renderer start();

    /// A picture into which all are fitted; null when the renderer gives none.
    static Image draw(std::initializer_list<Square> squares);

    /// The pixel in the middle of a picture of one.
    static Pixel middle(Square const& square) { return pixel(*draw({square}), side / 2, side / 2); }

    static inline Renderer renderer;
};
