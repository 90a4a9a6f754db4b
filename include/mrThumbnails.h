// Small pictures of materials, meshes, images, files and colours.
#pragma once

#include "dgCounted.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "mrThumbAtts.h"
#include "utCheckValid.h"

class dgRenderer;
class dgStructure;
class mrFileMat;

/// Makes thumbnails through the application's renderer.
///
/// Every thumbnail is a new image named "thumb" of the attributes' width and height, without references: the
/// caller's. It is empty where they are more pixels than a dgDuctImage holds. Nothing is kept between calls but
/// the slices of the attributes' pie chart, and tinted images, which stay in mrRecolouredImageCache. Attributes that
/// are invalid report "State" each time they are asked. Without enough memory there is none: each function gives null,
/// also when the renderer throws std::bad_alloc. For one thread at a time.
class MR_API mrThumbnails
{
public:
    /// @param renderer  referenced for this object's life; null makes whatever needs one give null
    /// @param atts      copied; the geometry they point at stays the caller's
    /// @report "Args" when @p renderer is null
    mrThumbnails(dgRenderer* renderer, mrThumbAtts const& atts);
    ~mrThumbnails();

    mrThumbnails(mrThumbnails const&) = delete;
    mrThumbnails& operator=(mrThumbnails const&) = delete;

    dgRenderer* renderer() const;
    mrThumbAtts const& atts() const;

    /// Draws each facet in its diffuse colour, with the image of its first texture layer.
    ///
    /// One facet without layers is drawn on the attributes' plain block; n facets else on the n blocks of the
    /// face-count table, or on the slices of the pie chart where the table has no list of exactly n. Layers
    /// that ask for it have their image tinted first, in a copy of the image table that all facets share: a
    /// later facet that names the same image starts from the tinted one. A null facet is passed over, and its
    /// block with it.
    ///
    /// Drawing takes one copy of the image for each such layer, kept for the process's life; see
    /// mrRecolouredImageCache for what each takes of memory and time. So materials from strangers are safe to read,
    /// but are drawn in a process of their own.
    ///
    /// Seen by the view's default camera. The renderer is left with read buffer 1.
    /// @return as the renderer reads it back, which may be null; without facets, the background
    /// @report "Invalid image" when a layer to tint has no image, followed by what mrRecolouredImageCache
    ///         reports of a null one
    /// @report what apply_facet_to_block() reports; without facets, what the list reports of its first element, then
    ///         the table of key 0 and the pie chart of 0 blocks
    dgDuctImage* from_material(mrFileMat const& material);

    /// Reads a material file, which is safe for untrusted input, and draws as from_material() does, which takes
    /// a process of its own for files from strangers.
    /// @return null when the file's status is not mrFileMatReadOK
    dgDuctImage* from_material_file(utString const& path);

    /// Draws meshes in the attributes' surface colour, seen as their two vectors say, in a viewport one pixel
    /// wider and higher than the thumbnail. The renderer's read buffer is what it was afterwards.
    /// @param meshes  borrowed; null ones are left out
    /// @return as the renderer reads it back, which may be null
    dgDuctImage* from_meshes(giTriBlockcoDListPtrcoPtrcoDList const& meshes);

    /// from_meshes() of one.
    dgDuctImage* from_mesh(giTriBlock const& mesh);

    /// from_meshes() of a mesh file's; only as safe as gx_read_dmt_file().
    /// @return null when the file cannot be read
    dgDuctImage* from_dmt_file(utString const& path);

    /// The image scaled down to fit, as gsImageUtils::stretch_rectangle places it, on the attributes'
    /// background. Needs no renderer.
    /// @return null only without enough memory
    dgDuctImage* from_image(dgDuctImage const& image);

    /// from_image() of an image file. What a file from a stranger can do depends on its format; see
    /// gxImageFileUtils::read_image_file().
    /// @return null when the path's extension names no image format, or the file does not hold an image
    dgDuctImage* from_image_file(utString const& path);

    /// A thumbnail filled with the colour. Needs no renderer.
    /// @return null only without enough memory
    dgDuctImage* from_colour(gsRGB const& colour);

    /// Appends what draws a facet on a block. May throw std::bad_alloc, with a part of it appended.
    /// @param images     where the first layer's image is looked up by name; the scene takes a reference on
    ///                   the image it shows and lets it go: each must be referenced by its owner
    /// @param block      borrowed; outlives the structure's use
    /// @param structure  owns the elements
    /// @report "No such images: NAME" when the first layer's image is not in the table; the facet is then
    ///         drawn without a texture
    /// @report "No tus: NAME", with the image's name, when there is a layer and the block has no texture
    ///         coordinates
    /// @report what an invalid facet or layer does when it is asked for its values
    static void apply_facet_to_block(mrFMFacet const& facet,
                                     utStringdgDuctImagecoTablePtrcoPtrcoTable const& images,
                                     giTriBlock const& block, dgStructure& structure);

private:
    dgDuctImage* draw_material(mrFileMat const& material);
    giTriBlockcoDListPtrcoPtrcoDList const& blocks_for(int facets);

    dgCounted<dgRenderer> m_renderer;
    mrThumbAtts m_atts;
    utCheckValid m_check{this};
};
