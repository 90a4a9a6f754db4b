// The attributes of thumbnails: size, colours, camera, and the geometry that shows materials.
#pragma once

#include "giVector3.h"
#include "gsRGB.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "utCheckValid.h"
#include "utCopy.h"

class mrPieChart;

/// The attributes of thumbnails.
///
/// Invalid exactly while its width is 0: with a negative width or height they count as valid, but thumbnails then have
/// no pixels, or are null where they are drawn. The geometry is borrowed: the caller keeps the plain block, the
/// face-count table with its lists and blocks, and the pie chart alive for as long as any copy of the
/// attributes is used; copies share them.
class MR_API mrThumbAtts
{
public:
    using FaceCountTable = mrNumFacesgiTriBlockcoDListPtrcoTablePrgcoPrgcoTable;

    /// Invalid: size 0 by 0, black, unset vectors, no geometry.
    mrThumbAtts();

    /// Stores all it is given, then checks it.
    /// @param width, height  in pixels, above 0
    /// @param surface        colour of plain meshes
    /// @param background     colour behind the scene and around images
    /// @param view_normal    from the scene to the viewer, for meshes
    /// @param view_up        upwards in the picture, for meshes
    /// @param plain_block    for materials of one facet without texture layers; may be null
    /// @param tex_blocks     blocks by number of facets; null counts as empty
    /// @param pie_chart      makes blocks for the other numbers of facets; null counts as a default-built one
    /// @report "Args" for each of these, in this order: @p width <= 0; @p height <= 0; @p view_normal unset;
    ///         @p view_up unset; @p tex_blocks null or empty; @p pie_chart null
    mrThumbAtts(int width, int height, gsRGB const& surface, gsRGB const& background,
                giVector3 const& view_normal, giVector3 const& view_up, giTriBlock const* plain_block,
                FaceCountTable const* tex_blocks, mrPieChart const* pie_chart);

    /// A copy, whatever the mode.
    mrThumbAtts(utCopy mode, mrThumbAtts const& other);
    ~mrThumbAtts();

    mrThumbAtts(mrThumbAtts const&) = delete;
    mrThumbAtts& operator=(mrThumbAtts const&) = delete;

    // Setters. Each stores its value whatever it reports.

    /// @report "Args" when @p width <= 0, then "State" when invalid
    void width(int width);
    /// @report "Args" when @p height <= 0, then "State" when invalid
    void height(int height);
    /// @report "State" when invalid
    void surface_colour(gsRGB const& colour);
    /// @report "Args" when @p normal is unset, then "State" when invalid
    void geom_view_normal_vector(giVector3 const& normal);
    /// @report "Args" when @p up is unset, then "State" when invalid
    void geom_view_up_vector(giVector3 const& up);

    // Getters. Each but background_colour() and pie_chart() reports "State" when invalid.

    int width() const;
    int height() const;
    gsRGB const& surf_colour() const;
    gsRGB const& background_colour() const;
    giVector3 const& geom_view_normal_vector() const;
    giVector3 const& geom_view_up_vector() const;
    /// May be null.
    giTriBlock const* plain_block() const;
    /// An empty table when none was given.
    FaceCountTable const& tex_blocks() const;
    /// A default-built chart when none was given.
    mrPieChart const& pie_chart();

    /// Takes over all that @p other holds, valid or not.
    void become(mrThumbAtts const& other);

    /// 1 when both are invalid, or both are valid and their sizes and colours are equal, their vectors
    /// parallel within 0.01 degrees, their plain blocks the same object, and their tables alike; pie charts
    /// are not compared. So attributes with a vector that is unset or without length equal no valid ones, nor
    /// themselves.
    ///
    /// The tables are walked in step, each in its own order, keys left aside; two lists are alike when they
    /// hold the same block objects in the same order. The last pair of lists visited decides alone; only
    /// where there is no pair, the numbers of entries do.
    int equal(mrThumbAtts const& other) const;
    int operator==(mrThumbAtts const& other) const;
    int operator!=(mrThumbAtts const& other) const;

    /// 1 while the width is 0.
    int invalid() const;

protected:
    /// Sets width and height to 0 and leaves the rest.
    void init_dg();
    int invalid_dg() const;
    void become_dg(mrThumbAtts const& other);
    int equal_dg(mrThumbAtts const& other) const;

private:
    int m_width = 0;
    int m_height = 0;
    gsRGB m_surface_colour;
    gsRGB m_background_colour;
    giVector3 m_view_normal;
    giVector3 m_view_up;
    giTriBlock const* m_plain_block = nullptr;
    FaceCountTable const* m_tex_blocks = nullptr;
    mrPieChart const* m_pie_chart = nullptr;
    utCheckValid m_check{this};
};
