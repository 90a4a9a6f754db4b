#include "utString.h"

#include <charconv>
#include <locale>
#include <sstream>
#include <system_error>
#include <utility>

namespace {

// std::from_chars takes no leading "+"; ours may stand there, but not in front of another sign.
std::string_view without_plus(std::string_view text)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+')
        text.remove_prefix(1);
    return text;
}

/// Reads the whole text, or says why not.
template <class Number>
std::errc parse_whole(std::string_view text, Number& value)
{
    text = without_plus(text);
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return end == text.data() + text.size() ? error : std::errc::invalid_argument;
}

/// Reads a number that std::from_chars found out of range: it makes no difference between one too large and
/// one too small, which is 0.
/// @return whether it is too small
bool parse_too_small(std::string const& text, double& value)
{
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    return static_cast<bool>(in >> value);
}

} // namespace

utString::utString(char const* text) : m_text(text ? text : ""), m_valid(text != nullptr) {}

utString::utString(std::string_view text) : m_text(text), m_valid(true) {}

utString::utString(std::string text) : m_text(std::move(text)), m_valid(true) {}

void utString::set_invalid()
{
    m_text.clear();
    m_valid = false;
}

utString& utString::operator+=(utString const& other)
{
    m_text += other.m_text;
    m_valid = true;
    return *this;
}

utString& utString::operator+=(char const* text)
{
    return *this += std::string_view(text ? text : "");
}

utString& utString::operator+=(std::string_view text)
{
    m_text += text;
    m_valid = true;
    return *this;
}

utString& utString::operator+=(char character)
{
    m_text += character;
    m_valid = true;
    return *this;
}

utString& utString::append_integer(int value)
{
    // std::to_chars, not std::to_string: the latter is free to ask the locale.
    char digits[16];
    auto const written = std::to_chars(digits, digits + sizeof digits, value);
    return *this += std::string_view(digits, static_cast<std::size_t>(written.ptr - digits));
}

std::ptrdiff_t utString::locate_substring(std::string_view text) const
{
    std::size_t const position = m_text.find(text);
    return position == std::string::npos ? -1 : static_cast<std::ptrdiff_t>(position);
}

void utString::remove_sub_string(std::size_t start, std::size_t count)
{
    if (start < m_text.size())
        m_text.erase(start, count);
}

utString utString::remove_leading_chars(std::string_view chars) const
{
    utString result = *this;
    result.m_text.erase(0, m_text.find_first_not_of(chars));
    return result;
}

utString utString::remove_trailing_chars(std::string_view chars) const
{
    utString result = *this;
    result.m_text.erase(m_text.find_last_not_of(chars) + 1); // of nothing else the position is -1
    return result;
}

void utString::convert(int (*function)(int))
{
    for (char& character : m_text)
        character = static_cast<char>(function(static_cast<unsigned char>(character)));
}

int utString::parse(int& value) const
{
    int parsed = 0;
    if (parse_whole(m_text, parsed) != std::errc())
        return 0;
    value = parsed;
    return 1;
}

int utString::parse(double& value) const
{
    // std::from_chars would also take "inf" and "nan", in which no digit, point or exponent mark stands
    // alone.
    if (m_text.find_first_not_of("+-.0123456789eE") != std::string::npos)
        return 0;
    double parsed = 0.0;
    std::errc const error = parse_whole(m_text, parsed);
    if (error == std::errc::result_out_of_range && !parse_too_small(m_text, parsed))
        return 0;
    if (error == std::errc::invalid_argument)
        return 0;
    value = parsed;
    return 1;
}
