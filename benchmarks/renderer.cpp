// Thumbnails of materials and meshes, beside the same pictures by OpenGL alone.
#include "mrThumbnails.h"

#include "mrPieChart.h"

#include "support/bareOpenGL.h"
#include "support/material.h"
#include "support/sceneRecorder.h"
#include "support/table.h"

#include "dgOffscreenRenderer.h"
#include "sphere.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

constexpr int side = 256;

using Making = std::function<Picture(mrThumbnails&)>;

/// A wavy sheet of @p columns × @p rows squares, two triangles each.
void fill_sheet(giTriBlock& block, int columns, int rows)
{
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column) {
            double const x = 2.0 * column / columns - 1.0;
            double const y = 2.0 * row / rows - 1.0;
            double const slope = 0.8 * std::cos(8.0 * x);
            double const length = std::sqrt(1.0 + slope * slope);
            gsTriUtils::check_out_nodes(block).append({x, y, 0.1 * std::sin(8.0 * x)});
            gsTriUtils::check_out_normals(block).emplace_back(-slope / length, 0.0, 1.0 / length);
        }
    giTriArr& triangles = gsTriUtils::check_out_triangles(block);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            int const at = row * (columns + 1) + column;
            int const above = at + columns + 1;
            triangles.push_back({at, at + 1, above + 1});
            triangles.push_back({at, above + 1, above});
        }
}

/// Pixels may differ by rounding.
bool look_alike(dgDuctImage const& ours, std::vector<unsigned char> const& theirs, Scene const& scene)
{
    for (int y = 0; y < ours.height(); ++y)
        for (int x = 0; x < ours.width() * 4; ++x) {
            int const from_bottom = ours.height() - 1 - y;
            int const their = theirs[static_cast<std::size_t>(from_bottom * scene.width * 4 + x)];
            if (std::abs(ours.pixels()[y * ours.width() * 4 + x] - their) > 2)
                return false;
        }
    return true;
}

/// Thumbnails of one size by the renderer, and the same scenes by bare OpenGL.
class Pair
{
public:
    Pair()
    {
        utString reason;
        m_renderer = dg_hold(dgOffscreenRenderer::create(reason));
        require(m_renderer != nullptr, reason.c_str());
        std::fprintf(stderr, "drawn by %s\n", m_renderer->device().c_str());
        mrtool::fill_sphere(m_sphere);
        m_blocks[1] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        m_blocks[1]->append(&m_sphere);
        m_atts = std::make_unique<mrThumbAtts>(side, side, gsRGB(180, 180, 180), gsRGB(240, 240, 240),
                                               giVector3(0.3, 0.2, 1.0), giVector3(0, 1, 0), &m_sphere,
                                               &m_blocks, &m_pie_chart);
    }

    void compare(Table& table, char const* work, Making const& make)
    {
        dgCounted<SceneRecorder> const recorder = dg_hold(new SceneRecorder);
        mrThumbnails recorded(recorder.get(), *m_atts);
        make(recorded);
        Scene const& scene = recorder->scene;

        mrThumbnails thumbnails(m_renderer.get(), *m_atts);
        BareOpenGL opengl(scene.width, scene.height);
        opengl.keep(scene);
        Picture const picture = make(thumbnails);
        require(look_alike(*picture, opengl.frame(scene), scene) &&
                    look_alike(*picture, opengl.frame(), scene),
                "the pictures differ");
        table.compare(work, [&] { benchmark::DoNotOptimize(make(thumbnails)); },
                      {"OpenGL", [&] { benchmark::DoNotOptimize(opengl.frame(scene)); }}, 1.5,
                      {{"all resident", [&] { benchmark::DoNotOptimize(opengl.frame()); }}});
    }

    /// Draws many meshes beside fewer.
    void compare_counts(Table& table, char const* work, int count, char const* fewer, int fewer_count)
    {
        mrThumbnails thumbnails(m_renderer.get(), *m_atts);
        giTriBlock block;
        fill_sheet(block, 1, 1);
        auto const drawing = [&](int meshes) {
            giTriBlockcoDListPtrcoPtrcoDList list;
            for (int i = 0; i < meshes; ++i)
                list.append(&block);
            return [&thumbnails, list] { benchmark::DoNotOptimize(dg_hold(thumbnails.from_meshes(list))); };
        };
        table.compare(work, drawing(count), {fewer, drawing(fewer_count)}, 5.0);
    }

private:
    dgCounted<dgOffscreenRenderer> m_renderer;
    giTriBlock m_sphere;
    mrThumbAtts::FaceCountTable m_blocks{mrInitialSize, mrFillLimit};
    mrPieChart m_pie_chart;
    std::unique_ptr<mrThumbAtts> m_atts;
};

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    Pair pair;
    auto const of = [](mrFileMat const& material) {
        return [&material](mrThumbnails& thumbnails) { return dg_hold(thumbnails.from_material(material)); };
    };
    std::unique_ptr<mrFileMat> const plain = material(1, 0);
    pair.compare(table, "from_material, one plain facet, 256²", of(*plain));
    std::unique_ptr<mrFileMat> const textured = material(3, 512);
    pair.compare(table, "from_material, three facets with 512² textures, 256²", of(*textured));

    giTriBlock sheet;
    fill_sheet(sheet, 1000, 500);
    giTriBlockcoDListPtrcoPtrcoDList meshes;
    meshes.append(&sheet);
    pair.compare(table, "from_meshes of 1,000,000 triangles, 256²",
                 [&](mrThumbnails& thumbnails) { return dg_hold(thumbnails.from_meshes(meshes)); });
    pair.compare_counts(table, "from_meshes of 1,000 meshes of two triangles, 256²", 1000, "250 meshes", 250);
}
