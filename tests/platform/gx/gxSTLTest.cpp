#include "gxSTL.h"

#include "mrTest.h"

#include "giBox.h"
#include "gx_read_dmt_file.h"
#include "gxOpenFile.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>
#include <sstream>

namespace {

using Triple = std::array<float, 3>;

struct Facet
{
    Triple normal;
    Triple points[3];
};

std::string text_of(std::vector<Facet> const& facets)
{
    std::ostringstream text("solid a facet normal of its name\n", std::ios::ate);
    auto const write = [&text](char const* word, Triple const& triple) {
        text << word << ' ' << triple[0] << ' ' << triple[1] << "\t+" << triple[2] << "\r\n";
    };
    for (Facet const& facet : facets) {
        write("FACET normal", facet.normal);
        text << "outer loop\n";
        for (Triple const& point : facet.points)
            write("vertex", point);
        text << "endloop endfacet\n";
    }
    return text.str() + "endsolid vertex\n";
}

std::string binary_of(std::vector<Facet> const& facets)
{
    std::string bytes = "solid, but binary";
    bytes.resize(84);
    bytes[80] = static_cast<char>(facets.size());
    for (Facet const& facet : facets) {
        char numbers[50] = "";
        std::memcpy(numbers, &facet, 48);
        bytes.append(numbers, sizeof numbers);
    }
    return bytes;
}

struct Read
{
    bool known;
    std::vector<gxMesh> solids;
    std::string reason;
};

Read read(std::string const& bytes)
{
    Read result{};
    utString reason;
    gxFile const file = gx_open_memory(bytes, reason);
    result.known = gx_read_stl(file.get(), result.solids, reason);
    result.reason = reason.c_str();
    return result;
}

/// A roof of four triangles around the z axis, each leaning @p lean degrees from it, all with the same normals.
std::vector<Facet> roof(double lean, std::vector<Triple> const& normals)
{
    auto const rim = [lean](int corner) {
        double const angle = std::numbers::pi / 2.0 * corner;
        double const depth = std::cos(std::numbers::pi / 4.0) * std::tan(lean * std::numbers::pi / 180.0);
        return Triple{static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)),
                      static_cast<float>(-depth)};
    };
    std::vector<Facet> facets;
    for (int i = 0; i < 4; ++i)
        facets.push_back(
            {normals[static_cast<std::size_t>(i) % normals.size()], {{0, 0, 0}, rim(i), rim((i + 1) % 4)}});
    return facets;
}

} // namespace

TEST(gxSTL, BelievesTheNormalsThatAgreeWithTheWinding)
{
    Triple const up{0, 0, 2};
    Triple const aside{1, 0, 0};
    Triple const none{0, 0, 0};
    double const edge = gx_stl_agreement_angle;
    struct
    {
        double lean;
        std::vector<Triple> normals;
        std::size_t nodes; ///< 12 where the triangles are flat, 5 where they are one smooth surface
        double first_z;    ///< of the first node's normal
    } const cases[] = {
        {edge - 1.0, {up}, 12, 1.0},
        {edge + 1.0, {up}, 5, 1.0}, // made: in the middle of the roof
        {edge - 1.0, {aside, up, up, up}, 12, std::cos((edge - 1.0) * std::numbers::pi / 180.0)},
        {edge - 1.0, {up, up, up, none}, 5, 1.0},
        {edge - 1.0, {aside, up, aside, up}, 5, 1.0},
        {edge - 1.0, {none}, 5, 1.0},
    };
    for (auto const& each : cases)
        for (std::string const& bytes :
             {text_of(roof(each.lean, each.normals)), binary_of(roof(each.lean, each.normals))}) {
            Read const result = read(bytes);
            ASSERT_EQ(result.solids.size(), 1u);
            gxMesh const& mesh = result.solids[0];
            EXPECT_EQ(mesh.triangles.size(), 4u);
            EXPECT_EQ(mesh.points.size(), each.nodes) << each.lean;
            EXPECT_NEAR(mesh.normals[0].z, each.first_z, 1e-6) << each.lean;
        }
}

TEST(gxSTL, LeavesOutWhatCannotBeDrawn)
{
    Facet const good{{0, 0, 1}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    Facet bad = good;
    bad.points[1][2] = INFINITY;
    Facet odd_normal = good;
    odd_normal.normal = {NAN, INFINITY, 0};
    Read const binary = read(binary_of({bad, good, odd_normal, good}));
    ASSERT_EQ(binary.solids.size(), 1u);
    EXPECT_EQ(binary.solids[0].triangles.size(), 3u);
    for (giVector3 const& normal : binary.solids[0].normals)
        EXPECT_EQ(normal.z, 1.0);

    // A solid without triangles, a loop of four points, one of two, and a number too large.
    Read const text =
        read("solid\nendsolid\nsolid b\nfacet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex "
             "1 1 0 vertex 0 1 0 endloop endfacet facet vertex 0 0 0 vertex 1 0 0 endfacet\nfacet "
             "vertex 0 0 0 vertex 1 0 0 vertex 1e999 1 1\nendsolid b\nsolid c facet\nfacet normal 0 0 "
             "1 vertex 0 0 5 vertex 1 0 5 vertex 0 1 5");
    ASSERT_EQ(text.solids.size(), 2u) << text.reason;
    EXPECT_EQ(text.solids[0].triangles.size(), 2u);
    EXPECT_EQ(text.solids[1].points[0].z, 5.0);
}

TEST(gxSTL, TellsWhatIsNoSTLFileAndWhereOneIsWrong)
{
    std::string const binary = binary_of(roof(5, {{0, 0, 0}}));
    for (std::string const& bytes : {std::string(), std::string("facet"), "x" + binary.substr(1) + "y"})
        EXPECT_FALSE(read(bytes).known) << bytes.size();
    EXPECT_EQ(read("solid\n\nfacet normal 0 0 1\nvertex 1 2\nx 3").reason,
              "line 5: there are no three numbers");

    // Cut anywhere, a file gives no mesh that does not hold together.
    std::string const text = text_of(roof(5, {{0, 0, 0}}));
    for (std::size_t length = 0; length < text.size(); ++length)
        for (gxMesh const& mesh : read(text.substr(0, length)).solids) {
            EXPECT_EQ(mesh.normals.size(), mesh.points.size());
            for (giTri const& tri : mesh.triangles)
                EXPECT_LT(static_cast<std::size_t>(std::max({tri.a, tri.b, tri.c})), mesh.points.size());
        }
}
