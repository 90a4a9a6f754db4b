#include "untrustedReader.h"

#include "program.h"

#include "gx_read_dmt_file.h"

#include <algorithm>
#include <cerrno>
#include <sys/wait.h>

namespace mrtool {

namespace {

UntrustedReader const reader(MRTOOL);

} // namespace

TEST(UntrustedReader, hands_meshes_over_as_they_are)
{
    TestFolder const folder;
    utString const path(folder.path("a.obj"));
    write_bytes(
        path.c_str(),
        "v 0 0 0\nv 1.5 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0 1\no one\nf 1/1 2/2 3/3\no two\nf 1 2 3\n");
    Meshes meshes, own;
    std::string reason;
    ASSERT_TRUE(gx_read_dmt_file(path, own.blocks));
    ASSERT_TRUE(reader.meshes(path.c_str(), meshes, reason)) << reason;
    ASSERT_EQ(meshes.blocks.size(), 2u);
    auto const same = [](auto const& one, auto const& other) {
        return std::equal(one.begin(), one.end(), other.begin(), other.end());
    };
    auto const alike = [=](giTriBlock const* one, giTriBlock const* other) {
        return same(one->nodes(), other->nodes()) && one->normals().size() == other->normals().size() &&
               one->normals().at(2).z == other->normals().at(2).z && one->triangles() == other->triangles() &&
               !one->tus() == !other->tus() && (!one->tus() || same(*one->tus(), *other->tus()));
    };
    EXPECT_TRUE(std::equal(meshes.blocks.begin(), meshes.blocks.end(), own.blocks.begin(), alike));
    EXPECT_TRUE((*meshes.blocks.begin())->tus());
}

TEST(UntrustedReader, hands_images_of_scenes_over)
{
    std::string reason;
    EXPECT_TRUE(reader.image(SceneImage{"", "jpg", 0, 0, png_bytes(*four_colours())}, reason)) << reason;
    auto const pixels = reader.image(SceneImage{"", "", 2, 1, std::string("\1\2\3\4\5\6\7\x8")}, reason);
    ASSERT_TRUE(pixels) << reason;
    EXPECT_EQ(pixel(*pixels, 1, 0), "5 6 7");
    EXPECT_FALSE(reader.image(SceneImage{"", "", 2, 2, "too few"}, reason));
}

TEST(UntrustedReader, believes_no_child)
{
    std::string reason;
    Meshes meshes;
    // A child that answers with its arguments instead of meshes.
    EXPECT_FALSE(UntrustedReader("/bin/echo").meshes("a.stl", meshes, reason));
    EXPECT_EQ(reason, "reading it gave no sensible answer");
    EXPECT_TRUE(meshes.blocks.empty());
    EXPECT_FALSE(UntrustedReader("/bin/false").meshes("a.stl", meshes, reason));
    EXPECT_EQ(reason, "reading it ended with status 1");
    ChildLimits limits;
    limits.time = std::chrono::milliseconds(1);
    EXPECT_FALSE(UntrustedReader(MRTOOL, limits).meshes("a.stl", meshes, reason));
    EXPECT_EQ(reason, "reading it took longer than 1 ms");
    EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD);
}

} // namespace mrtool
