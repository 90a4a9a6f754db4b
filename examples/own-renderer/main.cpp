// Makes a thumbnail of a material file with a renderer of its own: a few lines that fill triangles in memory.
#include "dgRenderer.h"
#include "gxPNG.h"
#include "mrPieChart.h"
#include "mrThumbAtts.h"
#include "mrThumbnails.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <vector>

namespace {

/// Fills triangles with the colour of the surface or of its texture, without light.
class TinyRenderer final : public dgRenderer
{
public:
    int select_read_buffer() const override { return m_read_buffer; }
    void select_read_buffer(int buffer) override { m_read_buffer = buffer; }
    void select_buffer(dgDoubleBuffer) override {}

    void erase(giBox2 const& view_port, gsColour const& background, dgEraseZbuffer) override
    {
        m_width = static_cast<int>(view_port.high().x);
        m_height = static_cast<int>(view_port.high().y);
        std::size_t const pixels = static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height);
        m_colours.assign(pixels, background);
        m_depths.assign(pixels, -std::numeric_limits<double>::max());
    }

    void draw(dgProjection const& projection, dgDrawState const& state, giTriBlock const& block) override
    {
        std::size_t const nodes = block.nodes().size();
        bool const textured = state.texturing && state.texture.image && state.texture.image->width() > 0 &&
                              block.tus() && block.tus()->size() == nodes;
        auto const there = [&](int node) { return node >= 0 && static_cast<std::size_t>(node) < nodes; };
        for (giTri const& triangle : block.triangles()) {
            if (!there(triangle.a) || !there(triangle.b) || !there(triangle.c))
                continue;
            Corner corners[3];
            int at = 0;
            for (int node : {triangle.a, triangle.b, triangle.c}) {
                auto const index = static_cast<std::size_t>(node);
                corners[at].place = projection.device(block.nodes()[index]);
                corners[at].tu = textured ? (*block.tus())[index] : giPoint2();
                ++at;
            }
            fill(corners, state, textured);
        }
    }

    void begin_read_image() override {}
    void end_read_image() override {}

    dgDuctImage* read_image(dgImageType, char const* name, int x, int y, int width, int height, dgSetAlpha,
                            short alpha) override
    {
        if (x < 0 || y < 0 || x + width > m_width || y + height > m_height)
            return nullptr;
        auto* const image = new dgDuctImage(name, width, height);
        for (int row = 0; row < height; ++row)
            for (int column = 0; column < width; ++column) {
                gsRGB rgb;
                m_colours[index(x + column, y + height - 1 - row)].rgb(rgb);
                short const pixel[4] = {static_cast<short>(rgb.red()), static_cast<short>(rgb.green()),
                                        static_cast<short>(rgb.blue()), alpha};
                image->set_pixel(column, row, pixel);
            }
        return image;
    }

private:
    struct Corner
    {
        giPoint3 place;
        giPoint2 tu;
    };

    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
    }

    /// Twice the area of the triangle from two corners to a point, positive where it lies to the left.
    static double side(giPoint3 const& a, giPoint3 const& b, double x, double y)
    {
        return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
    }

    void fill(Corner const (&corners)[3], dgDrawState const& state, bool textured)
    {
        giPoint3 const& a = corners[0].place;
        giPoint3 const& b = corners[1].place;
        giPoint3 const& c = corners[2].place;
        double const area = side(a, b, c.x, c.y);
        if (!std::isfinite(area) || area == 0.0)
            return;
        auto const low = [](double p, double q, double r) { return std::floor(std::min({p, q, r})); };
        auto const high = [](double p, double q, double r) { return std::ceil(std::max({p, q, r})); };
        int const left = static_cast<int>(std::clamp(low(a.x, b.x, c.x), 0.0, double(m_width)));
        int const right = static_cast<int>(std::clamp(high(a.x, b.x, c.x), 0.0, double(m_width)));
        int const bottom = static_cast<int>(std::clamp(low(a.y, b.y, c.y), 0.0, double(m_height)));
        int const top = static_cast<int>(std::clamp(high(a.y, b.y, c.y), 0.0, double(m_height)));
        for (int y = bottom; y < top; ++y)
            for (int x = left; x < right; ++x) {
                double const of_a = side(b, c, x + 0.5, y + 0.5) / area;
                double const of_b = side(c, a, x + 0.5, y + 0.5) / area;
                double const of_c = 1.0 - of_a - of_b;
                double const depth = of_a * a.z + of_b * b.z + of_c * c.z;
                if (of_a < 0.0 || of_b < 0.0 || of_c < 0.0 || depth <= m_depths[index(x, y)])
                    continue;
                m_depths[index(x, y)] = depth;
                m_colours[index(x, y)] = textured ? texel(corners, of_a, of_b, of_c, state) : state.surface;
            }
    }

    static gsColour texel(Corner const (&corners)[3], double of_a, double of_b, double of_c,
                          dgDrawState const& state)
    {
        dgDuctImage const& image = *state.texture.image;
        double const u = of_a * corners[0].tu.x + of_b * corners[1].tu.x + of_c * corners[2].tu.x;
        double const v = of_a * corners[0].tu.y + of_b * corners[1].tu.y + of_c * corners[2].tu.y;
        auto const place = [](double share, int size) {
            return std::min(static_cast<int>((share - std::floor(share)) * size), size - 1);
        };
        short pixel[4];
        // The image's rows run from the top, v runs up.
        image.get_pixel(place(u, image.width()), place(1.0 - v, image.height()), pixel);
        return {state.surface.red() * pixel[0] / 255.0, state.surface.green() * pixel[1] / 255.0,
                state.surface.blue() * pixel[2] / 255.0};
    }

    int m_read_buffer = dgFrontBuffer;
    int m_width = 0;
    int m_height = 0;
    std::vector<gsColour> m_colours;
    std::vector<double> m_depths;
};

int write(dgDuctImage const& image, char const* path)
{
    std::FILE* const file = std::fopen(path, "wb");
    if (!file)
        return 0;
    utStringutStringcoTable const no_texts(mrInitialSize, mrFillLimit);
    int const written = gxPNGWriterDuctImage::write_file(image, file, no_texts);
    return std::fclose(file) == 0 && written;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: own-renderer MATERIAL PICTURE\n");
        return 2;
    }

    // Every material is drawn on the pie chart, a single plain facet on its one slice.
    mrPieChart const pie_chart;
    giTriBlockcoDListPtrcoPtrcoDList const& slices = pie_chart.blocks(1);
    mrNumFacesgiTriBlockcoDListPtrcoTablePrgcoPrgcoTable blocks(mrInitialSize, mrFillLimit);
    blocks[1] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>(slices);
    mrPieChart const more_slices;
    mrThumbAtts const atts(256, 256, gsRGB(180, 180, 180), gsRGB(255, 255, 255), giVector3(0, 0, 1),
                           giVector3(0, 1, 0), *slices.begin(), &blocks, &more_slices);

    mrThumbnails thumbnails(new TinyRenderer, atts);
    dgDuctImage* const picture = thumbnails.from_material_file(argv[1]);
    if (!picture || !write(*picture, argv[2])) {
        std::fprintf(stderr, "%s: no picture\n", argv[1]);
        return 1;
    }
    std::printf("%s: %d x %d\n", argv[2], picture->width(), picture->height());
    picture->unreference();
    return 0;
}
