// Painting images and writing them.
#pragma once

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "gsRGB.h"

#include <functional>
#include <string>

using Image = dgCounted<dgDuctImage>;

struct Paint
{
    gsRGB colour;
    int alpha = 255;
};

/// What is at a place of a picture; x runs from 0 to 1 across it, y down it in the same unit.
using Painter = std::function<Paint(double x, double y)>;

/// Paints a picture pixel by pixel.
/// @param samples  places looked at along each side of a pixel; more make smoother edges
Image paint(std::string const& name, int width, int height, int samples, Painter const& painter);

/// The colour @p share of the way from one to the other, share from 0 to 1.
gsRGB mix(gsRGB const& from, gsRGB const& to, double share);

/// As mix, in so few steps that the picture compresses well.
gsRGB step_mix(gsRGB const& from, gsRGB const& to, double share, int steps);

/// The image as a PNG file.
std::string png(dgDuctImage const& image);
