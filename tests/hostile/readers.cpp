#include "readers.h"

#include "confined.h"
#include "testImage.h"

#include "gxPNG.h"
#include "mrColourPalette.h"
#include "mrFileMat.h"
#include "mrImageCache.h"
#include "mrUtils.h"
#include "utAssert.h"
#include "utClock.h"
#include "xmlParser.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

/// The word for a status that counts from 0.
std::string word(int status, std::vector<std::string> const& words)
{
    return status >= 0 && status < std::ssize(words) ? words[static_cast<std::size_t>(status)] : "no status";
}

std::string words(mrFileMatReadStatus status)
{
    return word(status, {"open failed", "read", "no document", "bad content"});
}

} // namespace

std::string parse_document(std::string const& text)
{
    xmlDocument document;
    xmlParser parser;
    int const result = parser.parse(utString(text), document);
    if ((document.document_element() != nullptr) != (result == 1) ||
        parser.error().reason.invalid() != result)
        return "result, document and reason do not agree";
    if (result)
        return "read";
    return std::string(parser.error().reason.view());
}

std::string read_material(std::string const& path)
{
    return words(mrFileMat().read(path.c_str()));
}

std::string read_cache(std::string const& path)
{
    // A file of a million bad lines makes as many reports, which nobody is to keep.
    utAssertHandler const before = ut_set_assert_handler([](char const*, int, char const*) {});
    utClock::set(1230768000 + 60000); // in 2009's first day, whatever the time zone
    unsigned int const hash = 1u << 31;
    std::string outcome;
    {
        mrImageCache cache(2, 1);
        cache.add_image(hash, new dgDuctImage("", 1, 1));
        mrFileMatReadStatus const status = cache.read(path.c_str());
        bool const lost = status != mrFileMatReadOK && !(cache.size() == 1 && cache.hash_value_exists(hash));
        outcome =
            words(status) + (lost ? ", an entry lost" : ", " + std::to_string(cache.size()) + " entries");
    }
    utClock::unset();
    ut_set_assert_handler(before);
    return outcome;
}

std::string read_palette(std::string const& path)
{
    std::ifstream in(path, std::ios::binary);
    mrColourPalette palette;
    mrPaletteFileError const error = in ? mrUtils::read_pcp(in, palette) : mrPaletteFileOpenFailed;
    return word(error, {"read", "open failed", "bad format", "duplicate name", "out of range"}) + ", " +
           std::to_string(palette.size()) + " colours";
}

std::string read_block(std::string const& path)
{
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    int const result = mrUtils::read_images(path.c_str(), 0, images);
    std::string const count = std::to_string(images.size());
    for (auto const& [title, image] : images)
        image->unreference();
    return count + (result ? " images" : " images, then none");
}

std::string read_png(std::string const& path)
{
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (!file)
        return "open failed";
    utStringutStringcoTable texts(mrInitialSize, mrFillLimit);
    utString reason;
    Image const image(
        gxPNGReaderDuctImage::read_file(file, texts, gxPNGReaderDuctImage::max_pixels, &reason));
    std::fclose(file);
    if (!image)
        return std::string(reason.view());
    std::string const size = std::to_string(image->width()) + " x " + std::to_string(image->height());
    utString const& title = texts.read("Title");
    return title.empty() ? size : size + " \"" + title.c_str() + '"';
}

std::string repeated(std::string const& unit, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += unit;
    return text;
}

void HostileFile::expect(std::string const& title, std::string const& bytes,
                         std::string (*reader)(std::string const&), std::string const& outcome,
                         std::int64_t pixels) const
{
    write_bytes(path, bytes);
    Hostile const input{title, static_cast<std::int64_t>(bytes.size()), pixels};
    EXPECT_EQ(confined(input, [&] { return reader(path); }), outcome) << title;
}
