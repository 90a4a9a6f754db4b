#include "gltfFile.h"

#include "siblingFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

namespace mrtool {

namespace {

// A GLB file: magic, version, length; then chunks, each with length, kind and bytes: the JSON, then a buffer.
constexpr std::size_t header_size = 12;
constexpr std::size_t chunk_header_size = 8;
constexpr std::string_view json_kind = "JSON";
constexpr std::string_view buffer_kind("BIN\0", 4);

std::size_t little_endian(std::string_view bytes)
{
    std::size_t number = 0;
    for (std::size_t at = 4; at-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at]);
    return number;
}

/// Takes a chunk off the front; empty when none of that kind is there. One that the file cuts short is as long
/// as the file allows.
std::string_view take_chunk(std::string_view& left, std::string_view kind)
{
    if (left.size() < chunk_header_size || left.substr(4, 4) != kind)
        return {};
    std::string_view const chunk = left.substr(chunk_header_size, little_endian(left));
    left.remove_prefix(chunk_header_size + chunk.size());
    return chunk;
}

bool read_bytes(std::string const& path, std::string& bytes)
{
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (in)
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    return in.is_open() && !in.bad();
}

/// What a digit of base64 stands for, in either alphabet; -1 for what is none.
int digit_value(char digit)
{
    if (digit >= 'A' && digit <= 'Z')
        return digit - 'A';
    if (digit >= 'a' && digit <= 'z')
        return digit - 'a' + 26;
    if (digit >= '0' && digit <= '9')
        return digit - '0' + 52;
    return digit == '+' || digit == '-' ? 62 : digit == '/' || digit == '_' ? 63 : -1;
}

std::optional<std::string> base64_bytes(std::string_view digits)
{
    while (digits.ends_with('='))
        digits.remove_suffix(1);
    std::string bytes;
    bytes.reserve(digits.size() / 4 * 3 + 2);
    unsigned held = 0;
    int bits = 0;
    for (char const digit : digits) {
        int const value = digit_value(digit);
        if (value < 0)
            return std::nullopt;
        held = (held << 6 | static_cast<unsigned>(value)) & 0xffff;
        bits += 6;
        if (bits < 8)
            continue;
        bits -= 8;
        bytes += static_cast<char>(held >> bits);
    }
    return bytes;
}

} // namespace

Json const& member(Json const& object, char const* name)
{
    static Json const none;
    auto const found = object.is_object() ? object.find(name) : object.end();
    return found == object.end() ? none : *found;
}

Json const& entry(Json const& file, char const* list, Json const& index)
{
    static Json const none;
    Json const& entries = member(file, list);
    bool const there =
        entries.is_array() && index.is_number_unsigned() && index.get<std::size_t>() < entries.size();
    return there ? entries[index.get<std::size_t>()] : none;
}

std::optional<std::string> data_uri_bytes(std::string_view uri)
{
    constexpr std::string_view coding = ";base64";
    std::string_view const head = uri.substr(0, uri.find(','));
    if (!uri.starts_with("data:") || head.size() == uri.size() || !head.ends_with(coding))
        return std::nullopt;
    return base64_bytes(uri.substr(head.size() + 1));
}

bool GltfFile::read(std::string& reason)
{
    if (!read_bytes(m_path, m_bytes)) {
        reason = std::strerror(errno);
        return false;
    }
    std::string_view text = m_bytes;
    if (text.starts_with("glTF") && text.size() >= header_size) {
        std::string_view left = text.substr(header_size);
        text = take_chunk(left, json_kind);
        if (left.substr(0, chunk_header_size).ends_with(buffer_kind))
            m_binary = take_chunk(left, buffer_kind);
    }
    text.remove_suffix(text.size() - (text.find_last_not_of('\0') + 1));
    try {
        m_json = Json::parse(text);
    } catch (Json::exception const& error) {
        std::string const words = error.what();
        reason = words.substr(words.find("] ") == words.npos ? 0 : words.find("] ") + 2);
        return false;
    }
    reason = "its JSON is no object";
    return m_json.is_object();
}

std::optional<ByteRange> GltfFile::view(Json const& number) const
{
    Json const& from = entry(m_json, "bufferViews", number);
    Json const& buffer = member(from, "buffer");
    Json const& at = member(from, "byteOffset");
    Json const& size = member(from, "byteLength");
    if (!buffer.is_number_unsigned() || !size.is_number_unsigned() ||
        !(at.is_null() || at.is_number_unsigned()))
        return std::nullopt;
    return ByteRange{buffer.get<std::size_t>(), at.is_null() ? 0 : at.get<std::size_t>(),
                     size.get<std::size_t>()};
}

std::optional<std::string> GltfFile::bytes(ByteRange const& range, std::string& reason)
{
    std::optional<std::string_view> const bytes = buffer(range.buffer, reason);
    if (!bytes)
        return std::nullopt;
    if (range.at <= bytes->size() && range.size <= bytes->size() - range.at)
        return std::string(bytes->substr(range.at, range.size));
    reason = "the file ends before it does";
    return std::nullopt;
}

std::optional<std::string_view> GltfFile::buffer(std::size_t number, std::string& reason)
{
    Json const& from = entry(m_json, "buffers", number);
    if (!from.is_object()) {
        reason = "the file has no bytes for it";
        return std::nullopt;
    }
    if (auto const known = m_buffers.find(number); known != m_buffers.end())
        return known->second;
    Json const& uri = member(from, "uri");
    if (!uri.is_string()) {
        reason = "the file has no bytes for it";
        return number == 0 ? m_binary : std::nullopt;
    }
    auto const& named = uri.get_ref<std::string const&>();
    std::optional<std::string> bytes = data_uri_bytes(named);
    if (!bytes) {
        std::string const subject = "buffer \"" + named.substr(0, 100) + "\"";
        std::optional<SceneFile> const file = find_scene_file(m_path, named);
        if (!file || !read_bytes(file->path, bytes.emplace())) {
            reason = "its " + subject + ": " + (file ? std::strerror(errno) : no_such_file);
            return std::nullopt;
        }
        if (file->outside)
            m_warnings.push_back("the " + subject + " " + taken_from_outside);
    }
    return m_buffers.emplace(number, std::move(*bytes)).first->second;
}

} // namespace mrtool
