// The geometry on which a material of several facets is drawn.
#pragma once

#include "giAngle.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "utCheckValid.h"

class dgkCurve3;

/// A shallow dome, a profile curve turned about the z axis, cut into equal slices: one block a facet.
///
/// Seen from above (+z) the slices run counter-clockwise from the +x axis. Each node has a normal that points
/// up and a texture coordinate: the disc as seen from above, laid into the unit square with its centre at
/// (0.5, 0.5). The blocks of the last number of facets asked for are kept, so a chart is for one thread at a
/// time. Making the first default-built chart may throw std::bad_alloc.
class MR_API mrPieChart
{
public:
    static constexpr int default_segments = 30;
    static constexpr int default_profile_points = 5;

    /// A flat-topped dome of radius 148 and height 54, with the default numbers. Its profile is one curve
    /// that all such charts share.
    mrPieChart();

    /// @param profile         in the x-z half plane (x the radius, z the height), from the axis outwards;
    ///                        borrowed. Null makes every block empty
    /// @param segments        in the full circle, shared out evenly: what is left over by n slices makes the
    ///                        segments wider; 0 or less makes every block empty
    /// @param profile_points  along the profile; of 1, nodes without triangles come out, of 0 or less empty blocks
    /// @report "Args" when @p segments <= 0
    /// @report "Args" when @p profile_points <= 0
    mrPieChart(dgkCurve3* profile, int segments, int profile_points);

    /// Deletes the blocks, not the profile.
    ~mrPieChart();

    mrPieChart(mrPieChart const&) = delete;
    mrPieChart& operator=(mrPieChart const&) = delete;

    /// The blocks for n facets, block i for facet i; kept from the call before when n is the same. With more
    /// facets than segments all blocks are empty; with n <= 0, or without enough memory, the list is empty.
    /// @return the chart's own, until the next call with another n
    /// @report "Args" when n <= 0
    giTriBlockcoDListPtrcoPtrcoDList const& blocks(int n) const;

    /// Appends one segment, from step × seg_index to one step further: 2 × points nodes, with a normal and a
    /// texture coordinate each, and 2 × points - 3 triangles, counter-clockwise seen from above. The texture
    /// reaches as far as the profile's last point. May throw std::bad_alloc, with a part of it appended.
    /// @param profile             null appends nothing
    /// @param points              along the profile; 0 or less appends nothing, 1 no triangle
    /// @param segments_per_facet  makes no difference
    /// @param index_in_facet      makes no difference
    static void append_seg(dgkCurve3* profile, int points, giAngle const& step, int segments_per_facet,
                           int index_in_facet, int seg_index, giBoxArrPoint3& nodes, giNormArr& normals,
                           giBoxArrPoint2& tus, giTriArr& triangles);

private:
    int make_blocks(int n) const;
    void make_block(giTriBlock& block, int facet, int segments_per_facet, giAngle const& step) const;

    dgkCurve3* m_profile;
    int m_segments = default_segments;
    int m_profile_points = default_profile_points;
    mutable giTriBlockcoDListPtrcoPtrcoDList m_blocks;
    utCheckValid m_check{this};
};
