// Counting many things, and naming a few of them.
#pragma once

#include <string>
#include <vector>

namespace mrtool {

/// "1 colour", "2 colours".
std::string format_count(std::size_t count, std::string_view things);

/// Counts things and keeps the first few as examples, so that one line can describe very many.
class Tally
{
public:
    void add(std::string const& example);

    /// Appends a line such as "WORDS4 colours (A, B, C and 1 more)"; nothing when nothing was counted.
    /// @param things  the singular of what was counted
    void append_to(std::vector<std::string>& lines, std::string_view words, std::string_view things) const;

private:
    static constexpr std::size_t most_examples = 3;

    std::size_t m_count = 0;
    std::string m_examples;
};

} // namespace mrtool
