// Files that are there whole or not at all.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <sys/types.h>

class dgDuctImage;

namespace mrtool {

/// A file with a temporary name beside the one it is to have, until it is complete.
class PendingFile
{
public:
    /// Creates the file, empty, in the folder of @p path, which is made when missing.
    explicit PendingFile(std::string path);
    /// Removes the file unless it got its name.
    ~PendingFile();
    PendingFile(PendingFile const&) = delete;
    PendingFile& operator=(PendingFile const&) = delete;

    /// Whether the file could be created; else reason() says what is wrong.
    bool good() const { return !m_temporary.empty(); }
    std::string const& reason() const { return m_reason; }
    std::string const& temporary_path() const { return m_temporary; }

    /// Gives the file its name, in the place of a file that has it.
    /// @return false when that fails; reason() says why
    bool complete();

private:
    std::string m_path;
    std::string m_temporary;
    std::string m_reason;
};

/// Writes a file as a pending one.
/// @param reason  receives in words why it could not be written
/// @param write   writes the file of the temporary name that it is handed, or says in @p reason why not
bool write_whole(std::string const& path, std::string& reason,
                 std::function<bool(std::string const& temporary)> const& write);

/// Whether a file with this name is, or was left over as, a pending one.
bool is_pending_name(std::string_view name);

/// Removes what a process that is no more left pending beside a path.
void remove_left_over(std::string const& path, pid_t process);

/// From now on an interrupted program removes the file that is pending before it ends.
void remove_pending_files_on_interrupt();

/// Writes a PNG file.
/// @param reason  receives in words why it could not be written
bool write_png(dgDuctImage const& image, std::string const& path, std::string& reason);

} // namespace mrtool
