#include "ntFileOps.h"

#include "mrTest.h"

#include "utString.h"

#include <tuple>

TEST(ntFileOps, SizesAreTakenModuloTwoToTheThirtyTwo)
{
    TestFolder const folder;
    std::string const path = folder.path("file");
    write_bytes(path, "");
    EXPECT_TRUE(ntFileOps::exists(path.c_str()));
    using Case = std::tuple<std::uintmax_t, int>;
    for (auto const& [size, taken] : {Case{5, 5}, Case{0xC0000000, -0x40000000}, Case{0x100000007, 7}}) {
        std::filesystem::resize_file(path, size);
        EXPECT_EQ(ntFileOps::file_size(path.c_str()), taken) << size;
    }

    std::string const missing = folder.path("missing");
    EXPECT_TRUE(ntFileOps::exists(folder.path("").c_str()));
    EXPECT_EQ(ntFileOps::file_size(folder.path("").c_str()), 0);
    EXPECT_FALSE(ntFileOps::exists(missing.c_str()));
    EXPECT_FALSE(ntFileOps::exists(utString()));
    EXPECT_FALSE(ntFileOps::exists(std::string(10000, 'x').c_str()));
    EXPECT_EQ(ntFileOps::file_size(missing.c_str()), 0);
}
