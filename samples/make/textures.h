// Textures of 256 by 256 pixels. All repeat without a seam.
#pragma once

#include "picture.h"

/// Boards of oak, their grain running from left to right.
Image oak();

/// A plain weave and a herringbone, both in greys, to be tinted.
Image linen();
Image herringbone();

/// Chips of stone in cream.
Image terrazzo();

/// Dark green marble with pale veins.
Image marble();

/// Glazed tiles laid like the scales of a fish.
Image scale_tiles();

/// Cement tiles, four in a square, with a star and quarter rings.
Image star_tiles();
