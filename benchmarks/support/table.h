// Measuring the library beside a baseline, and the table that comes of it.
#pragma once

#include <functional>
#include <string>
#include <vector>

/// Prints one row for each comparison, in Markdown, as soon as it was made.
///
/// Both sides of a comparison are run alternately in the same process, and the medians are compared, so that a
/// machine that slows down does so for both. Memory that either frees stays with the process.
class Table
{
public:
    struct Side
    {
        std::string what; ///< in a word or two
        std::function<void()> work;
    };

    /// Takes Google Benchmark's options. By default a side is repeated 15 times, for at least 0.05 s each,
    /// and the repetitions of both sides are shuffled. A filter leaves out the rows that it does not match.
    /// Ends the program at an option that nobody knows.
    Table(int argc, char** argv);
    Table(Table const&) = delete;
    Table& operator=(Table const&) = delete;

    /// @param at_most  how many times the baseline's time the library may take
    /// @param others   measured with them and named in the row, for information
    void compare(std::string const& work, std::function<void()> const& library, Side const& baseline,
                 double at_most, std::vector<Side> const& others = {});

    /// For a comparison that has no limit.
    void note(std::string const& work, std::function<void()> const& library, Side const& baseline);

    /// @param at_most  seconds that the library may take
    void limit(std::string const& work, std::function<void()> const& library, double at_most);

    /// A size that was found by other means.
    void size(std::string const& work, double bytes, double at_most);

private:
    /// @return the medians in seconds; fewer than there are sides where a filter left some out
    std::vector<double> measure(std::string const& work, std::vector<Side> const& sides);
    void row(std::string const& work, std::string const& library, std::string const& baseline,
             std::string const& ratio, std::string const& at_most, std::string const& outcome);

    bool m_begun = false;
};

/// Ends the program with a message: a comparison of two things that do not give the same means nothing.
void require(bool condition, char const* message);
