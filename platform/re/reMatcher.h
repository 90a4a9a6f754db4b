// Regular expressions.
#pragma once

#include "utExport.h"
#include "utString.h"

#include <memory>

/// An expression in the syntax of Perl, over bytes, and its last match.
///
/// Carriage return and line feed, alone or in this order, are line ends: "." is neither of them, and "$"
/// stands at the end of the text or before a line end there.
class UT_API reMatcher
{
public:
    /// Takes the expression as it is; compile() comes before the first match.
    explicit reMatcher(utString const& pattern);
    ~reMatcher();

    reMatcher(reMatcher const&) = delete;
    reMatcher& operator=(reMatcher const&) = delete;

    /// @param options   0, there are no others
    /// @param error     on failure receives what is wrong with the pattern
    /// @param position  on failure receives where in the pattern, in bytes from its beginning
    /// @return 1, or 0 when there is something wrong or not enough memory; nothing matches then
    int compile(int options, utString& error, int& position);

    /// Looks for the first match of the expression.
    /// @param start  where in the text to begin, in bytes
    /// @return one more than the highest group that took part in the match; 0 when there is none, or when
    ///         telling would take more time or memory than the engine's limits
    int match(utString const& text, int start);

    /// The text of a group of the last match; group 0 is the whole match.
    /// @return invalid when there is no such group or it took no part, and when the last match failed
    utString get_substring(int n) const;

private:
    struct Engine;

    utString m_pattern;
    utString m_text; ///< of the last match, invalid when there was none
    std::unique_ptr<Engine> m_engine;
};
