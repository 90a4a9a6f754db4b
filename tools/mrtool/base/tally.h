// Telling of many things in one line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mrtool {

/// The text in quotes; of a long one the beginning and the end.
std::string shown(std::string_view text);

/// "1 colour", "2 colours".
std::string number_of(std::size_t count, std::string_view things);

/// Counts things and keeps the first few, so that a line can tell of very many.
class Tally
{
public:
    /// @param example  how it is shown when it is among the first
    void add(std::string example);

    bool empty() const { return m_count == 0; }

    /// "4 colours (A, B, C and 1 more)".
    std::string of(std::string_view things) const;

private:
    std::size_t m_count = 0;
    std::string m_examples;
};

} // namespace mrtool
