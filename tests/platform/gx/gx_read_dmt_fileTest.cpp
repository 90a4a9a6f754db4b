#include "gx_read_dmt_file.h"

#include "mrTest.h"

#include <cmath>
#include <numbers>
#include <sys/stat.h>

namespace {

/// What was read from a file of this content, and the reason where nothing was.
class Reading
{
public:
    Reading(std::string const& name, std::string const& content)
    {
        TestFolder folder;
        write_bytes(folder.path(name), content);
        utString why_not;
        int const ok = gx_read_dmt_file(utString(folder.path(name)), m_list, &why_not);
        reason = why_not.c_str();
        EXPECT_EQ(ok, m_list.empty() ? 0 : 1);
        EXPECT_EQ(ok, reason.empty() ? 1 : 0);
        for (giTriBlock const* block : m_list) {
            blocks.push_back(block);
            EXPECT_EQ(block->normals().size(), block->nodes().size());
            for (giVector3 const& normal : block->normals())
                EXPECT_NEAR(normal.length(), 1.0, 1e-9);
        }
    }
    ~Reading() { gsTriUtils::delete_and_clear(m_list); }
    Reading(Reading const&) = delete;
    Reading& operator=(Reading const&) = delete;

    std::vector<giTriBlock const*> blocks;
    std::string reason;

private:
    giTriBlockcoDListPtrcoPtrcoDList m_list;
};

/// A scene of the mesh "m", a triangle this many times over, with these nodes in it.
std::string collada(int times, std::string const& nodes)
{
    std::string indices;
    for (int i = 0; i < times; ++i)
        indices += "0 1 2 ";
    return R"(<COLLADA version="1.4.1"><library_geometries><geometry id="m"><mesh>
        <source id="p"><float_array id="a" count="9">1 0 0 0 1 0 0 0 1</float_array>
        <technique_common><accessor source="#a" count="3" stride="3">
        <param name="X"/><param name="Y"/><param name="Z"/></accessor></technique_common></source>
        <vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
        <triangles count=")" +
           std::to_string(times) + R"(">
        <input semantic="VERTEX" source="#v" offset="0"/><p>)" +
           indices + R"(</p></triangles>
        </mesh></geometry></library_geometries><library_visual_scenes><visual_scene id="s">)" +
           nodes +
           R"(</visual_scene></library_visual_scenes><scene><instance_visual_scene url="#s"/></scene></COLLADA>)";
}

/// Two squares that meet along an edge.
TEST(gx_read_dmt_file, MadeNormalsAreSmoothUpToTheCrease)
{
    for (double const degrees : {gx_dmt_crease_angle - 1.0, gx_dmt_crease_angle + 1.0}) {
        double const angle = degrees * std::numbers::pi / 180.0;
        std::string const x = "\nv " + std::to_string(1.0 + std::cos(angle));
        std::string const z = std::to_string(std::sin(angle));
        Reading const reading("a.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0" + x + " 0 " + z + x + " 1 " + z +
                                           "\nf 1 2 3 4\nf 2 5 6 3\n");
        ASSERT_EQ(reading.blocks.size(), 1u);
        giTriBlock const& block = *reading.blocks[0];
        for (std::size_t i = 0; i < block.nodes().size(); ++i) {
            bool const smooth = block.nodes()[i].x == 1.0 && degrees < gx_dmt_crease_angle;
            // Half way between the squares' own normals, or one of them.
            double const tilt = std::acos(block.normals()[i].z) / angle;
            EXPECT_NEAR(std::abs(tilt - 0.5), smooth ? 0.0 : 0.5, 1e-3);
        }
    }
}

TEST(gx_read_dmt_file, EachTimeAMeshIsShownIsABlockInItsPlace)
{
    Reading const reading("a.dae", collada(1, R"(
        <node>
          <translate>10 0 0</translate>
          <node><instance_geometry url="#m"/></node>
          <node><scale>-3 2 1</scale><instance_geometry url="#m"/></node>
        </node>
        <node><scale>1 0 1</scale><instance_geometry url="#m"/></node>)"));
    ASSERT_EQ(reading.blocks.size(), 3u) << reading.reason;
    giTriBlock const& mirrored = *reading.blocks[1];
    EXPECT_EQ(reading.blocks[0]->nodes().box(), giBox3({10, 0, 0}, {11, 1, 1}));
    EXPECT_EQ(mirrored.nodes().box(), giBox3({7, 0, 0}, {10, 2, 1}));
    EXPECT_EQ(reading.blocks[2]->nodes().box(), giBox3({0, 0, 0}, {1, 0, 1}));
    // The triangle still faces outwards, and its normal stands upright on it in spite of the uneven scale.
    auto const node = [&mirrored](int index) {
        giPoint3 const& point = mirrored.nodes()[static_cast<std::size_t>(index)];
        return giVector3(point.x, point.y, point.z);
    };
    giTri const& tri = mirrored.triangles()[0];
    giVector3 const front = (node(tri.b) - node(tri.a)).cross(node(tri.c) - node(tri.a));
    for (giVector3 const& outwards : {front, mirrored.normals()[0] * 7.0})
        EXPECT_NEAR(outwards.dot({-2.0, 3.0, 6.0}), 49.0, 1e-6);
}

TEST(gx_read_dmt_file, FailuresHaveAReason)
{
    std::string shown = "<node>";
    for (int i = 0; i < 4096; ++i)
        shown += R"(<instance_geometry url="#m"/>)";
    EXPECT_EQ(Reading("a.dae", collada(4097, shown + "</node>")).reason,
              "the scene has more triangles than are allowed");

    // A pipe is not waited for.
    TestFolder folder;
    ASSERT_EQ(mkfifo(folder.path("a.mtl").c_str(), 0600), 0);
    write_bytes(folder.path("a.obj"), "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    giTriBlockcoDListPtrcoPtrcoDList blocks;
    EXPECT_TRUE(gx_read_dmt_file(utString(folder.path("a.obj")), blocks));
    gsTriUtils::delete_and_clear(blocks);
}

TEST(gx_read_dmt_file, WhatCannotBeDrawnIsLeftOut)
{
    std::string const head = "ply\nformat ascii 1.0\nelement vertex 6\nproperty float x\nproperty float y\n"
                             "property float z\nproperty float nx\nproperty float ny\nproperty float nz\n"
                             "element face 4\nproperty list uchar int vertex_indices\nend_header\n";
    std::string const points =
        "0 0 0 0 0 2\n1 0 0 0 0 2\n0 1 0 0 0 2\nnan 1 1 0 0 2\n5 5 5 0 0 0\n0 1e999 0 0 0 2\n";
    Reading const reading("a.ply", head + points + "3 0 1 2\n3 0 1 3\n3 0 1 77\n4 0 1 2 5\n");
    ASSERT_EQ(reading.blocks.size(), 1u) << reading.reason;
    giTriBlock const& block = *reading.blocks[0];
    EXPECT_EQ(block.triangles(), giTriArr{(giTri{0, 1, 2})});
    EXPECT_EQ(block.nodes().size(), 3u);
    EXPECT_EQ(block.normals()[0].z, 1.0);
}

} // namespace
