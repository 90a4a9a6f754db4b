#include "mrImageBlock.h"

#include "mrTarget.h"
#include "mrTest.h"
#include "mrUtils.h"
#include "testImage.h"

#include "gxOpenFile.h"

#include <cerrno>
#include <string>

namespace {

/// A file in memory of which one call fails.
struct Faulty
{
    std::string bytes;
    int countdown = 0; ///< calls until the one that fails
    std::size_t position = 0;

    bool fails()
    {
        errno = EIO;
        return countdown-- == 0;
    }
};

ssize_t read_faulty(void* cookie, char* bytes, std::size_t count)
{
    auto& file = *static_cast<Faulty*>(cookie);
    if (file.fails())
        return -1;
    std::size_t const copied = file.bytes.copy(bytes, count, file.position);
    file.position += copied;
    return static_cast<ssize_t>(copied);
}

int seek_faulty(void* cookie, off64_t* offset, int whence)
{
    auto& file = *static_cast<Faulty*>(cookie);
    if (file.fails())
        return -1;
    std::size_t const start = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.position : file.bytes.size();
    file.position = std::min(start + static_cast<std::size_t>(*offset), file.bytes.size());
    *offset = static_cast<off64_t>(file.position);
    return 0;
}

/// @return how many images came, where the walk was whole
std::string walk(Faulty& file)
{
    gxFile const stream(fopencookie(&file, "rb", {read_faulty, nullptr, seek_faulty, nullptr}));
    std::setvbuf(stream.get(), nullptr, _IONBF, 0); // so that each step is a call
    mrImageBlock block(stream.get(), 0);
    int images = 0;
    for (mrBlockImage image; block.read_next(image);)
        ++images;
    return block.fault().reason.invalid() ? std::to_string(images) : "fault";
}

} // namespace

TEST(mrImageBlock, NoSeekOrReadFailsInSilence)
{
    Image const first = dg_hold(new dgDuctImage("", 2, 1));
    Image const second = dg_hold(new dgDuctImage("", 3, 1));
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    images["a"] = first.get();
    images["b"] = second.get();
    Faulty file;
    mrFault fault;
    ASSERT_EQ(mrUtils::write_images(images, mrTarget::to_memory(file.bytes), fault), 1);

    int calls = 0;
    for (;; ++calls) {
        file.countdown = calls;
        file.position = 0;
        std::string const came = walk(file);
        if (file.countdown >= 0) {
            EXPECT_EQ(came, "2") << "undisturbed";
            break;
        }
        EXPECT_EQ(came, "fault") << calls;
    }
    EXPECT_GT(calls, 20);
}
