#include "tally.h"

#include "messages.h"
#include "utConcat.h"
#include "utUTF8.h"

namespace mrtool {

namespace {

constexpr std::size_t most_examples = 3;
constexpr std::size_t most_shown = 60;
constexpr std::size_t end_shown = 16;

} // namespace

std::string shown(std::string_view text)
{
    if (text.size() <= most_shown)
        return in_quotes(text);
    std::string_view end = text.substr(text.size() - end_shown);
    while (end.size() > end_shown - 3 && utUTF8::continues_character(end.front()))
        end.remove_prefix(1);
    return in_quotes(utUTF8::cut(text, most_shown - end_shown)) + "..." + in_quotes(end);
}

std::string number_of(std::size_t count, std::string_view things)
{
    return ut_concat(count, " ", things, count == 1 ? "" : "s");
}

void Tally::add(std::string example)
{
    if (m_count++ < most_examples)
        m_examples += (m_examples.empty() ? "" : ", ") + example;
}

std::string Tally::of(std::string_view things) const
{
    std::string const more =
        m_count > most_examples ? ut_concat(" and ", m_count - most_examples, " more") : std::string();
    return ut_concat(number_of(m_count, things), " (", m_examples, more, ")");
}

} // namespace mrtool
