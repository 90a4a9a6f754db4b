#include "scFileNames.h"

#include "mrTest.h"

TEST(scFileNames, keeps_letters_of_any_script_and_hides_nothing)
{
    struct
    {
        std::string name, file;
    } const cases[] = {
        {"../../etc/passwd", "_._.._etc_passwd"}, {"", "_"},
        {"Müller – Eiche", "Müller___Eiche"},    // a dash of three bytes is one character, and no letter
        {"cafe\u0301 \u0301x", "cafe\u0301__x"}, // an accent belongs to the letter before it
        {"up\u202egnp.exe", "up_gnp.exe"},       // no change of direction
        {std::string("a\0b\n", 4), "a_b_"},
    };
    for (auto const& each : cases)
        EXPECT_EQ(scFileNames::make_safe(each.name), each.file);

    std::string name = "x"; // cut between characters
    for (int at = 0; at < 100; ++at)
        name += "ü";
    EXPECT_EQ(scFileNames::make_safe(name), name.substr(0, 99));
}
