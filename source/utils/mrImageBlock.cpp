#include "mrImageBlock.h"

#include "mrGuard.h"

#include "gxPNG.h"
#include "utConcat.h"
#include "xmlUtils.h"

#include <algorithm>
#include <string_view>

namespace {

using Images = utStringdgDuctImagecoTablePtrcoPtrcoTable;

utString const title_key = mrImageBlock::title_key;
utString const name_key = mrImageBlock::name_key;

constexpr char reading_failed[] = "reading it failed before its end";

/// Counts the bytes from a position to the end of the file, and moves to the position, at most to the end.
/// @return -1 on failure
std::int64_t count_bytes_from(std::FILE* file, std::int64_t start)
{
    if (std::fseek(file, 0, SEEK_END) != 0)
        return -1;
    std::int64_t const size = std::ftell(file);
    if (size < 0 || std::fseek(file, std::min(start, size), SEEK_SET) != 0)
        return -1;
    return std::max<std::int64_t>(size - start, 0);
}

// Bounds that keep the budget within 64 bits.
constexpr std::int64_t most_counted_bytes = std::int64_t{1} << 28;
constexpr std::int64_t highest_limit = std::int64_t{1} << 30;

std::int64_t bound_limit(std::int64_t limit)
{
    return std::clamp<std::int64_t>(limit, 0, highest_limit);
}

void remark(mrFaultcoDList* remarks, std::string const& words, std::int64_t byte)
{
    if (remarks)
        remarks->append({.reason = utString(words), .byte = byte});
}

} // namespace

mrImageBlock::mrImageBlock(std::FILE* file, std::int64_t start, mrReadLimits const& limits) : m_file(file)
{
    std::int64_t const bytes = start < 0 ? -1 : count_bytes_from(file, start);
    if (bytes < 0) {
        fail("the images cannot be read");
        return;
    }
    m_texts_left = bytes + max_inflated_texts;
    m_pixels_left = bound_limit(limits.pixels) +
                    std::min(bytes, most_counted_bytes) * bound_limit(limits.pixels_per_byte);
}

int mrImageBlock::read_next(mrBlockImage& image)
{
    return mr_guard(m_fault, 0, [&] { return read_image(image); });
}

int mrImageBlock::read_image(mrBlockImage& image)
{
    char probe[fewest_bytes];
    if (!m_fault.reason.invalid())
        return 0;
    if (m_rest = peek(probe); m_rest < fewest_bytes)
        return 0;
    ++m_number;
    image = {};
    if (image.byte = std::ftell(m_file); image.byte < 0) {
        fail(reading_failed);
        return 0;
    }
    utStringutStringcoTable texts(mrInitialSize, mrFillLimit);
    utString reason;
    image.image = dg_hold(gxPNGReaderDuctImage::read_file(
        m_file, texts, std::min(m_pixels_left, gxPNGReaderDuctImage::max_pixels), &reason));
    if (!image.image) {
        refuse(reason, image.byte);
        return 0;
    }
    image.width = image.image->width();
    image.height = image.image->height();
    m_pixels_left -= std::int64_t{image.width} * image.height;
    image.title = texts.read(title_key);
    image.name = texts.read(name_key);
    m_texts_left -= static_cast<std::int64_t>(image.title.length() + image.name.length());
    if (m_texts_left < 0) {
        refuse("the titles and names of the images have more bytes than are allowed", image.byte);
        return 0;
    }
    if (!image.name.empty())
        image.image->new_name(image.name.c_str());
    return 1;
}

void mrImageBlock::refuse(utString const& reason, std::int64_t byte)
{
    m_fault = {.reason = reason, .part = utString(ut_concat("image ", m_number)), .byte = byte};
}

int mrImageBlock::read_titled(std::function<bool(mrBlockImage&)> const& store, mrFaultcoDList* remarks)
{
    return mr_guard(m_fault, 0, [&] {
        for (mrBlockImage image; read_next(image);) {
            utString const title = image.title; // store may move the image away
            if (title.empty())
                remark(remarks, ut_concat("image ", m_number, " has no title and is left out"), image.byte);
            else if (store(image))
                remark(remarks,
                       ut_concat("image ", m_number, " takes the place of an earlier one with the title ",
                                 ut_quote(title.view())),
                       image.byte);
        }
        if (!m_fault.reason.invalid())
            return 0;
        if (m_rest > 0)
            remark(remarks,
                   ut_concat("the last ", m_rest, " bytes of the file are no image and are left out"),
                   std::ftell(m_file));
        return 1;
    });
}

int mrImageBlock::read_into(Images& images, mrFaultcoDList* remarks)
{
    auto const store = [&](mrBlockImage& read) {
        dgDuctImage*& place = images[read.title];
        dgCounted<dgDuctImage> const replaced(place);
        place = read.image.release();
        return replaced != nullptr;
    };
    return read_titled(store, remarks);
}

bool mrImageBlock::at_image()
{
    char bytes[fewest_bytes];
    return m_fault.reason.invalid() && mr_guard(m_fault, false, [&] {
               return std::string_view(bytes, peek(bytes)).starts_with(gxPNGReaderDuctImage::signature);
           });
}

/// Reads bytes and steps back over them.
std::size_t mrImageBlock::peek(char (&bytes)[fewest_bytes])
{
    std::size_t const count = std::fread(bytes, 1, fewest_bytes, m_file);
    if (std::ferror(m_file) || std::fseek(m_file, -static_cast<long>(count), SEEK_CUR) != 0)
        fail(reading_failed);
    return m_fault.reason.invalid() ? count : 0;
}

int mrImageBlock::check_titles(Images const& images, mrFault& fault)
{
    return mr_guard(fault, 0, [&] {
        coTable<utString, utString> changed(mrInitialSize, mrFillLimit); // from a title to its key
        for (auto const& [key, image] : images) {
            utString const title(xmlUtils::carried(key).view());
            if (title == key)
                continue;
            utString const* const other = images.member(title) ? &title : changed.find(title);
            if (other) {
                fault = {.reason =
                             utString(ut_concat("its title would be that of image ", ut_quote(other->view()),
                                                ", since control characters are written as pictures")),
                         .part = utString(ut_concat("image ", ut_quote(key.view())))};
                return 0;
            }
            changed[title] = key;
        }
        return 1;
    });
}

mrImageBlock::Written mrImageBlock::write(Images const& images, std::FILE* file, mrFault& fault)
{
    return mr_guard(fault, Written::out_of_memory, [&] {
        for (auto const& [key, image] : images) {
            fault = {.reason = "there is no image",
                     .part = utString(ut_concat("image ", ut_quote(key.view())))};
            if (!image)
                return Written::not_all;
            utStringutStringcoTable texts(mrInitialSize, mrFillLimit);
            texts[title_key] = xmlUtils::carried(key);
            texts[name_key] = xmlUtils::carried(image->name());
            fault.reason = "it has no pixels, too many, or a title or name that is too long";
            if (!gxPNGWriterDuctImage::can_write(*image, texts))
                return Written::not_all;
            fault.reason = "the file takes no more";
            if (gxPNGWriterDuctImage::write_file(*image, file, texts))
                continue;
            if (!std::ferror(file))
                throw std::bad_alloc();
            return Written::not_all;
        }
        fault = {};
        return Written::all;
    });
}
