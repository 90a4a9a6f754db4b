#include "mrThumbnails.h"

#include "materials.h"
#include "mrPieChart.h"
#include "mrRecolouredImageCache.h"
#include "mrTest.h"

#include "dgElements.h"
#include "dgRenderer.h"
#include "dgStructure.h"

#include <gmock/gmock.h>

#include <sstream>
#include <typeindex>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int width = 64;
constexpr int height = 48;

std::string const source = "source/file/mrThumbnails.cpp: ";

gsRGB const surface(180, 181, 182);
gsRGB const background(51, 102, 153);
giColour const red(255, 0, 0, 0);
giColour const blue(0, 0, 255, 0);
giColour const orange(200, 100, 50, 0);

/// Writes down each call, and what is drawn with which values; its pictures are of one colour.
class RecordingRenderer final : public dgRenderer
{
public:
    struct Drawn
    {
        dgProjection projection;
        dgDrawState state;
        giTriBlock const* block;
    };

    int select_read_buffer() const override { return read_buffer; }
    void select_read_buffer(int buffer) override
    {
        read_buffer = buffer;
        log("read buffer", buffer);
    }
    void select_buffer(dgDoubleBuffer buffer) override { log("buffer", buffer); }
    void erase(giBox2 const& box, gsColour const& colour, dgEraseZbuffer depth) override
    {
        gsRGB rgb;
        colour.rgb(rgb);
        log("erase", box.low().x, box.low().y, box.high().x, box.high().y, rgb.red(), rgb.green(), rgb.blue(),
            depth);
    }
    void draw(dgProjection const& projection, dgDrawState const& state, giTriBlock const& block) override
    {
        log("draw");
        drawn.push_back({projection, state, &block});
    }
    void begin_read_image() override { log("begin"); }
    dgDuctImage* read_image(dgImageType type, char const* name, int x, int y, int w, int h, dgSetAlpha set,
                            short alpha) override
    {
        log("read", type, name, x, y, w, h, set, alpha);
        return new dgDuctImage(name, w, h);
    }
    void end_read_image() override { log("end"); }

    int read_buffer = 7;
    std::vector<std::string> calls;
    std::vector<Drawn> drawn;

private:
    template <class... Values>
    void log(char const* call, Values const&... values)
    {
        std::ostringstream text;
        text << call;
        ((text << ' ' << values), ...);
        calls.push_back(text.str());
    }
};

/// A thumbnail maker on a recording renderer, with a square as plain block, lists of blocks for facet counts,
/// and a pie chart. Its pictures are given back at its end.
class mrThumbnailsTest : public testing::Test
{
protected:
    mrThumbnailsTest() : renderer(new RecordingRenderer)
    {
        renderer->reference();
        fill_square(square);
        fill_square(textured_square, true);
        table[1] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        table[1]->append(&textured_square);
        table[3] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        table[3]->append(&square);
        table[3]->append(&square);
        image->reference();
        image->set_all(gsColour(gsRGB(100, 200, 150)));
    }

    ~mrThumbnailsTest() override
    {
        for (dgDuctImage* picture : pictures)
            picture->unreference();
        EXPECT_EQ(renderer->references(), 1);
        renderer->unreference();
        image->unreference();
    }

    mrThumbAtts atts()
    {
        return {width, height, surface, background, {1, 2, 2}, {0, 0, 1}, plain_block, &table, &pie_chart};
    }

    /// Draws the material and returns what was drawn.
    std::vector<RecordingRenderer::Drawn> const& draw(mrFileMat const& material)
    {
        renderer->drawn.clear();
        take(mrThumbnails(renderer, atts()).from_material(material));
        return renderer->drawn;
    }

    /// Takes over a picture, which must be there.
    dgDuctImage const& take(dgDuctImage* picture)
    {
        pictures.push_back(picture ? picture : new dgDuctImage("missing", 1, 1));
        EXPECT_STREQ(pictures.back()->name(), "thumb");
        EXPECT_EQ(pictures.back()->width(), width);
        EXPECT_EQ(pictures.back()->height(), height);
        return *pictures.back();
    }

    RecordingRenderer* renderer;
    giTriBlock square, textured_square;
    giTriBlock const* plain_block = &square;
    mrThumbAtts::FaceCountTable table{mrInitialSize, mrFillLimit};
    mrPieChart pie_chart;
    dgDuctImage* const image = new dgDuctImage("wood", 2, 2);
    std::vector<dgDuctImage*> pictures;
};

using Kinds = std::vector<std::type_index>;

/// The elements that a facet becomes.
Kinds kinds(mrFMFacet const& facet, mrFileMat const& material, giTriBlock const& block)
{
    auto* const structure = new dgClientStructure;
    mrThumbnails::apply_facet_to_block(facet, material.images(), block, *structure);
    Kinds found;
    for (std::size_t i = 0; i < structure->size(); ++i) {
        dgElement const& element = structure->element(i);
        found.emplace_back(typeid(element));
    }
    structure->unreference();
    return found;
}

gsRGB colour_of(dgDuctImage const& picture, int x, int y)
{
    short c[4];
    picture.get_pixel(x, y, c);
    EXPECT_EQ(c[3], 255);
    return {c[0], c[1], c[2]};
}

} // namespace

TEST_F(mrThumbnailsTest, AppendsTheElementsOfAFacetInOrder)
{
    Material const material({new_facet(orange), new_facet(orange, {layer("wood")})}, {image});
    mrFMFacet const& plain = **material.facets().begin();
    mrFMFacet const& textured = **std::next(material.facets().begin());

    EXPECT_EQ(kinds(plain, material, square),
              (Kinds{typeid(dgDrawQuality), typeid(dgSurfColour), typeid(dgReflectionAttributes),
                     typeid(dgShadingMethod), typeid(dgReflectionModel), typeid(dgBackFaceFlag),
                     typeid(dgTriangleBlock)}));
    Kinds const with_texture{typeid(dgDrawQuality),          typeid(dgSurfColour),
                             typeid(dgReflectionAttributes), typeid(dgShadingMethod),
                             typeid(dgReflectionModel),      typeid(dgBackFaceFlag),
                             typeid(dgTextureFlag),          typeid(dgTexture),
                             typeid(dgTextureCoordGenUV),    typeid(dgTriangleBlock)};
    EXPECT_EQ(kinds(textured, material, textured_square), with_texture);

    EXPECT_EQ(kinds(textured, Material({}), square), with_texture);
    EXPECT_THAT(reports(), ElementsAre(source + "No such images: wood", source + "No tus: wood"));
}

TEST_F(mrThumbnailsTest, APlainMaterialGoesThroughTheRendererStepByStep)
{
    auto const& drawn = draw(Material({new_facet(orange)}));
    EXPECT_THAT(renderer->calls, ElementsAre("read buffer 1", "buffer 1", "erase 0 0 64 48 51 102 153 1",
                                             "draw", "begin", "read 0 thumb 0 0 64 48 0 255", "end"));
    ASSERT_EQ(drawn.size(), 1u);
    EXPECT_EQ(drawn[0].block, &square);
    EXPECT_EQ(drawn[0].projection.normal.z, 1.0);

    dgDrawState const& state = drawn[0].state;
    EXPECT_EQ(state.rendering, 0);
    EXPECT_EQ(state.surface, gsColour(gsRGB(200, 100, 50)));
    dgReflection const& reflection = state.reflection;
    EXPECT_THAT((std::vector{reflection.ambient, reflection.diffuse, reflection.transmission,
                             reflection.specular, reflection.specular_exponent}),
                ElementsAre(0.1, 0.5, 0.0, 0.5, 100.0));
    EXPECT_EQ(reflection.specular_colour, gsColour(1, 1, 1));
    EXPECT_EQ(reflection.emission, gsColour(0, 0, 0));
    EXPECT_EQ(state.shading, 1);
    EXPECT_EQ(state.reflection_model, 1);
    EXPECT_FALSE(state.cull_back_faces);
    EXPECT_FALSE(state.texturing);
}

TEST_F(mrThumbnailsTest, MeshesGoThroughTheRendererStepByStep)
{
    giTriBlockcoDListPtrcoPtrcoDList meshes;
    meshes.append(&textured_square);
    meshes.append(nullptr);
    meshes.append(&square);
    take(mrThumbnails(renderer, atts()).from_meshes(meshes));
    EXPECT_THAT(renderer->calls,
                ElementsAre("read buffer 1", "buffer 1", "erase 0 0 65 49 51 102 153 1", "draw", "draw",
                            "begin", "read 0 thumb 0 0 64 48 0 255", "end", "read buffer 7"));
    ASSERT_EQ(renderer->drawn.size(), 2u);
    EXPECT_EQ(renderer->drawn[0].block, &textured_square);
    EXPECT_EQ(renderer->drawn[1].block, &square);
    EXPECT_NEAR(renderer->drawn[0].projection.normal.x, 1.0 / 3.0, 1e-12);
    EXPECT_GT(renderer->drawn[0].projection.up.z, 0.0);
    EXPECT_EQ(renderer->drawn[0].state.surface, gsColour(surface));
    EXPECT_EQ(renderer->drawn[0].state.reflection.diffuse, 0.8);
    EXPECT_EQ(renderer->drawn[0].state.reflection.ambient, 0.1);
    EXPECT_FALSE(renderer->drawn[0].state.texturing);

    take(mrThumbnails(renderer, atts()).from_mesh(square));
    ASSERT_EQ(renderer->drawn.size(), 3u);
    EXPECT_EQ(renderer->drawn[2].block, &square);
}

TEST_F(mrThumbnailsTest, ChoosesBlocksByTheNumberOfFacets)
{
    auto const& one = draw(Material({new_facet(orange, {layer("wood")})}, {image}));
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one[0].block, &textured_square);
    EXPECT_TRUE(one[0].state.texturing);
    EXPECT_EQ(one[0].state.texture.image, image);
    EXPECT_EQ(one[0].state.texture.format, 0);
    EXPECT_EQ(one[0].state.texture.filter, 1);
    EXPECT_EQ(one[0].state.texture.wrap, 1);
    EXPECT_EQ(one[0].state.texture.composition, 0);
    EXPECT_EQ(one[0].state.texture_range, giBox2({0, 0}, {1, 1}));

    table[1]->append(&square);
    EXPECT_EQ(draw(Material({new_facet(orange, {layer("wood")})}, {image}))[0].block,
              *pie_chart.blocks(1).begin());
    table[1] = nullptr;
    EXPECT_EQ(draw(Material({new_facet(orange, {layer("wood")})}, {image}))[0].block,
              *pie_chart.blocks(1).begin());

    auto const& three = draw(Material({new_facet(red), new_facet(orange), new_facet(blue)}));
    ASSERT_EQ(three.size(), 3u);
    auto slice = pie_chart.blocks(3).begin();
    for (auto const& each : three)
        EXPECT_EQ(each.block, *slice++);
    EXPECT_EQ(three[2].state.surface, gsColour(0, 0, 1));
}

TEST_F(mrThumbnailsTest, LaterFacetsStartFromWhatEarlierOnesTinted)
{
    auto* const stone = new dgDuctImage("stone", 1, 1);
    Material const material({new_facet(orange, {layer("wood")}),
                             new_facet(orange, {layer("wood", &orange), layer("stone", &red)}),
                             new_facet(orange, {layer("wood", &blue)}), new_facet(orange, {layer("wood")}),
                             new_facet(orange), new_facet(orange, {layer("stone")})},
                            {image, stone});
    auto const& drawn = draw(material);
    ASSERT_EQ(drawn.size(), 6u);
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    dgDuctImage* const once = cache.recoloured_image(image, orange);
    dgDuctImage* const twice = cache.recoloured_image(once, blue);
    EXPECT_EQ(drawn[0].state.texture.image, image);
    EXPECT_EQ(drawn[1].state.texture.image, once);
    EXPECT_EQ(drawn[2].state.texture.image, twice);
    EXPECT_EQ(drawn[3].state.texture.image, twice);
    EXPECT_FALSE(drawn[4].state.texturing);
    EXPECT_EQ(drawn[5].state.texture.image, cache.recoloured_image(stone, red));
    EXPECT_EQ(cache.clear(), 3);
    EXPECT_EQ(material.images().read("wood"), image);
}

TEST_F(mrThumbnailsTest, DrawsAsFarAsItGoes)
{
    EXPECT_THAT(draw(Material({})), IsEmpty());
    EXPECT_THAT(reports(),
                ElementsAre("platform/co/coTable.cpp: argument out of range | CO_TABLE::read | null key",
                            "source/file/mrPieChart.cpp: Args"));

    EXPECT_EQ(draw(Material({new_facet(red, {layer("lost", &blue)})})).size(), 1u);
    std::string const tinted = "source/image/mrRecolouredImage.cpp: ";
    EXPECT_THAT(reports(),
                ElementsAre(source + "Invalid image", "source/image/mrRecolouredImageCache.cpp: Args",
                            tinted + "Args", tinted + "State", tinted + "Invalid resultant imsge",
                            source + "No such images: lost"));
    mrRecolouredImageCache::singleton().clear();

    plain_block = nullptr;
    EXPECT_THAT(draw(Material({new_facet(red)})), IsEmpty());
    *table[1]->begin() = nullptr;
    EXPECT_THAT(draw(Material({new_facet(red, {layer("wood")})}, {image})), IsEmpty());
    EXPECT_THAT(reports(), ElementsAre(source + "No tus: wood"));

    mrThumbnails without(nullptr, atts());
    EXPECT_THAT(reports(), ElementsAre(source + "Args"));
    EXPECT_EQ(without.from_material(Material({new_facet(red), new_facet(blue)})), nullptr);
    EXPECT_EQ(without.from_mesh(square), nullptr);
    EXPECT_EQ(colour_of(take(without.from_colour(gsRGB(1, 2, 3))), 63, 47), gsRGB(1, 2, 3));
}

TEST_F(mrThumbnailsTest, ImagesAreCentredOnTheBackground)
{
    auto* const tall = new dgDuctImage("tall", 48, 96);
    tall->set_all(gsColour(gsRGB(9, 8, 7)));
    dgDuctImage const& picture = take(mrThumbnails(renderer, atts()).from_image(*tall));
    tall->unreference();
    EXPECT_EQ(colour_of(picture, 19, 20), background);
    EXPECT_EQ(colour_of(picture, 20, 0), gsRGB(9, 8, 7));
    EXPECT_EQ(colour_of(picture, 43, 47), gsRGB(9, 8, 7));
    EXPECT_EQ(colour_of(picture, 44, 20), background);
    EXPECT_THAT(renderer->calls, IsEmpty());
}

TEST_F(mrThumbnailsTest, ReadsMaterialImageAndMeshFiles)
{
    TestFolder const folder;
    mrThumbnails thumbnails(renderer, atts());

    ASSERT_TRUE(
        Material({new_facet(orange, {layer("wood")})}, {image}).write(folder.path("a.multimat").c_str()));
    take(thumbnails.from_material_file(folder.path("a.multimat").c_str()));
    ASSERT_EQ(renderer->drawn.size(), 1u);
    EXPECT_TRUE(renderer->drawn[0].state.texturing);
    write_bytes(folder.path("cut.multimat"), read_bytes(folder.path("a.multimat")).substr(0, 300));

    write_bytes(folder.path("a.PPM"), "P6 2 1 255\nabcxyz");
    EXPECT_EQ(colour_of(take(thumbnails.from_image_file(folder.path("a.PPM").c_str())), 31, 23),
              gsRGB('a', 'b', 'c'));
    write_bytes(folder.path("broken.png"), "P6 2 1 255\nabcxyz");
    write_bytes(folder.path("a.xyz"), "P6 2 1 255\nabcxyz");
    write_bytes(folder.path("ppm"), "P6 2 1 255\nabcxyz");

    write_bytes(folder.path("a.stl"), "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                                      "vertex 0 1 0\nendloop\nendfacet\nendsolid a\n");
    renderer->drawn.clear();
    take(thumbnails.from_dmt_file(folder.path("a.stl").c_str()));
    EXPECT_EQ(renderer->drawn.size(), 1u);

    for (char const* name : {"missing.multimat", "cut.multimat"})
        EXPECT_EQ(thumbnails.from_material_file(folder.path(name).c_str()), nullptr) << name;
    for (char const* name : {"missing.png", "broken.png", "a.xyz", "ppm"})
        EXPECT_EQ(thumbnails.from_image_file(folder.path(name).c_str()), nullptr) << name;
    for (char const* name : {"missing.stl", "broken.png"})
        EXPECT_EQ(thumbnails.from_dmt_file(folder.path(name).c_str()), nullptr) << name;
}
