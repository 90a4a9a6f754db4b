#include "wire.h"

#include "mrTest.h"
#include "scene.h"

#include <fcntl.h>
#include <unistd.h>

namespace mrtool {

namespace {

template <class T>
std::string wired(T value)
{
    TestFolder const folder;
    int const file = open(folder.path("wire").c_str(), O_CREAT | O_WRONLY, 0600);
    WireWriter wire(file);
    wire(value);
    EXPECT_TRUE(wire.finish());
    close(file);
    return read_bytes(folder.path("wire"));
}

Scene sample_scene()
{
    SceneMaterial wood;
    wood.name = "wood";
    wood.colour = SceneColour{0.5, -1.0, 1e300};
    wood.shininess = 250.0;
    wood.embedded = 0;
    wood.left_out = {"the normal map", ""};
    Scene scene;
    scene.materials = {SceneMaterial(), wood};
    scene.images.push_back({"oak", "png", 0, 0, std::string(300000, '\x89')});
    return scene;
}

} // namespace

TEST(wire, brings_values_over)
{
    std::string const bytes = wired(sample_scene());
    Scene scene;
    WireReader wire(bytes);
    wire(scene);
    ASSERT_TRUE(wire.complete());
    ASSERT_EQ(scene.materials.size(), 2u);
    EXPECT_FALSE(scene.materials[0].colour);
    EXPECT_EQ(scene.materials[1].colour, (SceneColour{0.5, -1.0, 1e300}));
    EXPECT_EQ(wired(scene), bytes);
}

TEST(wire, takes_no_more_and_no_less)
{
    Scene small = sample_scene();
    small.images[0].bytes = "12";
    std::string const bytes = wired(small);
    for (std::size_t length = 0; length <= bytes.size() + 1; ++length) {
        // In a buffer of the exact size, so that a sanitizer sees each step beyond it.
        std::string const part = (bytes + "x").substr(0, length);
        std::vector<char> const exact(part.begin(), part.end());
        Scene scene;
        WireReader wire(std::string_view(exact.data(), exact.size()));
        wire(scene);
        EXPECT_EQ(wire.complete(), length == bytes.size()) << length;
    }
}

TEST(wire, believes_no_count)
{
    std::string const bytes = wired(std::uint64_t{0x1000000000000000}) + "some more bytes";
    std::vector<std::string> texts;
    WireReader of_texts(bytes);
    of_texts(texts);
    EXPECT_FALSE(of_texts.ok());
    WireReader of_numbers(bytes);
    of_numbers.array<double>([](double) { FAIL(); });
    EXPECT_FALSE(of_numbers.ok());
}

} // namespace mrtool
