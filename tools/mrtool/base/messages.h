// What the program says to its user.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mrtool {

/// The text as UTF-8 that a terminal shows as it is and does nothing else with: control characters, those that
/// show nothing and those that turn the direction of writing become "\x1b", "\u{202e}" and the like.
std::string printable(std::string_view text);

/// The text in quotes, with a backslash before each quote and backslash in it.
std::string in_quotes(std::string_view text);

/// Says on standard error what became of a file: "mrtool: FILE: WORDS".
void say(std::string_view file, std::string_view words);

/// A line on standard error that counts what is done and tells the time left; nothing when standard error is
/// no terminal.
class Progress
{
public:
    explicit Progress(std::size_t total);
    /// Takes the line away.
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    /// Says which one is begun now; those before it are done.
    void begin(std::string_view name);

private:
    using Clock = std::chrono::steady_clock;

    std::size_t m_total;
    std::size_t m_begun = 0;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_shown;
};

/// Collects the reports that the library makes, so that they can be shown with the file they are about. One
/// at a time.
class Reports
{
public:
    Reports();
    ~Reports();
    Reports(Reports const&) = delete;
    Reports& operator=(Reports const&) = delete;

    /// The messages since the last call, each once, in the order of their first coming.
    std::vector<std::string> take();
};

} // namespace mrtool
