#include "messages.h"

#include "text.h"

#include "utAssert.h"

#include <algorithm>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace mrtool {

namespace {

/// Length of the UTF-8 character at the beginning, or 0 when there is none (RFC 3629: no surrogates, nothing
/// longer than needed or above U+10FFFF).
std::size_t character_length(std::string_view text)
{
    auto const byte = [&](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0u;
    };
    auto const follows = [&](std::size_t at, unsigned low, unsigned high) {
        return byte(at) >= low && byte(at) <= high;
    };
    unsigned const first = byte(0);
    if (first < 0x80)
        return 1;
    if (first >= 0xc2 && first <= 0xdf)
        return follows(1, 0x80, 0xbf) ? 2 : 0;
    if (first >= 0xe0 && first <= 0xef)
        return follows(1, first == 0xe0 ? 0xa0 : 0x80, first == 0xed ? 0x9f : 0xbf) && follows(2, 0x80, 0xbf)
                   ? 3
                   : 0;
    if (first >= 0xf0 && first <= 0xf4)
        return follows(1, first == 0xf0 ? 0x90 : 0x80, first == 0xf4 ? 0x8f : 0xbf) &&
                       follows(2, 0x80, 0xbf) && follows(3, 0x80, 0xbf)
                   ? 4
                   : 0;
    return 0;
}

bool is_utf8(std::string_view text)
{
    while (!text.empty()) {
        std::size_t const length = character_length(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

/// The code point of a UTF-8 character.
unsigned code_point(std::string_view character)
{
    unsigned const first = static_cast<unsigned char>(character[0]);
    unsigned code = character.size() == 1 ? first : first & (0xffu >> (character.size() + 1));
    for (char const next : character.substr(1))
        code = code << 6 | (static_cast<unsigned char>(next) & 0x3fu);
    return code;
}

struct CodePoints
{
    unsigned first;
    unsigned last;
};

// What a terminal obeys, and what shows nothing or turns the text around it, so that one name looks like another.
constexpr CodePoints unseen[] = {
    {0x00, 0x1f},     {0x7f, 0x9f},     {0xad, 0xad},      // controls, soft hyphen
    {0x061c, 0x061c}, {0x115f, 0x1160}, {0x17b4, 0x17b5},  // Arabic letter mark, fillers, inherent vowels
    {0x180b, 0x180f}, {0x200b, 0x200f}, {0x2028, 0x202e},  // zero width, directions, line separators
    {0x2060, 0x206f}, {0x3164, 0x3164}, {0xfeff, 0xfeff},  // joiners, directions, fillers, byte order mark
    {0xffa0, 0xffa0}, {0xfff9, 0xfffb}, {0xe0000, 0xe007f} // annotations, tags
};

bool is_unseen(unsigned code)
{
    return std::any_of(std::begin(unseen), std::end(unseen),
                       [=](CodePoints const& each) { return code >= each.first && code <= each.last; });
}

std::string escaped(unsigned code)
{
    char escape[16];
    std::snprintf(escape, sizeof escape, code < 0x100 ? "\\x%02x" : "\\u{%x}", code);
    return escape;
}

std::vector<std::string> collected;

void collect(char const*, int, char const* message)
{
    if (std::find(collected.begin(), collected.end(), message) == collected.end())
        collected.emplace_back(message);
}

std::size_t terminal_width()
{
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

bool progress_is_shown = false;

void clear_progress()
{
    if (progress_is_shown)
        std::fputs("\r\033[K", stderr);
    progress_is_shown = false;
}

std::string minutes_and_seconds(std::chrono::steady_clock::duration time)
{
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
    return text(seconds / 60, seconds % 60 < 10 ? ":0" : ":", seconds % 60);
}

} // namespace

std::string as_utf8(std::string_view text)
{
    if (is_utf8(text))
        return std::string(text);
    std::string made;
    for (char const letter : text) {
        auto const byte = static_cast<unsigned char>(letter);
        if (byte >= 0x80)
            made += static_cast<char>(0xc0 | byte >> 6);
        made += byte >= 0x80 ? static_cast<char>(0x80 | (byte & 0x3f)) : letter;
    }
    return made;
}

std::string printable(std::string_view text)
{
    std::string const whole = as_utf8(text);
    std::string made;
    for (std::string_view left = whole; !left.empty();) {
        std::string_view const character = left.substr(0, character_length(left));
        left.remove_prefix(character.size());
        unsigned const code = code_point(character);
        made += is_unseen(code) ? escaped(code) : std::string(character);
    }
    return made;
}

bool continues_character(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

std::string_view cut_at_character(std::string_view text, std::size_t most)
{
    if (text.size() <= most)
        return text;
    std::size_t end = most;
    // A character has at most three bytes after its first; more of that kind in a row are no UTF-8.
    while (end > 0 && most - end < 3 && continues_character(text[end]))
        --end;
    return text.substr(0, end);
}

std::string in_quotes(std::string_view text)
{
    std::string made = "\"";
    for (char const letter : text) {
        if (letter == '"' || letter == '\\')
            made += '\\';
        made += letter;
    }
    return made + '"';
}

void say(std::string_view file, std::string_view words)
{
    clear_progress();
    std::fprintf(stderr, "mrtool: %s: %s\n", printable(file).c_str(), printable(words).c_str());
}

Progress::Progress(std::size_t total) : m_total(isatty(STDERR_FILENO) ? total : 0) {}

Progress::~Progress()
{
    clear_progress();
}

void Progress::begin(std::string_view name)
{
    std::size_t const done = m_begun++;
    Clock::time_point const now = Clock::now();
    if (m_total < 2 || (progress_is_shown && now - m_shown < std::chrono::milliseconds(100)))
        return;
    m_shown = now;
    std::string line = text(m_begun, " of ", m_total);
    if (done > 0) {
        auto const each = (now - m_start) / static_cast<long>(done);
        line += text(", ", minutes_and_seconds(each * static_cast<long>(m_total - done)), " left");
    }
    line += text(": ", printable(name));
    // A line that wraps could not be taken away again.
    line.resize(cut_at_character(line, terminal_width() - 1).size());
    clear_progress();
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
    progress_is_shown = true;
}

Reports::Reports()
{
    ut_set_assert_handler(collect);
}

Reports::~Reports()
{
    ut_set_assert_handler(nullptr);
}

std::vector<std::string> Reports::take()
{
    return std::exchange(collected, {});
}

} // namespace mrtool
