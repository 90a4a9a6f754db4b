#include "gxOpenFile.h"

#include "mrTest.h"

#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

std::string read_all(gxFile const& file)
{
    gxFileStream in(file.get());
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

TEST(gxOpenFile, ReadsNoFurtherThanTheSizeThatAFileHad)
{
    TestFolder const folder;
    std::string const path = folder.path("growing");
    std::string const before(100'000, 'a');
    write_bytes(path, before);
    utString reason;
    gxDescriptor const descriptor = gx_open_regular(utString(path), reason);
    gxFile const by_path = gx_open_file(utString(path), reason);
    gxFile const by_descriptor = gx_open_descriptor(descriptor.get(), reason);
    std::ofstream(path, std::ios::app) << std::string(100'000, 'b');
    for (gxFile const* file : {&by_path, &by_descriptor}) {
        ASSERT_TRUE(*file) << reason.view();
        EXPECT_EQ(read_all(*file), before);
        EXPECT_EQ(std::fseek(file->get(), -1, SEEK_END), 0);
        EXPECT_EQ(std::ftell(file->get()), 99'999);
        EXPECT_EQ(std::fgetc(file->get()), 'a');
        EXPECT_EQ(std::fgetc(file->get()), EOF);
        EXPECT_FALSE(std::ferror(file->get()));
        EXPECT_NE(std::fseek(file->get(), -100'001, SEEK_END), 0);
    }
    EXPECT_EQ(lseek(descriptor.get(), 0, SEEK_CUR), 0) << "the descriptor's own position";
}

/// The system makes up what stands in such a file, some of it for whoever reads it first.
TEST(gxOpenFile, FindsNothingInAFileWithoutASize)
{
    utString reason;
    gxFile const file = gx_open_file("/proc/self/status", reason);
    ASSERT_TRUE(file) << reason.view();
    EXPECT_EQ(read_all(file), "");
}

TEST(gxOpenFile, RefusesWhatIsNoRegularFile)
{
    utString reason;
    for (auto const& [path, why] : {std::pair<utString, char const*>("/dev/zero", "not a file"),
                                    {"/tmp", "a folder, not a file"},
                                    {utString(std::string_view("/etc/passwd\0a", 13)), "Invalid argument"}}) {
        EXPECT_FALSE(gx_open_file(path, reason));
        EXPECT_EQ(reason.view(), why);
        EXPECT_FALSE(gx_open_regular(path, reason));
        EXPECT_EQ(reason.view(), why);
    }
    EXPECT_FALSE(gx_open_descriptor(-1, reason));
    EXPECT_EQ(reason.view(), "Bad file descriptor");
}
