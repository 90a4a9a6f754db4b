#include "progress.h"

#include "printable.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace mrtool {

namespace {

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

/// "2:05".
std::string format_time(std::chrono::steady_clock::duration time)
{
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
    return ut_concat(seconds / 60, seconds % 60 < 10 ? ":0" : ":", seconds % 60);
}

} // namespace

void say(std::string_view file, std::string_view words)
{
    clear_progress();
    std::fprintf(stderr, "mrtool: %s: %s\n", make_printable(file).c_str(), make_printable(words).c_str());
}

void say(std::string_view file, Fault const& fault)
{
    say(fault.line > 0 ? ut_concat(file, ":", fault.line) : std::string(file), fault.words);
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
        line += ut_concat(", ", format_time(each * static_cast<long>(m_total - done)), " left");
    }
    line += ut_concat(": ", make_printable(name));
    // A line that wraps cannot be removed again.
    line.resize(utUTF8::cut(line, terminal_width() - 1).size());
    clear_progress();
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
    progress_is_shown = true;
}

} // namespace mrtool
