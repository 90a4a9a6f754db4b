// Writing JSON, value by value.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace mrtool {

/// A JSON text as it grows. No document is held besides, so that even one of millions of values takes no more
/// memory than its text. The outermost object's members and the elements of its lists have a line each.
class JsonText
{
public:
    /// @param body  writes the members
    template <class Body>
    void object(Body const& body)
    {
        nest('{', body, '}');
    }

    /// @param body  writes the elements
    template <class Body>
    void array(Body const& body)
    {
        nest('[', body, ']');
    }

    /// Begins a member, whose value is to follow.
    JsonText& key(std::string_view name);

    void null() { literal("null"); }
    void boolean(bool value) { literal(value ? "true" : "false"); }

    /// A number with a fraction or an exponent; null for one that is not finite, which JSON has no word for.
    void real(double value);
    void integer(long value);

    /// In UTF-8, as as_utf8 makes it.
    void string(std::string_view value);

    std::string take() { return std::move(m_text); }

private:
    static constexpr int deepest_with_lines = 2;

    template <class Body>
    void nest(char open, Body const& body, char close)
    {
        next();
        m_text += open;
        ++m_depth;
        m_first = true;
        body();
        --m_depth;
        if (!std::exchange(m_first, false) && m_depth < deepest_with_lines)
            begin_line();
        m_text += close;
    }

    void next();
    void begin_line();
    void literal(std::string_view word);

    std::string m_text;
    int m_depth = 0;
    bool m_first = true;  ///< nothing stands in the innermost object or list yet
    bool m_keyed = false; ///< a member's value is to follow
};

} // namespace mrtool
