#include "imageBlock.h"

#include "fileKind.h"
#include "text.h"

#include "gxOpenFile.h"
#include "gxPNG.h"

#include <string_view>

namespace mrtool {

namespace {

/// With fewer bytes left there is no further image: the library's own rule.
constexpr std::size_t fewest_bytes = 10;

/// @return null when it cannot be had
gxFile open_at(std::string const& path, long start)
{
    utString ignored;
    gxFile file = gx_open_file(path.c_str(), ignored);
    if (file && std::fseek(file.get(), start, SEEK_SET) != 0)
        file.reset();
    return file;
}

std::string_view peek(std::FILE* file, char (&bytes)[fewest_bytes])
{
    long const at = std::ftell(file);
    std::size_t const got = std::fread(bytes, 1, sizeof bytes, file);
    std::fseek(file, at, SEEK_SET);
    return {bytes, got};
}

} // namespace

ImageBlock read_image_block(std::string const& path, long start)
{
    ImageBlock block;
    gxFile const file = open_at(path, start);
    if (!file) {
        block.fault = "the images cannot be read";
        return block;
    }
    char probe[fewest_bytes];
    while ((block.rest = peek(file.get(), probe).size()) == fewest_bytes) {
        long const at = std::ftell(file.get());
        utStringutStringcoTable texts(1, 50);
        utString reason;
        dgDuctImage* const image =
            gxPNGReaderDuctImage::read_file(file.get(), texts, gxPNGReaderDuctImage::max_pixels, &reason);
        if (!image) {
            block.fault = text("image ", block.titles.size() + 1, ", at byte ", at, ": ", reason);
            return block;
        }
        image->unreference();
        block.titles.emplace_back(texts.read("Title").view());
    }
    return block;
}

bool image_begins_at(std::string const& path, long start)
{
    gxFile const file = open_at(path, start);
    char probe[fewest_bytes];
    return file && image_format(peek(file.get(), probe), gxImageFileSVG) == gxImageFilePNG;
}

} // namespace mrtool
