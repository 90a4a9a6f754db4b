#include "scNote.h"

#include "mrTest.h"

#include <gmock/gmock.h>

TEST(scNote, puts_arguments_into_words_whatever_is_in_them)
{
    scNote const note{scNoteChanged, "%2 of %1 is 100% %3 %", {"%2", "a%1"}};
    EXPECT_EQ(note.words(), "a%1 of %2 is 100% %3 %");

    scNote longest{scNoteFailed, "%1", {std::string(scNote::max_words, 'a')}};
    EXPECT_EQ(longest.words(), longest.arguments[0]);
    longest.pattern = "\"%1";
    std::string const cut = longest.words();
    EXPECT_EQ(cut.size(), scNote::max_words);
    EXPECT_TRUE(cut.ends_with("a ... (cut)"));
}

TEST(scNote, tells_what_is_left_out_in_one_line)
{
    std::vector<scNote> const notes = {{scNoteLeftOut, "the sheen", {}},
                                       {scNoteOutside, "its texture \"%1\"", {"a.png"}},
                                       {scNoteLeftOut, "the bump map \"%1\"", {"b.png"}}};
    EXPECT_THAT(scNote::lines(notes),
                testing::ElementsAre("its texture \"a.png\"",
                                     "not carried over, a material file has no place for it: "
                                     "the sheen, the bump map \"b.png\""));
    EXPECT_FALSE(scNote::any_failed(notes));
}
