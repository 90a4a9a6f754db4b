#include "mrTest.h"

#include "utAssert.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>

namespace {

std::vector<std::string> recorded;

void record(char const* file, int, char const* message)
{
    recorded.push_back(std::string(file) + ": " + message);
}

/// Fails a test that leaves behind a report which it did not take, or an open file.
class NothingLeftBehind : public testing::EmptyTestEventListener
{
    void OnTestStart(testing::TestInfo const&) override
    {
        recorded.clear();
        m_handles = count_open_files();
    }

    void OnTestEnd(testing::TestInfo const&) override
    {
        for (std::string const& report : reports())
            ADD_FAILURE() << "unexpected report: " << report;
        EXPECT_EQ(count_open_files(), m_handles) << "file handles left open";
    }

    std::ptrdiff_t m_handles = 0;
};

} // namespace

std::vector<std::string> reports()
{
    return std::exchange(recorded, {});
}

std::ptrdiff_t count_open_files()
{
    std::filesystem::directory_iterator const listing("/proc/self/fd");
    return std::distance(begin(listing), end(listing));
}

TestFolder::TestFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "mr-test-XXXXXX").string();
    m_path = mkdtemp(name.data());
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string read_bytes(std::string const& path)
{
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void write_bytes(std::string const& path, std::string const& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    EXPECT_TRUE(out) << path;
}

std::string sample(std::string const& name)
{
    return std::string(MR_SAMPLES) + "/" + name;
}

int main(int argc, char** argv)
{
    // A graphics driver's own thread writes its cache of shaders when it likes, which would look like a
    // handle left open.
    setenv("MESA_SHADER_CACHE_DISABLE", "true", 1);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new NothingLeftBehind);
    ut_set_assert_handler(record);
    return RUN_ALL_TESTS();
}
