#include "scNote.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>
#include <string_view>

std::string scNote::words() const
{
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        bool const place = pattern[at] == '%' && at + 1 < pattern.size();
        std::size_t const number = place ? static_cast<std::size_t>(pattern[at + 1]) - '1' : arguments.size();
        if (number < arguments.size()) {
            text += arguments[number];
            ++at;
        } else {
            text += pattern[at];
        }
    }
    constexpr std::string_view sign = " ... (cut)";
    if (text.size() > max_words) {
        text.resize(utUTF8::cut(text, max_words - sign.size()).size());
        text += sign;
    }
    return text;
}

bool scNote::any_failed(std::vector<scNote> const& notes)
{
    return std::any_of(notes.begin(), notes.end(),
                       [](scNote const& each) { return each.kind == scNoteFailed; });
}

std::vector<std::string> scNote::lines(std::vector<scNote> const& notes)
{
    std::vector<std::string> lines;
    std::string left_out;
    for (scNote const& note : notes) {
        if (note.kind != scNoteLeftOut)
            lines.push_back(note.words());
        else
            left_out += ut_concat(left_out.empty() ? "" : ", ", note.words());
    }
    if (!left_out.empty())
        lines.push_back("not carried over, a material file has no place for it: " + left_out);
    return lines;
}
