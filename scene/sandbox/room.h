// Memory that a child fills for its parent: what takes too long through a pipe.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace sandbox {

/// A file in memory with a fixed size, of which only those pages take memory that were written. Whoever has its
/// descriptor can write to it, but neither shorten it nor make it longer.
class Room
{
public:
    /// @param size  bytes; less where the system limits the size of files
    explicit Room(std::uint64_t size);
    ~Room();
    Room(Room const&) = delete;
    Room& operator=(Room const&) = delete;

    /// The file's descriptor, at its beginning; -1 with errno where there is no such file.
    int file() const { return m_file; }

    /// The size of the room behind a descriptor, for the child; 0 where there is none.
    static std::uint64_t size_of(int file);

    /// What was written, after the child's end.
    /// @param written  bytes from the beginning, as the child says
    /// @return nothing when there cannot be so many, or when somebody might still change them; else the bytes, which
    ///         are there for this object's life
    std::optional<std::string_view> close(std::uint64_t written);

private:
    std::uint64_t m_size;
    int m_file;
    std::string_view m_mapped;
};

} // namespace sandbox
