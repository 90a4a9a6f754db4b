#include "mrThumbnails.h"

#include "mrRecolouredImageCache.h"
#include "thumbnailTest.h"

#include "dgElements.h"
#include "dgRenderer.h"
#include "dgStructure.h"

#include <gmock/gmock.h>

#include <sstream>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string const source = "source/file/mrThumbnails.cpp: ";
giColour const red(255, 0, 0, 0), blue(0, 0, 255, 0), orange(200, 100, 50, 0);

/// Writes down each call, and what is drawn with which values; its pictures are empty.
struct RecordingRenderer final : dgRenderer
{
    struct Drawn
    {
        dgProjection projection;
        dgDrawState state;
        giTriBlock const* block;
    };

    int select_read_buffer() const override { return 7; }
    void select_read_buffer(int buffer) override { log("read buffer", buffer); }
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
    dgDuctImage* read_image(dgImageType type, char const* name, int x, int y, int width, int height,
                            dgSetAlpha set, short alpha) override
    {
        log("read", type, name, x, y, width, height, set, alpha);
        return new dgDuctImage(name, width, height);
    }
    void end_read_image() override { log("end"); }

    template <class... Values>
    void log(char const* call, Values const&... values)
    {
        std::ostringstream text;
        text << call;
        ((text << ' ' << values), ...);
        calls.push_back(text.str());
    }

    std::vector<std::string> calls;
    std::vector<Drawn> drawn;
};

class mrThumbnailsTest : public ThumbnailTest
{
protected:
    mrThumbnailsTest()
    {
        renderer->reference();
        image->reference();
    }

    ~mrThumbnailsTest() override
    {
        EXPECT_EQ(renderer->references(), 1);
        renderer->unreference();
        image->unreference();
    }

    /// What is drawn of a material.
    std::vector<RecordingRenderer::Drawn> const& draw(mrFileMat const& material)
    {
        renderer->drawn.clear();
        take(on(renderer).from_material(material));
        return renderer->drawn;
    }

    /// The kinds of elements that a facet becomes, as their classes are named in C++ object files.
    static std::string kinds(mrFMFacet const& facet, mrFileMat const& material, giTriBlock const& block)
    {
        auto* const structure = new dgClientStructure;
        mrThumbnails::apply_facet_to_block(facet, material.images(), block, *structure);
        std::string found;
        for (std::size_t i = 0; i < structure->size(); ++i) {
            dgElement const& element = structure->element(i);
            found += typeid(element).name();
        }
        structure->unreference();
        return found;
    }

    RecordingRenderer* renderer = new RecordingRenderer;
    dgDuctImage* image = new dgDuctImage("wood", 2, 2);
};

} // namespace

TEST_F(mrThumbnailsTest, AppendsTheElementsOfAFacetInOrder)
{
    std::string const surface = "13dgDrawQuality12dgSurfColour22dgReflectionAttributes15dgShadingMethod"
                                "17dgReflectionModel14dgBackFaceFlag";
    std::string const texture = "13dgTextureFlag9dgTexture19dgTextureCoordGenUV";
    Material const material({new_facet(orange), new_facet(orange, {layer("wood")})}, image);
    mrFMFacet const& textured = **std::next(material.facets().begin());
    EXPECT_EQ(kinds(**material.facets().begin(), material, square), surface + "15dgTriangleBlock");
    EXPECT_EQ(kinds(textured, material, square), surface + texture + "15dgTriangleBlock");
    EXPECT_EQ(kinds(textured, Material({}), plain), surface + texture + "15dgTriangleBlock");
    EXPECT_THAT(reports(), ElementsAre(source + "No such images: wood", source + "No tus: wood"));
}

TEST_F(mrThumbnailsTest, GoesThroughTheRendererStepByStep)
{
    draw(Material({new_facet(orange)}));
    take(on(renderer).from_meshes(list_of<giTriBlockcoDListPtrcoPtrcoDList>({&square, &plain})));
    EXPECT_THAT(renderer->calls,
                ElementsAre("read buffer 1", "buffer 1", "erase 0 0 128 96 51 102 153 1", "draw", "begin",
                            "read 0 thumb 0 0 128 96 0 255", "end", // and the meshes
                            "read buffer 1", "buffer 1", "erase 0 0 129 97 51 102 153 1", "draw", "draw",
                            "begin", "read 0 thumb 0 0 128 96 0 255", "end", "read buffer 7"));
    giTriBlock const* const blocks[] = {&plain, &square, &plain};
    for (std::size_t i = 0; i < 3; ++i) {
        RecordingRenderer::Drawn const& drawn = renderer->drawn.at(i);
        EXPECT_EQ(drawn.block, blocks[i]);
        EXPECT_EQ(drawn.projection.normal.y, i == 0 ? 0.0 : 1.0);
        EXPECT_EQ(drawn.state.surface, gsColour(i == 0 ? gsRGB(200, 100, 50) : gsRGB(180, 181, 182)));
        dgReflection const& r = drawn.state.reflection;
        EXPECT_THAT((std::vector{r.ambient, r.diffuse, r.transmission, r.specular, r.specular_exponent}),
                    ElementsAre(0.1, i == 0 ? 0.5 : 0.8, 0.0, 0.5, 100.0));
    }
}

TEST_F(mrThumbnailsTest, ChoosesBlocksByTheNumberOfFacets)
{
    auto const of_one = [&] { return draw(Material({new_facet(orange, {layer("wood")})}, image)).at(0); };
    RecordingRenderer::Drawn const textured = of_one();
    EXPECT_EQ(textured.block, &square);
    EXPECT_TRUE(textured.state.texturing);
    EXPECT_EQ(textured.state.texture_range, giBox2({0, 0}, {1, 1}));
    table[1]->append(&square);
    EXPECT_EQ(of_one().block, *pie_chart.blocks(1).begin());
    table[1] = nullptr;
    EXPECT_EQ(of_one().block, *pie_chart.blocks(1).begin());

    auto const& three = draw(Material({new_facet(red), new_facet(orange), new_facet(blue)}));
    EXPECT_EQ(three.at(0).block, *pie_chart.blocks(3).begin());
    EXPECT_EQ(three.at(2).block, *std::next(pie_chart.blocks(3).begin(), 2));
}

TEST_F(mrThumbnailsTest, LaterFacetsStartFromWhatEarlierOnesTinted)
{
    Material const material({new_facet(red, {layer("wood")}),
                             new_facet(red, {layer("wood", &orange), layer("wood", &red)}), new_facet(red),
                             new_facet(red, {layer("wood", &blue)}), new_facet(red, {layer("wood")})},
                            image);
    std::vector<dgDuctImage*> drawn;
    for (auto const& each : draw(material))
        drawn.push_back(each.state.texture.image);
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    dgDuctImage* const twice = cache.recoloured_image(cache.recoloured_image(image, orange), red);
    dgDuctImage* const thrice = cache.recoloured_image(twice, blue);
    EXPECT_THAT(drawn, ElementsAre(image, twice, nullptr, thrice, thrice));
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
    auto const& without_middle = draw(Material({new_facet(red), nullptr, new_facet(blue)}));
    ASSERT_EQ(without_middle.size(), 2u);
    EXPECT_EQ(without_middle[1].block, *std::next(pie_chart.blocks(3).begin(), 2));
    EXPECT_THAT(draw(Material({nullptr})), IsEmpty());
    plain_block = nullptr;
    EXPECT_THAT(draw(Material({new_facet(red)})), IsEmpty());

    mrThumbnails nowhere = on(nullptr);
    EXPECT_THAT(reports(), ElementsAre(source + "Args"));
    EXPECT_EQ(nowhere.from_material(Material({new_facet(red), new_facet(blue)})), nullptr);
    EXPECT_EQ(nowhere.from_mesh(square), nullptr);
    take(nowhere.from_colour(gsRGB(1, 2, 3)));
    EXPECT_EQ(pixel(63, -47), gsRGB(1, 2, 3));
}

TEST_F(mrThumbnailsTest, ReadsMaterialImageAndMeshFiles)
{
    TestFolder const folder;
    auto const path = [&](char const* name) { return utString(folder.path(name)); };
    ASSERT_TRUE(Material({new_facet(orange, {layer("wood")})}, image).write(path("a.multimat")));
    write_bytes(folder.path("cut.multimat"), read_bytes(folder.path("a.multimat")).substr(0, 300));
    for (char const* name : {"a.PPM", "broken.png", "a.xyz", "ppm"})
        write_bytes(folder.path(name), "P6 2 1 255\nabcxyz");
    write_bytes(folder.path("a.stl"), "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                                      "vertex 0 1 0\nendloop\nendfacet\nendsolid a\n");

    take(on(renderer).from_material_file(path("a.multimat")));
    take(on(renderer).from_dmt_file(path("a.stl")));
    EXPECT_EQ(renderer->drawn.size(), 2u);
    take(on(renderer).from_image_file(path("a.PPM")));
    EXPECT_EQ(pixel(-1, 1), gsRGB('a', 'b', 'c'));
    EXPECT_EQ(pixel(0, 1), gsRGB('x', 'y', 'z'));
    EXPECT_EQ(pixel(1, 1), background);

    for (char const* name : {"missing.multimat", "cut.multimat"})
        EXPECT_EQ(on(renderer).from_material_file(path(name)), nullptr) << name;
    for (char const* name : {"missing.png", "broken.png", "a.xyz", "ppm"})
        EXPECT_EQ(on(renderer).from_image_file(path(name)), nullptr) << name;
    for (char const* name : {"missing.stl", "broken.png"})
        EXPECT_EQ(on(renderer).from_dmt_file(path(name)), nullptr) << name;
}
