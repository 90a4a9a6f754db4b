// The names of the library's containers. Making one, copying it and adding to it may throw std::bad_alloc; what throws
// so while adding has added nothing.
#pragma once

#include "coDList.h"
#include "coPrg.h"
#include "coSet.h"
#include "coSortedList.h"
#include "coTable.h"
#include "gsTriUtils.h"
#include "utString.h"

class dgDuctImage;
class mrColourPalette;
class mrFMFacet;
class mrFMTexture;
class mrImageCacheItem;
class mrItemKey;
class mrMatProp;

/// The properties of a material or of a material file, in the order in which they were added.
using mrMatPropcoSet = coSet<mrMatProp>;

/// The texture layers of a facet, by value.
using mrFMTexturecoDList = coDList<mrFMTexture>;

/// Facets; the list's owner deletes them.
using mrFMFacetcoDListPtrcoPtrcoDList = coDList<mrFMFacet*>;

/// The image table: image name to image; the table's owner holds one reference on each image.
using utStringdgDuctImagecoTablePtrcoPtrcoTable = coTable<utString, dgDuctImage*>;

/// The image cache's entries by hash value; the cache deletes them.
using intmrImageCacheItemcoTablePtrcoPtrcoTable = coTable<int, mrImageCacheItem*, coZeroIsNullKey>;

using mrItemKeycoSortedList = coSortedList<mrItemKey>;

/// A number of facets.
using mrNumFaces = int;

/// From a number of facets to the blocks to draw them on. The table owns its lists; the lists borrow their blocks.
using giTriBlockcoDListPtrcoTablePrgcoPrg = coPrg<giTriBlockcoDListPtrcoPtrcoDList>;
using mrNumFacesgiTriBlockcoDListPtrcoTablePrgcoPrgcoTable =
    coTable<mrNumFaces, giTriBlockcoDListPtrcoTablePrgcoPrg, coZeroIsNullKey>;

/// The component values of a colour.
using doublecoDList = coDList<double>;

/// The position of a colour in its palette, from 0.
using mrColourIndex = int;

/// From a colour's name to its position.
using utStringmrColourIndexcoTable = coTable<utString, mrColourIndex>;

/// A palette file's path as mrUtils::standardize_path_name spells it.
using mrPaletteFilePath = utString;

/// From a path to the palette of that file. The table owns its palettes.
using mrColourPalettecoTablePrgcoPrg = coPrg<mrColourPalette>;
using mrPaletteFilePathmrColourPalettecoTablePrgcoPrgcoTable =
    coTable<mrPaletteFilePath, mrColourPalettecoTablePrgcoPrg>;

/// Every hashed container of the library is created with these: room for entries, and the fill limit in per cent.
inline constexpr int mrInitialSize = 4;
inline constexpr int mrFillLimit = 50;
