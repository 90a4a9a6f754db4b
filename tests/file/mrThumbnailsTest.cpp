#include "mrThumbnails.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"
#include "mrPieChart.h"
#include "mrRecolouredImageCache.h"
#include "mrTest.h"

#include "dgRenderer.h"
#include "gsTriUtils.h"

#include <gmock/gmock.h>

#include <sstream>

using testing::ElementsAre;

namespace {

std::string const source = "source/file/mrThumbnails.cpp: ";
giColour const red(255, 0, 0, 0), blue(0, 0, 255, 0), orange(200, 100, 50, 0);

/// Writes down each call, and what is drawn with which values; its pictures are empty.
struct RecordingRenderer final : dgRenderer
{
    struct Drawn
    {
        dgDrawState state;
        giTriBlock const* block;
    };
    int select_read_buffer() const override { return 7; }
    void select_read_buffer(int buffer) override { calls << "read buffer " << buffer << "; "; }
    void select_buffer(dgDoubleBuffer buffer) override { calls << "buffer " << buffer << "; "; }
    void erase(giBox2 const& box, gsColour const& c, dgEraseZbuffer depth) override
    {
        calls << "erase " << box.low().x << ' ' << box.low().y << ' ' << box.high().x << ' ' << box.high().y
              << ' ' << c.red() << ' ' << c.green() << ' ' << c.blue() << ' ' << depth << "; ";
    }
    void draw(dgProjection const&, dgDrawState const& state, giTriBlock const& block) override
    {
        calls << "draw; ";
        drawn.push_back({state, &block});
    }
    void begin_read_image() override { calls << "begin; "; }
    dgDuctImage* read_image(dgImageType type, char const* name, int x, int y, int width, int height,
                            dgSetAlpha set, short alpha) override
    {
        calls << "read " << type << ' ' << name << ' ' << x << ' ' << y << ' ' << width << ' ' << height
              << ' ' << set << ' ' << alpha << "; ";
        return new dgDuctImage(name, width, height);
    }
    void end_read_image() override { calls << "end; "; }

    std::ostringstream calls;
    std::vector<Drawn> drawn;
};

template <class List, class T>
List list_of(std::initializer_list<T> elements)
{
    List list;
    for (T const& each : elements)
        list.append(each);
    return list;
}

/// A layer, tinted when a colour is given.
mrFMTexture layer(char const* image, giColour const* tint = nullptr)
{
    return {image, mrTexLayerColour, tint ? 1 : 0, tint ? *tint : giColour()};
}

mrFMFacet* new_facet(giColour const& colour, std::initializer_list<mrFMTexture> layers = {})
{
    mrMatPropcoSet const properties(mrInitialSize, mrFillLimit);
    return new mrFMFacet(new mrFMPlainMat("plain", properties, 0, colour, 0, 0, 0, 0, 1, utString()),
                         list_of<mrFMTexturecoDList>(layers));
}

/// Thumbnails of 128 by 96 pixels, of materials with an image "wood", with blocks for one facet alone.
class mrThumbnailsTest : public testing::Test
{
protected:
    mrThumbnailsTest()
    {
        renderer->reference();
        image->reference();
        images["wood"] = image;
        gsTriUtils::check_out_tus(square).append({0, 0});
        gsTriUtils::check_out_tus(square).append({1, 1});
        table[1] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        table[1]->append(&square);
    }

    ~mrThumbnailsTest() override
    {
        EXPECT_EQ(renderer->references(), 1);
        renderer->unreference();
        image->unreference();
        picture->unreference();
    }

    mrThumbnails on(dgRenderer* some_renderer)
    {
        return {some_renderer, mrThumbAtts(128, 96, gsRGB(180, 181, 182), gsRGB(51, 102, 153), {0, 1, 0},
                                           {0, 0, 1}, plain_block, &table, &pie_chart)};
    }

    /// Gives the last picture back and looks at another, which must be a thumbnail.
    void take(dgDuctImage* other)
    {
        picture->unreference();
        picture = other ? other : new dgDuctImage("none", 1, 1);
        EXPECT_STREQ(picture->name(), "thumb");
        EXPECT_EQ(picture->width(), 128);
        EXPECT_EQ(picture->height(), 96);
    }

    /// Takes a picture of a material of the facets, which become its own.
    /// @return what the recording renderer has drawn
    std::vector<RecordingRenderer::Drawn> const& draw(std::initializer_list<mrFMFacet*> facets)
    {
        renderer->drawn.clear();
        mrFileMat const material(mrMatPropcoSet(mrInitialSize, mrFillLimit),
                                 list_of<mrFMFacetcoDListPtrcoPtrcoDList>(facets), images);
        take(on(renderer).from_material(material));
        EXPECT_EQ(material.images().read("wood"), image); // whatever was tinted
        return renderer->drawn;
    }

    RecordingRenderer* renderer = new RecordingRenderer;
    dgDuctImage* image = new dgDuctImage("wood", 2, 2);
    utStringdgDuctImagecoTablePtrcoPtrcoTable images{mrInitialSize, mrFillLimit};
    giTriBlock plain, square;
    giTriBlock const* plain_block = &plain;
    mrThumbAtts::FaceCountTable table{mrInitialSize, mrFillLimit};
    mrPieChart pie_chart;
    dgDuctImage* picture = new dgDuctImage("thumb", 1, 1);
};

} // namespace

TEST_F(mrThumbnailsTest, GoesThroughTheRendererStepByStep)
{
    draw({new_facet(orange)});
    take(on(renderer).from_meshes(list_of<giTriBlockcoDListPtrcoPtrcoDList>({&square, &plain})));
    EXPECT_EQ(renderer->calls.str(),
              "read buffer 1; buffer 1; erase 0 0 128 96 0.2 0.4 0.6 1; draw; begin; "
              "read 0 thumb 0 0 128 96 0 255; end; " // and the meshes
              "read buffer 1; buffer 1; erase 0 0 129 97 0.2 0.4 0.6 1; draw; draw; begin; "
              "read 0 thumb 0 0 128 96 0 255; end; read buffer 7; ");
}

TEST_F(mrThumbnailsTest, ChoosesBlocksByTheNumberOfFacets)
{
    auto const of_one = [&] { return draw({new_facet(orange, {layer("wood"), layer("lost")})}).at(0); };
    RecordingRenderer::Drawn const textured = of_one();
    EXPECT_EQ(textured.block, &square);
    EXPECT_TRUE(textured.state.texturing);
    EXPECT_EQ(textured.state.texture.filter, dgTextureFilterLinear);
    EXPECT_EQ(textured.state.texture.wrap, dgTextureWrapRepeat);
    EXPECT_EQ(textured.state.texture_range, giBox2({0, 0}, {1, 1}));
    table[1]->append(&square);
    EXPECT_EQ(of_one().block, *pie_chart.blocks(1).begin());
    table[1]->clear();
    table[1]->append(&plain);
    EXPECT_EQ(of_one().block, &plain);
    EXPECT_THAT(reports(), ElementsAre(source + "No tus: wood"));

    auto const& two = draw({new_facet(red), new_facet(blue)});
    EXPECT_EQ(two.at(0).block, *pie_chart.blocks(2).begin());
    EXPECT_EQ(two.at(1).block, *++pie_chart.blocks(2).begin());
}

TEST_F(mrThumbnailsTest, LaterFacetsStartFromWhatEarlierOnesTinted)
{
    std::vector<dgDuctImage*> textures;
    for (auto const& drawn :
         draw({new_facet(red, {layer("wood")}), new_facet(red, {layer("wood", &orange), layer("wood", &red)}),
               new_facet(red), new_facet(red, {layer("wood")})}))
        textures.push_back(drawn.state.texture.image);
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    dgDuctImage* const twice = cache.recoloured_image(cache.recoloured_image(image, orange), red);
    EXPECT_THAT(textures, ElementsAre(image, twice, nullptr, twice));
}

TEST_F(mrThumbnailsTest, DrawsTheRestWithoutAnImageCoordinatesOrFacets)
{
    EXPECT_TRUE(draw({}).empty());
    EXPECT_THAT(reports(),
                ElementsAre("platform/co/coDList.cpp: argument out of range | CO_DLIST::index",
                            "platform/co/coTable.cpp: argument out of range | CO_TABLE::read | null key",
                            "source/file/mrPieChart.cpp: Args"));
    EXPECT_EQ(draw({new_facet(red, {layer("lost", &blue)})}).size(), 1u);
    std::vector<std::string> const made = reports();
    EXPECT_EQ(made.front(), source + "Invalid image");
    EXPECT_EQ(made.back(), source + "No such images: lost");
    EXPECT_EQ(draw({new_facet(red), nullptr, new_facet(blue)}).at(1).block,
              *std::next(pie_chart.blocks(3).begin(), 2));
    plain_block = nullptr;
    EXPECT_TRUE(draw({new_facet(red)}).empty());

    mrThumbnails nowhere = on(nullptr);
    EXPECT_THAT(reports(), ElementsAre(source + "Args"));
    EXPECT_EQ(nowhere.from_mesh(square), nullptr);
    take(nowhere.from_colour(gsRGB(1, 2, 3)));
    short last[4] = {};
    picture->get_pixel(127, 95, last);
    EXPECT_THAT(last, ElementsAre(1, 2, 3, 255));
}
