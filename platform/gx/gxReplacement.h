// Writing a file so that an older one in its place is not lost. Used inside the project; not installed.
#pragma once

#include "gxOpenFile.h"

#include <string>
#include <string_view>

/// A file that is being written, and takes the place of an older one when it is complete.
///
/// Links are followed. An older regular file is replaced: the new one is written beside it under a temporary name,
/// gets its permissions and its owner, and is renamed over it. Until then, and after any failure, the older file is
/// whole. Hard links keep the older contents; access control lists and extended attributes are not carried over.
///
/// Written in place, so that a failure leaves a part, are
/// - what is no regular file, such as a pipe or a device; opening a pipe waits for its reader;
/// - an older file for which the system refuses a file beside it, or the older one's owner or permissions (EACCES,
///   EPERM, EROFS), which has lost its name, or on which something is mounted. A full disk is no such reason;
/// - with NewFile::in_place, a file without an older one.
///
/// A process that is killed leaves its temporary file behind. It is locked (flock) while it is written, so that others
/// know one that was left behind and remove it: the next replacement of the same file, and remove_left_overs_in().
class UT_API gxReplacement
{
public:
    /// How to write where there is no older file.
    enum class NewFile
    {
        in_place,
        beside
    };

    /// Opens the file, empty; error() and file() tell whether that went well. An older file must allow writing.
    gxReplacement(utString const& path, NewFile new_file);
    /// Without finish(), removes what was written beside; what was written in place stays.
    ~gxReplacement();
    gxReplacement(gxReplacement const&) = delete;
    gxReplacement& operator=(gxReplacement const&) = delete;

    /// Null after a failure, and after finish().
    std::FILE* file() const { return m_file.get(); }

    /// The error number of the failure, or 0.
    int error() const { return m_error; }

    /// The path of the temporary file; empty when there is none.
    std::string const& temporary() const { return m_temporary; }

    /// Ends the writing. A new file that replaces one is on the disk before it takes its place, so that a power cut
    /// leaves the one or the other.
    /// @return 0, or the error number of the first failure, one of writing to file() too
    int finish();

    /// The file to which a path leads over links; it need not exist.
    static std::string follow_links(std::string const& path);

    /// Whether a file of this name is a temporary one.
    static bool is_temporary_name(std::string_view name);

    // These remove the temporary files that nobody writes any more: of one file by its path, and all in a folder.

    static void remove_left_overs_of(std::string const& path);
    static void remove_left_overs_in(std::string const& folder);

private:
    gxReplacement() = default;

    int open(char const* path, NewFile new_file);
    int open_beside(struct stat const* older);
    int create_temporary(std::string path, struct stat const* older);
    int take_place(int held) const;

    std::string m_path;      ///< of the file itself, no link
    std::string m_temporary; ///< beside it
    gxFile m_file;
    bool m_replaces = false;
    int m_error = 0;
};
