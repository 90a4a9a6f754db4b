// The output of a writer.
#pragma once

#include "mrExport.h"
#include "utString.h"

#include <string>

/// A file by its path, or bytes in memory, which are borrowed. A writer treats both alike: it replaces their contents
/// or appends to them. Making one of a path, and copying, may throw std::bad_alloc.
///
/// What is replaced is not lost. Older bytes stay until the new ones are complete. An older regular file stays too: the
/// new file is written beside it, under a temporary name, and then renamed over it. So whatever fails leaves the older
/// file whole. Links are followed, and permissions and owner kept; access control lists and extended attributes are not
/// carried over, and other hard links to the older file keep its contents.
///
/// Three kinds of files are written in place, and a failure leaves what was written before it: a file without an older
/// one; a pipe, a device and whatever else is no regular file; and an older file that may be written but not replaced,
/// because the system does not permit a file in its folder or with its owner, or because something is mounted on it.
///
/// - When the process is killed, an older file is whole, and the temporary file may stay: ".mr-", eight hexadecimal
///   digits, "-", a number, ".tmp". The next writer to the same path removes it. Where there is none, it stays until
///   somebody removes it, or mrtool writes into the folder.
/// - After a power cut there is the older file or the new one, whole. Where there was no older file, the new one may be
///   empty or end early, also when it was written completely shortly before.
class MR_API mrTarget
{
public:
    static mrTarget to_path(utString const& path) { return mrTarget(path, nullptr); }
    static mrTarget to_memory(std::string& bytes) { return mrTarget({}, &bytes); }

    /// Null for a path.
    std::string* bytes() const { return m_bytes; }
    utString const& path() const { return m_path; }

private:
    mrTarget(utString const& path, std::string* bytes) : m_path(path), m_bytes(bytes) {}

    utString m_path;
    std::string* m_bytes;
};
