#include "scNote.h"

#include "mrTest.h"

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
