// Filling, reading and freeing triangle blocks.
#pragma once

#include "coDList.h"
#include "giTriBlock.h"
#include "utExport.h"

/// A list of blocks, which it never owns.
using giTriBlockcoDListPtrcoPtrcoDList = coDList<giTriBlock*>;

class UT_API gsTriUtils
{
public:
    /// The block's arrays, for filling. The texture coordinates are made when the block has none.
    static giBoxArrPoint3& check_out_nodes(giTriBlock& block);
    static giNormArr& check_out_normals(giTriBlock& block);
    static giBoxArrPoint2& check_out_tus(giTriBlock& block);
    static giTriArr& check_out_triangles(giTriBlock& block);

    /// The texture coordinates, or null when the block has none. They stay the block's.
    static giBoxArrPoint2 const* get_tus(giTriBlock const& block);

    /// Gives back the room that a completed block no longer needs. No node, normal, coordinate or triangle
    /// changes, nor their order.
    /// @param node_map, triangle_map  null; nothing moves, so there is nothing to map
    static void repage(giTriBlock& block, int* node_map, int* triangle_map);

    /// Deletes every block of the list and empties it.
    static void delete_and_clear(giTriBlockcoDListPtrcoPtrcoDList& blocks);

    /// 1 when low <= value <= high.
    static int in_range_inclusive(int value, int low, int high);
};

/// A list that owns its blocks.
struct gsOwnBlocks
{
    gsOwnBlocks() = default;
    gsOwnBlocks(gsOwnBlocks const&) = delete;
    gsOwnBlocks& operator=(gsOwnBlocks const&) = delete;
    ~gsOwnBlocks() { gsTriUtils::delete_and_clear(list); }

    giTriBlockcoDListPtrcoPtrcoDList list;
};
