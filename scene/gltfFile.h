// The parts of a glTF file.
#pragma once

#include "notes.h"

#include <nlohmann/json.hpp>

#include <compare>
#include <map>
#include <optional>
#include <string_view>

namespace sc {

using Json = nlohmann::json;

/// The object's member of that name, or null; also null where the value is no object.
Json const& get_member(Json const& object, char const* name);

/// The member of the member of that name that the index says: an entry of the file's list of images, say.
Json const& get_entry(Json const& file, char const* list, Json const& index);

/// Whether the JSON is that of version 1, which may leave its number out but has objects where version 2 has lists.
bool is_version_1(Json const& file);

/// Decodes a "data:" URI in base64.
Expected<std::string> decode_data_uri(std::string_view uri);

/// A part of one of a file's buffers.
struct ByteRange
{
    std::size_t buffer = 0;
    std::size_t at = 0;
    std::size_t size = 0;

    auto operator<=>(ByteRange const&) const = default;
};

/// A glTF or GLB file: its JSON and the bytes that this refers to.
class GltfFile
{
public:
    explicit GltfFile(std::string path) : m_path(std::move(path)) {}

    Expected<void> read();

    Json const& json() const { return m_json; }

    /// Notes on the files that were read beside it.
    std::vector<scNote> const& notes() const { return m_notes; }

    /// Finds the bytes of a buffer view; nothing when its number or the view makes no sense.
    std::optional<ByteRange> find_view(Json const& number) const;

    /// Reads the bytes of a range, wherever its buffer is.
    Expected<std::string> read_bytes(ByteRange const& range);

private:
    Expected<std::string_view> read_buffer(std::size_t number);
    Expected<std::string> read_buffer_file(std::string const& named);

    std::string m_path;
    std::string m_bytes;
    Json m_json;
    std::optional<std::string_view> m_binary; ///< the chunk of a GLB file that stands for its first buffer
    std::map<std::size_t, std::string> m_buffers; ///< those that were read from elsewhere
    std::vector<scNote> m_notes;
};

} // namespace sc
