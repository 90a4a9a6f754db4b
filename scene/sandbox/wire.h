// How the parent and the child that reads a file for it hand each other values.
#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace sandbox {

template <class T>
inline constexpr bool is_wire_array = false;
template <std::floating_point T, std::size_t Size>
inline constexpr bool is_wire_array<std::array<T, Size>> = true;

/// A plain value, which travels as its bytes; any bytes make one, except of a bool.
template <class T>
concept WireNumber = std::is_arithmetic_v<T> || std::is_enum_v<T> || is_wire_array<T>;

/// Writes values to a file, as they stand in memory: both ends are of one build.
///
/// A struct that travels has a function `exchange(wire, value)` found beside it, which hands the struct's
/// fields to the writer or the reader one by one: one description for both directions.
class WireWriter
{
public:
    explicit WireWriter(int file) : m_file(file) {}

    template <class T>
    void operator()(T& value)
    {
        if constexpr (WireNumber<T>)
            bytes(&value, sizeof value);
        else
            exchange(*this, value);
    }

    void operator()(std::string& text) { array(text); }

    template <class... Values>
    requires(sizeof...(Values) > 1) void operator()(Values&... values) { ((*this)(values), ...); }

    template <class T>
    void operator()(std::optional<T>& value)
    {
        bool there = value.has_value();
        (*this)(there);
        if (there)
            (*this)(*value);
    }

    template <class T>
    void operator()(std::vector<T>& values)
    {
        auto count = static_cast<std::uint64_t>(values.size());
        (*this)(count);
        for (T& value : values)
            (*this)(value);
    }

    /// A contiguous container of plain values, in one piece.
    template <class Container>
    void array(Container const& values)
    {
        static_assert(std::is_trivially_copyable_v<std::remove_reference_t<decltype(*values.begin())>>);
        auto count = static_cast<std::uint64_t>(values.size());
        (*this)(count);
        if (count > 0)
            bytes(&*values.begin(), values.size() * sizeof *values.begin());
    }

    /// Writes what is still held back.
    /// @return whether all went out
    bool finish();

private:
    void bytes(void const* data, std::size_t size);

    int m_file;
    bool m_failed = false;
    std::string m_held;
};

/// Reads what a WireWriter wrote. Safe for untrusted input: a value or a count that does not fit the bytes
/// that are there fails, and from then on every value is left as it is.
class WireReader
{
public:
    /// @param bytes  borrowed for the reader's life
    explicit WireReader(std::string_view bytes) : m_left(bytes) {}

    /// Whether everything was there so far.
    bool ok() const { return !m_failed; }
    /// Whether everything was there and nothing is left.
    bool complete() const { return !m_failed && m_left.empty(); }

    template <class T>
    void operator()(T& value)
    {
        if constexpr (std::is_same_v<T, bool>)
            value = take(1) == std::string_view("\1", 1);
        else if constexpr (WireNumber<T>)
            take(sizeof value).copy(reinterpret_cast<char*>(&value), sizeof value);
        else
            exchange(*this, value);
    }

    /// @param text  borrowed from the bytes
    void operator()(std::string_view& text) { text = take(count(1)); }
    void operator()(std::string& text) { text = take(count(1)); }

    template <class... Values>
    requires(sizeof...(Values) > 1) void operator()(Values&... values) { ((*this)(values), ...); }

    template <class T>
    void operator()(std::optional<T>& value)
    {
        bool there = false;
        (*this)(there);
        if (there)
            (*this)(value.emplace());
    }

    template <class T>
    void operator()(std::vector<T>& values)
    {
        // One by one: a count is worth no more memory than the values that follow it.
        for (std::size_t left = count(1); left > 0 && ok(); --left)
            (*this)(values.emplace_back());
    }

    /// Reads an array of WireWriter::array.
    template <class T>
    std::vector<T> array()
    {
        static_assert(std::is_trivially_copyable_v<T>);
        std::string_view const data = take(count(sizeof(T)) * sizeof(T));
        std::vector<T> values;
        values.reserve(data.size() / sizeof(T));
        for (std::size_t at = 0; at < data.size(); at += sizeof(T)) {
            std::array<char, sizeof(T)> bytes;
            std::memcpy(bytes.data(), data.data() + at, sizeof(T));
            values.push_back(std::bit_cast<T>(bytes));
        }
        return values;
    }

private:
    /// A number of members of at least @p member_size bytes each, which the bytes left can hold; else 0.
    std::size_t count(std::size_t member_size);
    std::string_view take(std::size_t size);

    std::string_view m_left;
    bool m_failed = false;
};

} // namespace sandbox
