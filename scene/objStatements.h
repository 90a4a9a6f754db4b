// The statements of OBJ and MTL files.
#pragma once

#include "gxOpenFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace sc {

/// A line of such a file.
struct ObjStatement
{
    std::string written; ///< its first word
    std::string word;    ///< the same in lower case
    std::string rest;    ///< what follows, without blanks around it
    std::size_t line = 0;
};

/// Reads the statements of a file one after the other, without comments and empty lines. A line ends at LF,
/// CR or both; a "\" at its end joins the next one to it.
class ObjStatements
{
public:
    explicit ObjStatements(std::string const& path)
        : m_file(gx_open_file(utString(path), m_reason)), m_in(m_file.get())
    {}

    /// Whether the file could be opened.
    bool good() const { return m_file != nullptr; }

    /// @return false at the end of the file
    bool next(ObjStatement& statement);

private:
    bool next_line(std::string& line);

    utString m_reason;
    gxFile m_file;
    gxFileStream m_in;
    std::size_t m_line = 0;
    std::string m_held;   ///< what was read up to a LF
    std::size_t m_at = 1; ///< where in it the next line begins; beyond its end after the last one
};

/// Takes a word and the blanks after it off the front; empty when nothing is left.
std::string_view take_word(std::string_view& rest);

/// Takes a number and the blanks after it off the front. Where the first word is no number, gives nothing and
/// leaves the rest as it is.
std::optional<double> take_number(std::string_view& rest);

} // namespace sc
