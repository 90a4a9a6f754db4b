#include "tally.h"

#include "utConcat.h"

namespace mrtool {

std::string format_count(std::size_t count, std::string_view things)
{
    return ut_concat(count, " ", things, count == 1 ? "" : "s");
}

void Tally::add(std::string const& example)
{
    if (m_count++ < most_examples)
        m_examples += (m_examples.empty() ? "" : ", ") + example;
}

void Tally::append_to(std::vector<std::string>& lines, std::string_view words, std::string_view things) const
{
    if (m_count == 0)
        return;
    std::string const more =
        m_count > most_examples ? ut_concat(" and ", m_count - most_examples, " more") : "";
    lines.push_back(ut_concat(words, format_count(m_count, things), " (", m_examples, more, ")"));
}

} // namespace mrtool
