// The string of the platform: bytes, and a state "no value" beside them.
#pragma once

#include "utExport.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

/// A byte string that may also be invalid, which means "no value" and differs from the empty text.
///
/// An invalid string has length 0 and empty() holds for it; it equals an invalid string and no valid one.
/// Comparison is byte by byte; bytes may have any value, NUL included.
class UT_API utString
{
public:
    /// An invalid string.
    utString() = default;

    /// @param text  zero-terminated; null makes an invalid string
    utString(char const* text);

    /// @param text  any bytes; always makes a valid string
    explicit utString(std::string_view text);
    explicit utString(std::string text);

    /// 1 when the string holds no value.
    int invalid() const { return m_valid ? 0 : 1; }
    void set_invalid();

    /// 1 without characters, also when invalid.
    int empty() const { return m_text.empty() ? 1 : 0; }
    std::size_t length() const { return m_text.length(); }

    /// The text, zero-terminated; never null.
    char const* c_str() const { return m_text.c_str(); }
    std::string_view view() const { return m_text; }

    /// Appends the text; whatever is appended, the string is valid afterwards.
    /// An invalid string is appended as no characters.
    utString& operator+=(utString const& other);
    utString& operator+=(char const* text);
    utString& operator+=(std::string_view text);
    utString& operator+=(char character);

    /// Appends the value in decimal, with "-" in front when negative, the same in every locale.
    utString& append_integer(int value);

    /// The position of the first occurrence of @p text, or -1.
    std::ptrdiff_t locate_substring(std::string_view text) const;

    /// Removes @p count characters from @p start on, or those that there are.
    void remove_sub_string(std::size_t start, std::size_t count);

    /// The text without those of the characters @p chars that stand at its beginning; invalid when this is.
    utString remove_leading_chars(std::string_view chars) const;

    /// The same at its end.
    utString remove_trailing_chars(std::string_view chars) const;

    /// Puts in the place of each character what the function makes of it, which is taken modulo 256.
    /// @param function  is handed 0 to 255; not null
    void convert(int (*function)(int));

    /// Reads the whole text as a 32-bit integer: an optional sign, then digits, no blanks.
    /// @return 1, or 0 with @p value untouched
    int parse(int& value) const;

    /// Reads the whole text as a number: an optional sign, digits with at most one point, an optional
    /// exponent. No other words or forms; a value too large for a double fails, one too small is 0; the
    /// locale has no part in it.
    /// @return 1, or 0 with @p value untouched
    int parse(double& value) const;

    bool operator==(utString const& other) const
    {
        return m_valid == other.m_valid && m_text == other.m_text;
    }

private:
    std::string m_text;
    bool m_valid = false;
};
