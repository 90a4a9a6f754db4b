#include "gltfFile.h"

#include "readers.h"
#include "siblingFile.h"

#include "gxFileHints.h"
#include "gxOpenFile.h"
#include "utNeverDestroyed.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <iterator>

namespace sc {

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

/// Takes a chunk off the front; empty when none of that kind is there. One that the file cuts short is as
/// long as the file allows.
std::string_view take_chunk(std::string_view& left, std::string_view kind)
{
    if (left.size() < chunk_header_size || left.substr(4, 4) != kind)
        return {};
    std::string_view const chunk = left.substr(chunk_header_size, little_endian(left));
    left.remove_prefix(chunk_header_size + chunk.size());
    return chunk;
}

Expected<std::string> read_file(std::string const& path)
{
    utString reason;
    gxFile const file = gx_open_file(utString(path), reason);
    if (!file)
        return because(reason.c_str());
    gxFileStream in(file.get());
    std::string bytes(std::istreambuf_iterator<char>(in), {});
    if (std::ferror(file.get()))
        return because(std::strerror(errno));
    return bytes;
}

/// Decodes a digit of base64 in either alphabet; -1 for another character.
int decode_digit(char digit)
{
    if (digit >= 'A' && digit <= 'Z')
        return digit - 'A';
    if (digit >= 'a' && digit <= 'z')
        return digit - 'a' + 26;
    if (digit >= '0' && digit <= '9')
        return digit - '0' + 52;
    return digit == '+' || digit == '-' ? 62 : digit == '/' || digit == '_' ? 63 : -1;
}

std::optional<std::string> decode_base64(std::string_view digits)
{
    while (digits.ends_with('='))
        digits.remove_suffix(1);
    std::string bytes;
    bytes.reserve(digits.size() / 4 * 3 + 2);
    unsigned held = 0;
    int bits = 0;
    for (char const digit : digits) {
        int const value = decode_digit(digit);
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

Json const& get_member(Json const& object, char const* name)
{
    static utNeverDestroyed<Json> const none;
    auto const found = object.is_object() ? object.find(name) : object.end();
    return found == object.end() ? *none : *found;
}

Json const& get_entry(Json const& file, char const* list, Json const& index)
{
    static utNeverDestroyed<Json> const none;
    Json const& entries = get_member(file, list);
    bool const there =
        entries.is_array() && index.is_number_unsigned() && index.get<std::size_t>() < entries.size();
    return there ? entries[index.get<std::size_t>()] : *none;
}

Expected<std::string> decode_data_uri(std::string_view uri)
{
    std::string_view const head = uri.substr(0, uri.find(','));
    if (uri.starts_with("data:") && head.size() < uri.size() && head.ends_with(";base64"))
        if (std::optional<std::string> bytes = decode_base64(uri.substr(head.size() + 1)))
            return std::move(*bytes);
    return because("its \"data:\" URI makes no sense");
}

bool is_gltf(std::string const& path)
{
    std::string const extension = gx_extension(path);
    return extension == "gltf" || extension == "glb" || gx_read_beginning(path).starts_with("glTF");
}

bool is_version_1(Json const& file)
{
    Json const& version = get_member(get_member(file, "asset"), "version");
    if (version.is_string())
        return version.get_ref<std::string const&>().starts_with("1.");
    if (version.is_number())
        return std::floor(version.get<double>()) == 1.0;
    return version.is_null() &&
           (get_member(file, "meshes").is_object() || get_member(file, "nodes").is_object());
}

Expected<void> GltfFile::read()
{
    Expected<std::string> bytes = read_file(m_path);
    if (!bytes)
        return because(bytes.error());
    m_bytes = std::move(*bytes);
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
        return because(words.substr(words.find("] ") == words.npos ? 0 : words.find("] ") + 2));
    }
    if (!m_json.is_object())
        return because("its JSON is no object");
    return {};
}

std::optional<ByteRange> GltfFile::find_view(Json const& number) const
{
    Json const& from = get_entry(m_json, "bufferViews", number);
    Json const& buffer = get_member(from, "buffer");
    Json const& at = get_member(from, "byteOffset");
    Json const& size = get_member(from, "byteLength");
    if (!buffer.is_number_unsigned() || !size.is_number_unsigned() ||
        !(at.is_null() || at.is_number_unsigned()))
        return std::nullopt;
    return ByteRange{buffer.get<std::size_t>(), at.is_null() ? 0 : at.get<std::size_t>(),
                     size.get<std::size_t>()};
}

Expected<std::string> GltfFile::read_bytes(ByteRange const& range)
{
    Expected<std::string_view> const bytes = read_buffer(range.buffer);
    if (!bytes)
        return because(bytes.error());
    if (range.at > bytes->size() || range.size > bytes->size() - range.at)
        return because("the file ends before it does");
    return std::string(bytes->substr(range.at, range.size));
}

Expected<std::string_view> GltfFile::read_buffer(std::size_t number)
{
    constexpr char nowhere[] = "the file has no bytes for it";
    Json const& from = get_entry(m_json, "buffers", number);
    if (!from.is_object())
        return because(nowhere);
    if (auto const known = m_buffers.find(number); known != m_buffers.end())
        return known->second;
    Json const& uri = get_member(from, "uri");
    if (!uri.is_string()) {
        if (number == 0 && m_binary)
            return *m_binary;
        return because(nowhere);
    }
    auto const& named = uri.get_ref<std::string const&>();
    Expected<std::string> bytes = decode_data_uri(named);
    if (!bytes)
        bytes = read_buffer_file(named);
    if (!bytes)
        return because(bytes.error());
    return m_buffers.emplace(number, std::move(*bytes)).first->second;
}

Expected<std::string> GltfFile::read_buffer_file(std::string const& named)
{
    std::string const shown = named.substr(0, 100);
    std::string const subject = ut_concat("its buffer \"", shown, "\": ");
    std::optional<SceneFile> const file = find_scene_file(m_path, named);
    if (!file)
        return because(subject + no_such_file);
    Expected<std::string> bytes = read_file(file->path);
    if (!bytes)
        return because(subject + bytes.error());
    if (file->outside)
        m_notes.push_back(
            make_note(scNoteOutside, "the buffer \"%1\" is taken from outside the scene's folder", shown));
    return bytes;
}

} // namespace sc
