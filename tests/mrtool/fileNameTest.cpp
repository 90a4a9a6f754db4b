#include "fileName.h"

#include "mrTest.h"

namespace mrtool {

TEST(fileName, keeps_letters_of_any_script_and_hides_nothing)
{
    struct
    {
        std::string name, file;
    } const cases[] = {
        {"oak_2-A.b", "oak_2-A.b"},
        {"../../etc/passwd", "_._.._etc_passwd"},
        {"..", "_."},
        {"a/b\\c:d*e", "a_b_c_d_e"},
        {"", "_"},
        {"Müller – Eiche", "Müller___Eiche"}, // a dash of three bytes is one character, and no letter
        {"木 дуб", "木_дуб"},
        {"cafe\u0301 \u0301x", "cafe\u0301__x"}, // an accent belongs to the letter before it
        {"M\xfcller", "Müller"},                 // one byte a character
        {"up\u202egnp.exe", "up_gnp.exe"},       // no change of direction
        {"a\u00a0b\u2028c", "a_b_c"},
        {std::string("a\0b\n", 4), "a_b_"},
    };
    for (auto const& each : cases)
        EXPECT_EQ(safe_file_name(each.name), each.file);

    std::string name = "x"; // cut between characters
    for (int at = 0; at < 100; ++at)
        name += "ü";
    EXPECT_EQ(safe_file_name(name), name.substr(0, 99));
}

TEST(UniqueNames, numbers_what_comes_again)
{
    UniqueNames names;
    EXPECT_EQ(names.take("red"), "red");
    EXPECT_EQ(names.take("red"), "red-2");
    EXPECT_EQ(names.take("red-2"), "red-2-2");
    EXPECT_EQ(names.take("red"), "red-3");
}

} // namespace mrtool
