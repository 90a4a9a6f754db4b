// PNG images: what is read can be written, and what is written has the same pixels and texts.
#include "fuzz.h"

#include "dgCounted.h"
#include "gxPNG.h"

#include <cstdint>
#include <cstdio>
#include <memory>

namespace {

using Image = dgCounted<dgDuctImage>;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File open(MemoryFile const& file, char const* mode)
{
    return File(std::fopen(file.path().c_str(), mode), std::fclose);
}

Image read(MemoryFile const& file, utStringutStringcoTable& texts)
{
    constexpr std::int64_t pixels = 1 << 20; // so that an input takes no time but for what it is
    return Image(gxPNGReaderDuctImage::read_file(open(file, "rb").get(), texts, pixels));
}

} // namespace

void try_input(std::string const& bytes)
{
    utStringutStringcoTable texts(8, 70);
    Image const image = read(MemoryFile(with_checksums(bytes)), texts);
    // Not every text that others write can be written.
    MemoryFile const written;
    if (!image || !gxPNGWriterDuctImage::write_file(*image, open(written, "wb").get(), texts))
        return;
    utStringutStringcoTable same_texts(8, 70);
    Image const same = read(written, same_texts);
    require(same && same->equal(image.get()), "an image is the same when it is written and read");
    require(texts.size() == same_texts.size(), "an image that was written has all its texts");
    for (auto const& [key, text] : texts)
        require(same_texts.read(key) == text, "a text is the same when it is written and read");
}
