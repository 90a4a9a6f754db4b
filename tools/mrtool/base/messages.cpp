#include "messages.h"

#include "utConcat.h"

#include "utAssert.h"
#include "utUTF8.h"

#include <algorithm>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace mrtool {

namespace {

struct CodePoints
{
    char32_t first;
    char32_t last;
};

// What a terminal obeys, and what shows nothing or turns the text around it, so that one name looks like another.
constexpr CodePoints unseen[] = {
    {0x00, 0x1f},     {0x7f, 0x9f},     {0xad, 0xad},      // controls, soft hyphen
    {0x061c, 0x061c}, {0x115f, 0x1160}, {0x17b4, 0x17b5},  // Arabic letter mark, fillers, inherent vowels
    {0x180b, 0x180f}, {0x200b, 0x200f}, {0x2028, 0x202e},  // zero width, directions, line separators
    {0x2060, 0x206f}, {0x3164, 0x3164}, {0xfeff, 0xfeff},  // joiners, directions, fillers, byte order mark
    {0xffa0, 0xffa0}, {0xfff9, 0xfffb}, {0xe0000, 0xe007f} // annotations, tags
};

bool is_unseen(char32_t code)
{
    return std::any_of(std::begin(unseen), std::end(unseen),
                       [=](CodePoints const& each) { return code >= each.first && code <= each.last; });
}

std::string escaped(char32_t code)
{
    char escape[16];
    std::snprintf(escape, sizeof escape, code < 0x100 ? "\\x%02x" : "\\u{%x}", static_cast<unsigned>(code));
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
    return ut_concat(seconds / 60, seconds % 60 < 10 ? ":0" : ":", seconds % 60);
}

} // namespace

std::string printable(std::string_view text)
{
    std::string const whole = utUTF8::from_any(text);
    std::string made;
    for (std::string_view left = whole; !left.empty();) {
        char32_t code = 0;
        std::string_view const character = left.substr(0, utUTF8::decode(left, code));
        left.remove_prefix(character.size());
        made += is_unseen(code) ? escaped(code) : std::string(character);
    }
    return made;
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
    std::string line = ut_concat(m_begun, " of ", m_total);
    if (done > 0) {
        auto const each = (now - m_start) / static_cast<long>(done);
        line += ut_concat(", ", minutes_and_seconds(each * static_cast<long>(m_total - done)), " left");
    }
    line += ut_concat(": ", printable(name));
    // A line that wraps could not be taken away again.
    line.resize(utUTF8::cut(line, terminal_width() - 1).size());
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
