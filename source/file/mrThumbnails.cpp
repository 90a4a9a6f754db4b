#include "mrThumbnails.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrGuard.h"
#include "mrPieChart.h"
#include "mrRecolouredImageCache.h"

#include "dgElements.h"
#include "dgRenderer.h"
#include "dgStructure.h"
#include "dgView.h"
#include "gr_stretch_blt.h"
#include "gsImageUtils.h"
#include "gx_read_dmt_file.h"
#include "gxImageFileUtils.h"
#include "utAssert.h"

namespace {

using ImageTable = utStringdgDuctImagecoTablePtrcoPtrcoTable;
using BlockList = giTriBlockcoDListPtrcoPtrcoDList;

constexpr char const* thumb_name = "thumb";

/// Does what returns an image; null without enough memory.
template <class Work>
dgDuctImage* guard_image(Work const& work)
{
    return mr_guard(static_cast<dgDuctImage*>(nullptr), work);
}

/// Where the pictures of materials and of meshes differ.
struct Settings
{
    double diffuse;           ///< of the five reflection numbers, the one that differs
    int view_port_margin;     ///< pixels by which the viewport exceeds the picture to the right and above
    bool attributes_camera;   ///< seen as the attributes say, not by the view's default camera
    bool restore_read_buffer; ///< select the read buffer again that was selected before
};

constexpr Settings material_settings{0.5, 0, false, false};
constexpr Settings mesh_settings{0.8, 1, true, true};

void append_surface(gsRGB const& colour, Settings const& settings, dgStructure& structure)
{
    auto* const quality = new dgDrawQuality;
    quality->triangle_block_rendering(dgTriangleBlockFilled);
    structure.append(quality);
    structure.append(new dgSurfColour(gsColour(colour)));
    structure.append(new dgReflectionAttributes(0.1, settings.diffuse, 0.0, 0.5, 100.0,
                                                gsColour(1.0, 1.0, 1.0), gsColour(0.0, 0.0, 0.0)));
    structure.append(new dgShadingMethod(dgShadingSmooth));
    structure.append(new dgReflectionModel(dgReflectionBlinnPhong));
    structure.append(new dgBackFaceFlag(0));
}

void append_texture(mrFMTexture const& layer, ImageTable const& images, giTriBlock const* block,
                    dgStructure& structure)
{
    utString const& name = layer.image_name();
    dgDuctImage* const image = images.read(name);
    UT_REQUIRE(image, ut_build_assert_varargs("No such images: %s", name.c_str()));
    structure.append(new dgTextureFlag(1, 0));
    structure.append(new dgTexture(image, dgTextureImageAsIs, dgTextureFilterLinear, dgTextureWrapRepeat,
                                   dgTextureModulate, 0));

    giBoxArrPoint2 const* const tus = block ? gsTriUtils::get_tus(*block) : nullptr;
    UT_REQUIRE(tus, ut_build_assert_varargs("No tus: %s", name.c_str()));
    if (tus)
        tus->compute_box();
    structure.append(new dgTextureCoordGenUV(tus ? tus->box() : giBox2(), nullptr, 0));
}

void append_block(giTriBlock const* block, dgStructure& structure)
{
    if (block)
        structure.append(new dgTriangleBlock(*block, 0));
}

void append_facet(mrFMFacet const& facet, ImageTable const& images, giTriBlock const* block,
                  dgStructure& structure)
{
    giColour const& colour = facet.plain_mat().diffuse_colour();
    append_surface(gsRGB(colour.red(), colour.green(), colour.blue()), material_settings, structure);
    mrFMTexturecoDList const& layers = facet.textures();
    if (!layers.empty())
        append_texture(*layers.begin(), images, block, structure);
    append_block(block, structure);
}

/// Replaces the images that the layers ask to have tinted, one layer after the other.
void tint_images(mrFMTexturecoDList const& layers, ImageTable& images)
{
    for (mrFMTexture const& layer : layers) {
        if (!layer.recoloured())
            continue;
        dgDuctImage* const image = images.read(layer.image_name());
        UT_REQUIRE(image, "Invalid image");
        dgDuctImage* const tinted =
            mrRecolouredImageCache::singleton().recoloured_image(image, layer.recolour());
        images[layer.image_name()] = image ? &mr_need(tinted) : nullptr;
    }
}

/// The renderer while it is drawn with, also when it throws for want of memory.
class Session
{
public:
    Session(dgRenderer& renderer, bool restore)
        : m_renderer(renderer), m_read_buffer(renderer.select_read_buffer()), m_restore(restore)
    {
        m_renderer.select_read_buffer(dgBackBuffer);
        m_renderer.select_buffer(dgBackBuffer);
    }
    ~Session()
    {
        mr_guard(0, [&] {
            if (m_reading)
                m_renderer.end_read_image();
            if (m_restore)
                m_renderer.select_read_buffer(m_read_buffer);
            return 1;
        });
    }
    Session(Session const&) = delete;
    Session& operator=(Session const&) = delete;

    dgDuctImage* read(int width, int height)
    {
        m_renderer.begin_read_image();
        m_reading = true;
        return m_renderer.read_image(dgImageRGBA, thumb_name, 0, 0, width, height, dgSetAlphaEverywhere, 255);
    }

private:
    dgRenderer& m_renderer;
    int m_read_buffer;
    bool m_restore;
    bool m_reading = false;
};

dgDuctImage* draw_and_read(dgRenderer& renderer, dgView& view, mrThumbAtts const& atts, bool restore)
{
    Session session(renderer, restore);
    view.erase(dgEraseColourAndDepth);
    view.render_network(nullptr);
    // Not among the arguments, whose order of evaluation compilers choose.
    int const width = atts.width();
    int const height = atts.height();
    return session.read(width, height);
}

dgDuctImage* draw(dgRenderer* renderer, mrThumbAtts const& atts, dgStructure& structure,
                  Settings const& settings)
{
    auto const view = dg_hold(new dgView(renderer, nullptr));
    view->background_colour(gsColour(atts.background_colour()));
    double const margin = settings.view_port_margin;
    double const width = atts.width() + margin;
    double const height = atts.height() + margin;
    view->view_port_dc(giBox2({0.0, 0.0}, {width, height}));
    if (settings.attributes_camera)
        view->orientation({0.0, 0.0, 0.0}, atts.geom_view_normal_vector(), atts.geom_view_up_vector());
    view->root(&structure);
    view->view_bounding_box(structure.bounding_box(1), dgBoundingViewFit);

    return renderer ? draw_and_read(*renderer, *view, atts, settings.restore_read_buffer) : nullptr;
}

} // namespace

mrThumbnails::mrThumbnails(dgRenderer* renderer, mrThumbAtts const& atts)
    : m_renderer(dg_hold(renderer)), m_atts(utCopyDeep, atts)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(renderer, "Args");
}

mrThumbnails::~mrThumbnails()
{
    UT_CHECK_VALID(m_check);
}

dgRenderer* mrThumbnails::renderer() const
{
    UT_CHECK_VALID(m_check);
    return m_renderer.get();
}

mrThumbAtts const& mrThumbnails::atts() const
{
    UT_CHECK_VALID(m_check);
    return m_atts;
}

dgDuctImage* mrThumbnails::from_material(mrFileMat const& material)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] { return draw_material(material); });
}

dgDuctImage* mrThumbnails::draw_material(mrFileMat const& material)
{
    mrFMFacetcoDListPtrcoPtrcoDList const& facets = material.facets();
    ImageTable images = material.images();
    auto const structure = dg_hold(new dgClientStructure);

    mrFMFacet const* const first = facets[0];
    if (facets.size() == 1 && first && first->textures().empty()) {
        append_facet(*first, images, m_atts.plain_block(), *structure);
    } else {
        BlockList const& blocks = blocks_for(static_cast<int>(facets.size()));
        auto block = blocks.begin();
        for (mrFMFacet const* facet : facets) {
            giTriBlock const* const slice = *block++;
            if (!facet)
                continue;
            tint_images(facet->textures(), images);
            append_facet(*facet, images, slice, *structure);
        }
    }
    return draw(m_renderer.get(), m_atts, *structure, material_settings);
}

dgDuctImage* mrThumbnails::from_material_file(utString const& path)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] {
        mrFileMat material;
        return material.read(path) == mrFileMatReadOK ? from_material(material) : nullptr;
    });
}

dgDuctImage* mrThumbnails::from_meshes(BlockList const& meshes)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] {
        auto const structure = dg_hold(new dgClientStructure);
        append_surface(m_atts.surf_colour(), mesh_settings, *structure);
        for (giTriBlock const* mesh : meshes)
            append_block(mesh, *structure);
        return draw(m_renderer.get(), m_atts, *structure, mesh_settings);
    });
}

dgDuctImage* mrThumbnails::from_mesh(giTriBlock const& mesh)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] {
        BlockList meshes;
        // Lists hold pointers to blocks that may be changed; this one is only looked at.
        meshes.append(const_cast<giTriBlock*>(&mesh));
        return from_meshes(meshes);
    });
}

dgDuctImage* mrThumbnails::from_dmt_file(utString const& path)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] {
        gsOwnBlocks meshes;
        return gx_read_dmt_file(path, meshes.list) ? from_meshes(meshes.list) : nullptr;
    });
}

dgDuctImage* mrThumbnails::from_image(dgDuctImage const& image)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] {
        dgCounted<dgDuctImage> thumb(&mr_need(from_colour(m_atts.background_colour())));
        int const width = thumb->width();
        int const height = thumb->height();

        int x = 0;
        int y = 0;
        int drawn_width = 0;
        int drawn_height = 0;
        gsImageUtils::stretch_rectangle(image.width(), image.height(), width, height, x, y, drawn_width,
                                        drawn_height);
        gr_stretch_blt(*thumb, x, y, drawn_width, drawn_height, image, 0, 0, image.width(), image.height(),
                       grStretchBltAverage);
        return thumb.release();
    });
}

dgDuctImage* mrThumbnails::from_image_file(utString const& path)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] {
        char const* const extension = gxImageFileUtils::get_extension(path.c_str(), '.');
        gxImageFileFormat format{};
        bool const known = extension && gxImageFileUtils::file_format_from_extension(extension, format);
        dgCounted<dgDuctImage> const image(known ? gxImageFileUtils::read_image_file(path, format) : nullptr);
        return image ? from_image(*image) : nullptr;
    });
}

dgDuctImage* mrThumbnails::from_colour(gsRGB const& colour)
{
    UT_CHECK_VALID(m_check);
    return guard_image([&] {
        int const width = m_atts.width();
        int const height = m_atts.height();
        auto* const thumb = new dgDuctImage(thumb_name, width, height);
        thumb->set_all(gsColour(colour));
        return thumb;
    });
}

void mrThumbnails::apply_facet_to_block(mrFMFacet const& facet, ImageTable const& images,
                                        giTriBlock const& block, dgStructure& structure)
{
    append_facet(facet, images, &block, structure);
}

BlockList const& mrThumbnails::blocks_for(int facets)
{
    UT_CHECK_VALID(m_check);
    giTriBlockcoDListPtrcoTablePrgcoPrg const& given = m_atts.tex_blocks().read(facets);
    if (given && given->size() == static_cast<std::size_t>(facets))
        return *given;
    BlockList const& slices = m_atts.pie_chart().blocks(facets);
    if (slices.size() != static_cast<std::size_t>(facets))
        throw std::bad_alloc();
    return slices;
}
