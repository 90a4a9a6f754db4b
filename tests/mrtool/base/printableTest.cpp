#include "printable.h"

#include "mrTest.h"

namespace mrtool {

TEST(printable, shows_what_a_terminal_would_obey_or_hide)
{
    EXPECT_EQ(make_printable("red\x1b[2J\n\u009b \x7f ü"), "red\\x1b[2J\\x0a\\x9b \\x7f ü");
    EXPECT_EQ(make_printable("\u202egnp\u200b\U000e0041.exe"), "\\u{202e}gnp\\u{200b}\\u{e0041}.exe");
}

} // namespace mrtool
