#include "gxPNG.h"

#include "dgCounted.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr char out_of_memory[] = "there is not enough memory for the image";

/// What libpng has to complain of. The size of the text is fixed because it is written where no exception may pass.
struct Complaint
{
    char const* words() const { return no_memory ? out_of_memory : text; }

    char text[128] = "";
    bool no_memory = false; ///< libpng only warns of it and leaves a text out
};

[[noreturn]] void complain(png_structp png, char const* message)
{
    auto& complaint = *static_cast<Complaint*>(png_get_error_ptr(png));
    std::strncpy(complaint.text, message, sizeof complaint.text - 1);
    png_longjmp(png, 1);
}

png_voidp allocate(png_structp png, png_alloc_size_t size)
{
    void* const memory = std::malloc(size);
    if (!memory)
        static_cast<Complaint*>(png_get_mem_ptr(png))->no_memory = true;
    return memory;
}

void release(png_structp, png_voidp memory)
{
    std::free(memory);
}

// Drops warnings: libpng reads such images all the same.
void keep_quiet(png_structp, char const*) {}

/// libpng ends a step that fails by a jump out of it, past every destructor: a step makes no object that has
/// one, and nothing of libpng that may fail is called outside a step.
/// @return whether the step came to its end
template <class Step>
bool attempt(png_structp png, Step const& step)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    step();
    return true;
}

using OwnedImage = dgCounted<dgDuctImage>;

/// One image on its way from a file.
class Decoder
{
public:
    /// @param file_bytes  from the file's position to its end
    Decoder(std::FILE* file, std::int64_t file_bytes) : m_file(file), m_bytes_left(file_bytes)
    {
        m_png = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, &m_complaint, complain, keep_quiet,
                                         &m_complaint, allocate, release);
        m_info = m_png ? png_create_info_struct(m_png) : nullptr;
    }
    ~Decoder() { png_destroy_read_struct(&m_png, &m_info, nullptr); }
    Decoder(Decoder const&) = delete;
    Decoder& operator=(Decoder const&) = delete;

    bool read_header();
    bool read_pixels(dgDuctImage& image);
    void collect_texts(utStringutStringcoTable& texts) const;

    std::int64_t width() const { return png_get_image_width(m_png, m_info); }
    std::int64_t height() const { return png_get_image_height(m_png, m_info); }
    std::int64_t raw_bytes() const;
    char const* complaint() const { return m_complaint.words(); }

private:
    template <class Step>
    bool attempt(Step const& step)
    {
        return ::attempt(m_png, step) && !m_complaint.no_memory;
    }

    static void read_bytes(png_structp png, png_bytep bytes, std::size_t count);
    void set_limits();
    void ask_for_rgba();

    std::FILE* m_file;
    std::int64_t m_bytes_left;
    bool m_in_last_row = false;
    std::int64_t m_last_bytes = 0; // of compressed pixels, read since the last row was begun
    Complaint m_complaint;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
};

void Decoder::read_bytes(png_structp png, png_bytep bytes, std::size_t count)
{
    constexpr char const* ends_early = "the file ends before the image does";
    constexpr png_uint_32 pixel_chunk = 0x49444154; // "IDAT"
    using Reader = gxPNGReaderDuctImage;

    Decoder& self = *static_cast<Decoder*>(png_get_io_ptr(png));
    if (std::fread(bytes, 1, count, self.m_file) != count)
        png_error(png, ends_early);
    self.m_bytes_left -= static_cast<std::int64_t>(count);

    // libpng makes room for a whole chunk, and fills it with zeros, before it reads the first byte of it.
    png_uint_32 const part = png_get_io_state(png) & PNG_IO_MASK_LOC;
    if (part == PNG_IO_CHUNK_HDR && png_get_uint_32(bytes) > self.m_bytes_left)
        png_error(png, ends_early);

    // libpng inflates whatever follows the last row, however much that becomes, and drops it.
    if (self.m_in_last_row && part == PNG_IO_CHUNK_DATA && png_get_io_chunk_type(png) == pixel_chunk)
        self.m_last_bytes += static_cast<std::int64_t>(count);
    if (self.m_last_bytes > Reader::max_last_row_bytes_a_pixel * self.width() + Reader::max_last_row_surplus)
        png_error(png, "the image has data past its last row");
}

void Decoder::set_limits()
{
    using Reader = gxPNGReaderDuctImage;
    png_set_user_limits(m_png, Reader::max_side, Reader::max_side);
    png_set_crc_action(m_png, PNG_CRC_ERROR_QUIT, PNG_CRC_QUIET_USE);
    // Of the ancillary chunks the transparency and the texts are used; the others are not even unpacked.
    png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_AS_DEFAULT,
                                reinterpret_cast<png_const_bytep>("iTXt\0tEXt\0zTXt"), 3);
    // An ancillary chunk beyond a limit is a warning, not the end of the image. libpng counts down to 1,
    // which stands for "no more", and refuses the entry that takes it there.
    png_set_benign_errors(m_png, 1);
    png_set_chunk_cache_max(m_png, Reader::max_texts + 2);
    // The limit holds for what stands before the text in the chunk as well: the keyword, the language.
    png_set_chunk_malloc_max(m_png, Reader::max_text_bytes + 1024);
}

bool Decoder::read_header()
{
    if (!m_info)
        throw std::bad_alloc();
    return attempt([this] {
        png_set_read_fn(m_png, this, read_bytes);
        set_limits();
        png_read_info(m_png, m_info);
    });
}

/// Bytes that the image's rows are when inflated: a filter byte and the samples for each row of each pass.
std::int64_t Decoder::raw_bytes() const
{
    std::int64_t const bits =
        std::int64_t{png_get_channels(m_png, m_info)} * png_get_bit_depth(m_png, m_info);
    auto const of_rows = [bits](std::int64_t columns, std::int64_t rows) {
        return columns > 0 ? rows * (1 + (columns * bits + 7) / 8) : 0;
    };
    if (png_get_interlace_type(m_png, m_info) == PNG_INTERLACE_NONE)
        return of_rows(width(), height());

    std::int64_t bytes = 0;
    for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass)
        bytes += of_rows(PNG_PASS_COLS(width(), pass), PNG_PASS_ROWS(height(), pass));
    return bytes;
}

void Decoder::ask_for_rgba()
{
    png_set_expand(m_png);
    png_set_scale_16(m_png);
    png_set_gray_to_rgb(m_png);
    png_set_add_alpha(m_png, 255, PNG_FILLER_AFTER);
}

bool Decoder::read_pixels(dgDuctImage& image)
{
    return attempt([this, &image] {
        ask_for_rgba();
        int const passes = png_set_interlace_handling(m_png);
        png_read_update_info(m_png, m_info);
        std::size_t const row_bytes = png_get_rowbytes(m_png, m_info);
        if (row_bytes * static_cast<std::size_t>(height()) != image.byte_count())
            png_error(m_png, "its pixels are of an unknown kind");

        std::size_t const last_row = image.byte_count() - row_bytes;
        for (int pass = 1; pass <= passes; ++pass)
            for (std::size_t at = 0; at <= last_row; at += row_bytes) {
                m_in_last_row = pass == passes && at == last_row;
                png_read_row(m_png, image.pixels() + at, nullptr);
            }
        png_read_end(m_png, m_info);
    });
}

void Decoder::collect_texts(utStringutStringcoTable& texts) const
{
    png_textp entries = nullptr;
    int count = 0;
    png_get_text(m_png, m_info, &entries, &count);
    utStringutStringcoTable all = texts; // which stays as it is when memory runs out
    for (int i = 0; i < count; ++i) {
        std::string_view const text = entries[i].text;
        if (text.size() <= gxPNGReaderDuctImage::max_text_bytes)
            all[entries[i].key] = utString(text);
    }
    texts = std::move(all);
}

/// Bytes from the file's position to its end; negative where the file cannot tell.
std::int64_t bytes_left(std::FILE* file)
{
    long const here = std::ftell(file);
    if (here < 0 || std::fseek(file, 0, SEEK_END) != 0)
        return -1;
    long const end = std::ftell(file);
    return std::fseek(file, here, SEEK_SET) == 0 ? end - here : -1;
}

/// Why an image of this header is not read, or null.
char const* refusal(Decoder const& decoder, std::int64_t pixel_limit, std::int64_t file_bytes)
{
    std::int64_t const limit = std::min(pixel_limit, gxPNGReaderDuctImage::max_pixels);
    if (decoder.width() * decoder.height() > limit)
        return "the image has more pixels than are allowed";
    if (decoder.raw_bytes() / gxPNGReaderDuctImage::max_inflation > file_bytes)
        return "the file is too short for the pixels that it announces";
    return nullptr;
}

OwnedImage decode(std::FILE* file, utStringutStringcoTable& texts, std::int64_t pixel_limit, utString& reason)
{
    std::int64_t const file_bytes = bytes_left(file);
    if (file_bytes < 0) {
        reason = "the length of the file cannot be told";
        return nullptr;
    }
    Decoder decoder(file, file_bytes);
    if (!decoder.read_header()) {
        reason = decoder.complaint();
        return nullptr;
    }
    if (char const* refused = refusal(decoder, pixel_limit, file_bytes)) {
        reason = refused;
        return nullptr;
    }
    OwnedImage image(
        new dgDuctImage("", static_cast<int>(decoder.width()), static_cast<int>(decoder.height())));
    if (!decoder.read_pixels(*image)) {
        reason = decoder.complaint();
        return nullptr;
    }
    decoder.collect_texts(texts);
    return image;
}

bool is_ascii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

/// Whether libpng writes the keyword as it is: it drops and replaces what the format does not allow.
bool is_keyword(std::string_view keyword)
{
    bool const printable =
        std::all_of(keyword.begin(), keyword.end(), [](char c) { return c >= ' ' && c <= '~'; });
    return printable && !keyword.empty() && keyword.size() <= 79 && keyword.front() != ' ' &&
           keyword.back() != ' ' && keyword.find("  ") == keyword.npos;
}

bool is_text(std::string_view text)
{
    return text.size() <= gxPNGReaderDuctImage::max_text_bytes && text.find('\0') == text.npos;
}

/// The entries as libpng takes them, pointing into the table.
std::vector<png_text> list_texts(utStringutStringcoTable const& texts)
{
    std::vector<png_text> list;
    for (auto const& [key, text] : texts) {
        png_text entry{};
        bool const international = !is_ascii(text.view()) && utUTF8::is_valid(text.view());
        entry.compression = international ? PNG_ITXT_COMPRESSION_NONE : PNG_TEXT_COMPRESSION_NONE;
        entry.key = const_cast<char*>(key.c_str());
        entry.text = const_cast<char*>(text.c_str());
        entry.text_length = text.length();
        list.push_back(entry);
    }
    return list;
}

bool is_opaque(dgDuctImage const& image)
{
    unsigned char const* const pixels = image.pixels();
    for (std::size_t at = 3; at < image.byte_count(); at += 4)
        if (pixels[at] != 255)
            return false;
    return true;
}

/// One image on its way to a file.
class Encoder
{
public:
    Encoder()
    {
        m_png = png_create_write_struct_2(PNG_LIBPNG_VER_STRING, &m_complaint, complain, keep_quiet,
                                          &m_complaint, allocate, release);
        m_info = m_png ? png_create_info_struct(m_png) : nullptr;
    }
    ~Encoder() { png_destroy_write_struct(&m_png, &m_info); }
    Encoder(Encoder const&) = delete;
    Encoder& operator=(Encoder const&) = delete;

    bool write(dgDuctImage const& image, std::vector<png_text> const& texts, std::FILE* file);

private:
    void write_header(dgDuctImage const& image, bool opaque);

    Complaint m_complaint;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
};

void Encoder::write_header(dgDuctImage const& image, bool opaque)
{
    png_set_user_limits(m_png, gxPNGReaderDuctImage::max_side, gxPNGReaderDuctImage::max_side);
    png_set_IHDR(m_png, m_info, static_cast<png_uint_32>(image.width()),
                 static_cast<png_uint_32>(image.height()), 8,
                 opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(m_png, m_info);
    if (opaque)
        png_set_filler(m_png, 0, PNG_FILLER_AFTER);
}

bool Encoder::write(dgDuctImage const& image, std::vector<png_text> const& texts, std::FILE* file)
{
    if (!m_info)
        return false;
    bool const opaque = is_opaque(image);
    bool const written = attempt(m_png, [&] {
        png_init_io(m_png, file);
        png_set_text(m_png, m_info, texts.data(), static_cast<int>(texts.size()));
        write_header(image, opaque);
        std::size_t const row_bytes = static_cast<std::size_t>(image.width()) * 4;
        for (std::size_t at = 0; at < image.byte_count(); at += row_bytes)
            png_write_row(m_png, image.pixels() + at);
        png_write_end(m_png, m_info);
    });
    return written && !m_complaint.no_memory;
}

} // namespace

dgDuctImage* gxPNGReaderDuctImage::read_file(std::FILE* file, utStringutStringcoTable& texts,
                                             std::int64_t pixel_limit, utString* reason)
{
    utString why_not;
    OwnedImage image;
    try {
        image = decode(file, texts, pixel_limit, why_not);
    } catch (std::bad_alloc const&) {
        ut_say(why_not, out_of_memory);
    }
    if (!image && reason)
        *reason = std::move(why_not);
    return image.release();
}

bool gxPNGWriterDuctImage::can_write(dgDuctImage const& image, utStringutStringcoTable const& texts)
{
    using Reader = gxPNGReaderDuctImage;
    std::int64_t const pixels = std::int64_t{image.width()} * image.height();
    return pixels > 0 && pixels <= Reader::max_pixels && image.width() <= Reader::max_side &&
           image.height() <= Reader::max_side && texts.size() <= Reader::max_texts &&
           std::all_of(texts.begin(), texts.end(), [](auto const& entry) {
               return is_keyword(entry.key.view()) && is_text(entry.value.view());
           });
}

int gxPNGWriterDuctImage::write_file(dgDuctImage const& image, std::FILE* file,
                                     utStringutStringcoTable const& texts)
{
    // A full disc may show only when what the stream holds back is written.
    return can_write(image, texts) && Encoder().write(image, list_texts(texts), file) &&
           std::fflush(file) == 0;
}
