#include "jsonText.h"

#include "utConcat.h"

#include <cmath>
#include <cstdio>

namespace mrtool {

JsonText& JsonText::key(std::string_view name)
{
    string(name);
    m_text += ": ";
    m_keyed = true;
    return *this;
}

void JsonText::real(double value)
{
    if (!std::isfinite(value))
        return null();
    std::string number = ut_concat(value);
    if (number.find_first_of(".e") == number.npos)
        number += ".0";
    literal(number);
}

void JsonText::integer(long value)
{
    literal(ut_concat(value));
}

void JsonText::string(std::string_view value)
{
    next();
    m_text += '"';
    for (char const letter : value) {
        if (letter == '"' || letter == '\\') {
            m_text += '\\';
            m_text += letter;
        } else if (static_cast<unsigned char>(letter) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(letter));
            m_text += escape;
        } else {
            m_text += letter;
        }
    }
    m_text += '"';
}

void JsonText::literal(std::string_view word)
{
    next();
    m_text += word;
}

/// Puts what belongs between a value and what stands before it.
void JsonText::next()
{
    if (std::exchange(m_keyed, false))
        return;
    bool const first = std::exchange(m_first, false);
    if (!first)
        m_text += ',';
    if (m_depth > 0 && m_depth <= deepest_with_lines)
        begin_line();
    else if (!first)
        m_text += ' ';
}

void JsonText::begin_line()
{
    m_text += '\n';
    m_text.append(2 * static_cast<std::size_t>(m_depth), ' ');
}

} // namespace mrtool
