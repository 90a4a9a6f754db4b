#include "confined.h"

#include "mrTest.h"

#include <csignal>
#include <new>
#include <vector>

TEST(Confined, EndsWhatTakesTooMuch)
{
    auto const take = [](std::size_t mebibytes) {
        return confined({"memory"}, [mebibytes]() -> std::string {
            try {
                return std::to_string(std::vector<char>(mebibytes << 20).size() >> 20);
            } catch (std::bad_alloc const&) {
                return "no memory";
            }
        });
    };
    EXPECT_EQ(take(60), "60");
    EXPECT_EQ(take(70), sanitized ? "70" : "no memory");
    auto const crash = []() -> std::string {
        std::raise(SIGKILL);
        return "alive";
    };
    EXPECT_EQ(confined({"crash"}, crash), "signal 9");
}
