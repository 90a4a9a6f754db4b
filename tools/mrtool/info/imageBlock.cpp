#include "imageBlock.h"

#include "dgCounted.h"
#include "fileKind.h"
#include "messages.h"
#include "utConcat.h"

#include "mrUtils.h"

#include "dgDuctImage.h"
#include "gxOpenFile.h"
#include "gxPNG.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string_view>

namespace mrtool {

namespace {

/// With fewer bytes left there is no further image: the library's own rule.
constexpr std::size_t fewest_bytes = 10;

/// @return null when it cannot be had
gxFile open_at(std::string const& path, long start)
{
    utString ignored;
    gxFile file = gx_open_file(utString(path), ignored);
    if (file && std::fseek(file.get(), start, SEEK_SET) != 0)
        file.reset();
    return file;
}

/// How many pixels the library takes from the file's position to its end.
std::int64_t pixel_budget(std::FILE* file)
{
    long const start = std::ftell(file);
    std::fseek(file, 0, SEEK_END);
    std::int64_t const bytes = std::ftell(file) - start;
    std::fseek(file, start, SEEK_SET);
    return mrUtils::max_block_pixels +
           std::clamp<std::int64_t>(bytes, 0, mrUtils::max_block_pixels) * mrUtils::max_pixels_per_byte;
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
    std::int64_t budget = pixel_budget(file.get());
    char probe[fewest_bytes];
    while ((block.rest = peek(file.get(), probe).size()) == fewest_bytes) {
        long const at = std::ftell(file.get());
        utStringutStringcoTable texts(1, 50);
        utString reason;
        auto const image = dg_hold(gxPNGReaderDuctImage::read_file(
            file.get(), texts, std::min(budget, gxPNGReaderDuctImage::max_pixels), &reason));
        if (!image) {
            block.fault = ut_concat("image ", block.images.size() + 1, ", at byte ", at, ": ", reason);
            return block;
        }
        budget -= std::int64_t{image->width()} * image->height();
        block.images.push_back({std::string(texts.read("Title").view()),
                                std::string(texts.read("DuctImageName").view()), image->width(),
                                image->height()});
    }
    return block;
}

void check_images(ImageBlock const& block, std::vector<std::string>& warnings)
{
    std::set<std::string_view> titles;
    int number = 0;
    for (BlockImage const& image : block.images) {
        ++number;
        if (image.title.empty())
            warnings.push_back(ut_concat("image ", number, " has no title and is left out"));
        else if (!titles.insert(image.title).second)
            warnings.push_back(ut_concat("image ", number,
                                         " takes the place of an earlier one with the title ",
                                         in_quotes(image.title)));
    }
    if (block.rest > 0)
        warnings.push_back(
            ut_concat("the last ", block.rest, " bytes of the file are no image and are left out"));
}

bool image_begins_at(std::string const& path, long start)
{
    gxFile const file = open_at(path, start);
    char probe[fewest_bytes];
    return file && image_format(peek(file.get(), probe), gxImageFileSVG) == gxImageFilePNG;
}

} // namespace mrtool
