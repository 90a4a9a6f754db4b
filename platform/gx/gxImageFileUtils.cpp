#include "gxImageFileUtils.h"

#include "gxOpenFile.h"
#include "gxPNG.h"
#include "utConcat.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace std::string_view_literals;

constexpr char out_of_memory[] = "there is not enough memory for the image";

/// Stands for any byte in a signature.
constexpr char any_byte = '?';

struct Format
{
    gxImageFileFormat format;
    char const* loader; ///< gdk-pixbuf's name of it; PNG has a reader of its own
    std::array<std::string_view, 4> extensions;
    std::array<std::string_view, 2> signatures = {}; ///< either begins such a file
    bool silent_when_cut = false; ///< whether the loader makes do with what there is and reports nothing
};

// BMP has its reserved bytes in the signature: two letters alone begin many a text.
constexpr Format formats[] = {
    {gxImageFilePNG, nullptr, {"png"}, {"\x89PNG\r\n\x1a\n"sv}},
    {gxImageFileJPEG, "jpeg", {"jpg", "jpeg"}, {"\xff\xd8\xff"sv}, true},
    {gxImageFileTIFF, "tiff", {"tif", "tiff"}, {"II*\0"sv, "MM\0*"sv}},
    {gxImageFileGIF, "gif", {"gif"}, {"GIF8"sv}},
    {gxImageFileBMP, "bmp", {"bmp"}, {"BM????\0\0\0\0"sv}, true},
    {gxImageFileTGA, "tga", {"tga"}},
    {gxImageFileICO, "ico", {"ico"}, {}, true},
    {gxImageFilePNM, "pnm", {"pnm", "pbm", "pgm", "ppm"}, {}, true},
    {gxImageFileSVG, "svg", {"svg"}},
    {gxImageFileWebP, "webp", {"webp"}, {"RIFF????WEBP"sv}},
};

bool begins_with(std::string_view bytes, std::string_view signature)
{
    return !signature.empty() && bytes.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), bytes.begin(),
                      [](char wanted, char byte) { return wanted == any_byte || wanted == byte; });
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equal_without_case(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

struct UnrefObject
{
    void operator()(void* object) const { g_object_unref(object); }
};
using Pixbuf = std::unique_ptr<GdkPixbuf, UnrefObject>;

/// A loader's message, which may quote the file, as one line of text.
utString one_line(char const* message)
{
    std::string line = message;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return utString(line);
}

/// Keeps what gdk-pixbuf has to say about damaged files from standard error while it lives. Only messages of
/// gdk-pixbuf's own, and only for so long: those of an application that uses GLib too go where they went.
class QuietPixbuf
{
public:
    QuietPixbuf() = default;
    ~QuietPixbuf() { g_log_remove_handler(m_domain, m_handler); }
    QuietPixbuf(QuietPixbuf const&) = delete;
    QuietPixbuf& operator=(QuietPixbuf const&) = delete;

private:
    static void ignore(char const*, GLogLevelFlags, char const*, void*) {}

    static constexpr char const* m_domain = "GdkPixbuf";
    guint m_handler = g_log_set_handler(m_domain, G_LOG_LEVEL_MASK, ignore, nullptr);
};

/// Reads one image file with the loader of its format.
class Loader
{
public:
    explicit Loader(Format const& format)
        : m_format(format), m_loader(gdk_pixbuf_loader_new_with_type(format.loader, nullptr))
    {
        if (!m_loader)
            return;
        g_signal_connect(m_loader.get(), "size-prepared", G_CALLBACK(limit_size), this);
        g_signal_connect(m_loader.get(), "area-updated", G_CALLBACK(note_rows), this);
    }

    ~Loader() { g_clear_error(&m_error); }
    Loader(Loader const&) = delete;
    Loader& operator=(Loader const&) = delete;

    /// @return the first frame, upright, or null with the reason
    Pixbuf load(std::FILE* file, utString& reason);

private:
    static void limit_size(GdkPixbufLoader* loader, int width, int height, void* self);
    static void note_rows(GdkPixbufLoader*, int x, int y, int width, int height, void* self);
    utString decode(std::FILE* file);
    bool write_file(std::FILE* file);
    bool is_cut() const;

    Format const& m_format;
    // The rows that came, from above or from below.
    int m_top = std::numeric_limits<int>::max();
    int m_bottom = 0;
    bool m_too_large = false;
    bool m_refused = false;    ///< whether the loader found the file damaged
    GError* m_error = nullptr; ///< why, if it said so
    std::unique_ptr<GdkPixbufLoader, UnrefObject> m_loader;
};

/// Called when the size is known and before room for pixels is allocated.
void Loader::limit_size(GdkPixbufLoader* loader, int width, int height, void* self)
{
    constexpr std::int64_t side = gxImageFileUtils::max_svg_side;
    std::int64_t const longest = std::max(width, height);
    auto& that = *static_cast<Loader*>(self);
    if (that.m_format.format == gxImageFileSVG && longest > side) {
        auto const scaled = [longest](std::int64_t length) {
            return static_cast<int>(std::max<std::int64_t>(1, (length * side + longest / 2) / longest));
        };
        gdk_pixbuf_loader_set_size(loader, scaled(width), scaled(height));
    } else if (std::int64_t{width} * height > gxImageFileUtils::max_pixels) {
        that.m_too_large = true;
        // This size tells loaders that no pixels are wanted.
        gdk_pixbuf_loader_set_size(loader, 0, 0);
    }
}

void Loader::note_rows(GdkPixbufLoader*, int, int y, int, int height, void* self)
{
    auto& that = *static_cast<Loader*>(self);
    that.m_top = std::min(that.m_top, y);
    that.m_bottom = std::max(that.m_bottom, y + height);
}

/// Whether rows are missing although the loader does not complain.
bool Loader::is_cut() const
{
    GdkPixbuf const* const image = gdk_pixbuf_loader_get_pixbuf(m_loader.get());
    return m_format.silent_when_cut && image && (m_top > 0 || m_bottom < gdk_pixbuf_get_height(image));
}

/// Whether a PNM file has its numbers in plain text, by its first bytes.
bool is_plain_text(unsigned char const* bytes, std::size_t count)
{
    return count > 1 && bytes[1] >= '1' && bytes[1] <= '3';
}

/// Hands the file to the loader until that refuses it.
/// @return false when the file is empty
bool Loader::write_file(std::FILE* file)
{
    std::vector<unsigned char> bytes(1 << 16);
    bool empty = true;
    bool plain_text = false;
    while (!m_refused && !m_too_large) {
        std::size_t const count = std::fread(bytes.data(), 1, bytes.size(), file);
        if (count == 0)
            break;
        if (empty)
            plain_text = m_format.format == gxImageFilePNM && is_plain_text(bytes.data(), count);
        empty = false;
        m_refused = !gdk_pixbuf_loader_write(m_loader.get(), bytes.data(), count, &m_error);
    }
    // The loader accepts a number only when it has seen its end.
    unsigned char const line_feed = '\n';
    if (plain_text && !m_refused)
        m_refused = !gdk_pixbuf_loader_write(m_loader.get(), &line_feed, 1, &m_error);
    return !empty;
}

/// @return why the file was not decoded; invalid when it was
utString Loader::decode(std::FILE* file)
{
    bool const empty = !write_file(file);
    bool const cut = is_cut(); // before closing, when the loader of JPEG makes up the missing rows
    // A loader has to be closed in every case; some decode only now.
    if (!gdk_pixbuf_loader_close(m_loader.get(), m_refused ? nullptr : &m_error))
        m_refused = true;
    if (m_too_large)
        return "the image has more pixels than are allowed";
    if (std::ferror(file))
        return "the file cannot be read";
    if (empty)
        return "the file is empty";
    if (m_refused)
        return m_error ? one_line(m_error->message) : utString("the file is damaged");
    return cut ? utString("the file ends before the image does") : utString();
}

Pixbuf Loader::load(std::FILE* file, utString& reason)
{
    if (!m_loader) {
        reason = "no loader for image files of this format is installed";
        return nullptr;
    }
    reason = decode(file);
    if (!reason.invalid())
        return nullptr;
    GdkPixbuf* const first = gdk_pixbuf_loader_get_pixbuf(m_loader.get());
    if (!first) {
        reason = "the file holds no image";
        return nullptr;
    }
    Pixbuf upright(gdk_pixbuf_apply_embedded_orientation(first));
    if (!upright)
        reason = out_of_memory;
    return upright;
}

dgDuctImage* image_of(GdkPixbuf const* pixbuf)
{
    auto const width = static_cast<std::size_t>(gdk_pixbuf_get_width(pixbuf));
    auto const height = static_cast<std::size_t>(gdk_pixbuf_get_height(pixbuf));
    auto const channels = static_cast<std::size_t>(gdk_pixbuf_get_n_channels(pixbuf));
    auto const stride = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(pixbuf));
    unsigned char const* const pixels = gdk_pixbuf_read_pixels(pixbuf);

    auto* const image = new dgDuctImage("", static_cast<int>(width), static_cast<int>(height));
    unsigned char* to = image->pixels();
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x, to += 4) {
            unsigned char const* const from = pixels + y * stride + x * channels;
            std::memcpy(to, from, 3);
            to[3] = channels == 4 ? from[3] : 255;
        }
    return image;
}

dgDuctImage* read_with_loader(std::FILE* file, Format const& format, utString& reason)
{
    QuietPixbuf const quiet;
    // The loader, which holds the pixels too, is gone before they are copied when they were turned.
    Pixbuf const pixbuf = Loader(format).load(file, reason);
    return pixbuf ? image_of(pixbuf.get()) : nullptr;
}

dgDuctImage* read_with_format(std::FILE* file, gxImageFileFormat format, utString& reason)
{
    auto const known = std::find_if(std::begin(formats), std::end(formats),
                                    [format](Format const& row) { return row.format == format; });
    if (known == std::end(formats)) {
        reason = "the format is not known";
        return nullptr;
    }
    if (known->loader)
        return read_with_loader(file, *known, reason);
    utStringutStringcoTable texts(4, 50);
    return gxPNGReaderDuctImage::read_file(file, texts, gxImageFileUtils::max_pixels, &reason);
}

} // namespace

char const* gxImageFileUtils::get_extension(char const* path, char separator)
{
    if (!path)
        return nullptr;
    char const* const slash = std::strrchr(path, '/');
    char const* const found = std::strrchr(slash ? slash + 1 : path, separator);
    return found && found[0] && found[1] ? found + 1 : nullptr;
}

int gxImageFileUtils::file_format_from_extension(utString const& extension, gxImageFileFormat& format)
{
    if (extension.empty())
        return 0;
    for (Format const& known : formats)
        for (std::string_view const name : known.extensions)
            if (equal_without_case(extension.view(), name)) {
                format = known.format;
                return 1;
            }
    return 0;
}

int gxImageFileUtils::file_format_from_content(std::string_view beginning, gxImageFileFormat& format)
{
    for (Format const& known : formats)
        for (std::string_view const signature : known.signatures)
            if (begins_with(beginning, signature)) {
                format = known.format;
                return 1;
            }
    return 0;
}

dgDuctImage* gxImageFileUtils::read_image_file(utString const& path, gxImageFileFormat format,
                                               utString* reason)
{
    utString why_not;
    try {
        if (gxFile const file = gx_open_file(path, why_not))
            return read_image_file(file.get(), format, reason);
        why_not = utString(ut_concat("the file cannot be opened: ", why_not));
    } catch (std::bad_alloc const&) {
        ut_say(why_not, out_of_memory);
    }
    if (reason)
        *reason = std::move(why_not);
    return nullptr;
}

dgDuctImage* gxImageFileUtils::read_image_file(std::FILE* file, gxImageFileFormat format, utString* reason)
{
    utString why_not;
    dgDuctImage* image = nullptr;
    try {
        image = read_with_format(file, format, why_not);
    } catch (std::bad_alloc const&) {
        ut_say(why_not, out_of_memory);
    }
    if (!image && reason)
        *reason = std::move(why_not);
    return image;
}
