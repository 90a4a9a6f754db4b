#include "objStatements.h"

#include "utUTF8.h"

#include <algorithm>
#include <charconv>

namespace sc {

namespace {

constexpr char blanks[] = " \t\r\v\f";

std::string_view trim(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(blanks) + 1));
    return text;
}

/// Takes the "\" off a line's end. It looks at the end alone: lines may be joined by the million.
/// @return whether there was one
bool take_joint(std::string& line)
{
    std::size_t const last = line.find_last_not_of(blanks);
    if (last == line.npos || line[last] != '\\')
        return false;
    line.erase(last);
    return true;
}

char lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

bool ObjStatements::next_line(std::string& line)
{
    if (m_at > m_held.size()) {
        if (!std::getline(m_in, m_held))
            return false;
        if (m_held.ends_with('\r'))
            m_held.pop_back();
        m_at = 0;
    }
    std::size_t const end = std::min(m_held.find('\r', m_at), m_held.size());
    line.assign(m_held, m_at, end - m_at);
    m_at = end + 1;
    ++m_line;
    return true;
}

bool ObjStatements::next(ObjStatement& statement)
{
    std::string line;
    while (next_line(line)) {
        statement.line = m_line;
        if (m_line == 1 && line.starts_with(utUTF8::byte_order_mark))
            line.erase(0, utUTF8::byte_order_mark.size());
        std::string more;
        while (take_joint(line) && next_line(more))
            line += ' ' + more;
        std::string_view rest = trim(line);
        if (rest.empty() || rest.starts_with('#'))
            continue;
        statement.written = take_word(rest);
        statement.word = statement.written;
        std::transform(statement.word.begin(), statement.word.end(), statement.word.begin(), lower);
        statement.rest = rest;
        return true;
    }
    return false;
}

std::string_view take_word(std::string_view& rest)
{
    std::string_view const word = rest.substr(0, rest.find_first_of(blanks));
    rest = trim(rest.substr(word.size()));
    return word;
}

std::optional<double> take_number(std::string_view& rest)
{
    std::string_view left = rest;
    std::string_view digits = take_word(left);
    if (digits.starts_with('+'))
        digits.remove_prefix(1);
    double number = 0.0;
    char const* const end = digits.data() + digits.size();
    auto const [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    rest = left;
    return number;
}

} // namespace sc
