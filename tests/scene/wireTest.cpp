#include "wire.h"

#include "wired.h"

using sandbox::WireReader;

TEST(wire, brings_over_all_and_takes_no_more_and_no_less)
{
    scMaterial wood;
    wood.name = "wood";
    wood.colour = scColour{0.5, -1.0, 1e300};
    wood.shininess = 250.0;
    wood.embedded = 0;
    wood.notes = {{scNoteLeftOut, "the normal map \"%1\"", {"", "oak.png"}}};
    scScene sent;
    sent.materials = {scMaterial(), wood};
    sent.images.push_back({"oak", "png", 0, 0, "12"});
    std::string const bytes = wired(sent);
    for (std::size_t length = 0; length <= bytes.size() + 1; ++length) {
        // In a buffer of the exact size, so that a sanitizer sees each step beyond it.
        std::string const part = (bytes + "x").substr(0, length);
        std::vector<char> const exact(part.begin(), part.end());
        scScene scene;
        WireReader wire(std::string_view(exact.data(), exact.size()));
        wire(scene);
        ASSERT_EQ(wire.complete(), length == bytes.size()) << length;
        if (wire.complete()) {
            EXPECT_EQ(scene.materials.at(1).colour, wood.colour);
            EXPECT_EQ(wired(scene), bytes);
        }
    }
}

TEST(wire, believes_no_count)
{
    std::uint64_t count = 0x1000000000000000;
    std::string const bytes = wired(count) + "some more bytes";
    std::vector<std::string> texts;
    WireReader of_texts(bytes);
    of_texts(texts);
    EXPECT_FALSE(of_texts.ok());
    WireReader of_numbers(bytes);
    EXPECT_TRUE(of_numbers.array<double>().empty());
    EXPECT_FALSE(of_numbers.ok());
}
