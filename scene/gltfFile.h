// The parts of a glTF file.
#pragma once

#include <nlohmann/json.hpp>

#include <compare>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mrtool {

using Json = nlohmann::json;

/// The member of that name; a null value when there is none or this is no object.
Json const& member(Json const& object, char const* name);

/// The member of the member of that name that the index says: an entry of the file's list of images, say.
Json const& entry(Json const& file, char const* list, Json const& index);

/// The bytes of a "data:" URI in base64; nothing when it is no such URI.
std::optional<std::string> data_uri_bytes(std::string_view uri);

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

    /// @param reason  receives in words why it cannot be read
    bool read(std::string& reason);

    Json const& json() const { return m_json; }

    /// What is to be said of the files that were read beside it.
    std::vector<std::string> const& warnings() const { return m_warnings; }

    /// Where the buffer view of that number is; nothing when there is none that makes sense.
    std::optional<ByteRange> view(Json const& number) const;

    /// The bytes of a range, wherever its buffer is.
    /// @param reason  receives in words why there are none
    std::optional<std::string> bytes(ByteRange const& range, std::string& reason);

private:
    std::optional<std::string_view> buffer(std::size_t number, std::string& reason);

    std::string m_path;
    std::string m_bytes;
    Json m_json;
    std::optional<std::string_view> m_binary; ///< the chunk of a GLB file that stands for its first buffer
    std::map<std::size_t, std::string> m_buffers; ///< those that were read from elsewhere
    std::vector<std::string> m_warnings;
};

} // namespace mrtool
