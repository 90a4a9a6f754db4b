#include "ntFileOps.h"

#include "mrTest.h"

#include "utString.h"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>

namespace {

std::array<int, 6> modified(std::string const& path)
{
    ntFileDate const date = ntFileOps::file_modified_date(path.c_str());
    return {date.year(), date.month(), date.day(), date.hour(), date.minute(), date.seconds()};
}

} // namespace

TEST(ntFileOps, DatesAreFullYearsAndMonthsFromOneInUtc)
{
    TestFolder const folder;
    std::string const path = folder.path("file");
    write_bytes(path, "");
    using Case = std::tuple<time_t, std::array<int, 6>>;
    for (auto const& [seconds, date] :
         {Case{0, {1970, 1, 1, 0, 0, 0}}, Case{-1, {1969, 12, 31, 23, 59, 59}},
          Case{951827696, {2000, 2, 29, 12, 34, 56}}, Case{10000000000, {0, 0, 0, 0, 0, 0}}}) {
        timespec const times[2] = {{seconds, 0}, {seconds, 999'999'999}};
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
        EXPECT_EQ(modified(path), date) << seconds;
    }
    EXPECT_EQ(modified(folder.path("missing")), (std::array<int, 6>{}));
}

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
