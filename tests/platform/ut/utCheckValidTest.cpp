#include "utCheckValid.h"

#include "mrTest.h"

#include <cstring>
#include <new>

namespace {

class Stamped
{
public:
    Stamped() = default;
    Stamped(Stamped const&) {}

    [[gnu::noinline]] void use() const { UT_CHECK_VALID(m_check); }

private:
    utCheckValid m_check{this};
};

} // namespace

TEST(utCheckValid, ReportsObjectsThatAreNotAlive)
{
    alignas(Stamped) unsigned char storage[sizeof(Stamped)];
    Stamped const original;
    auto* const copy = new (storage) Stamped(original);
    original.use();
    copy->use();
    EXPECT_TRUE(reports().empty());

    std::vector<std::string> const report{"tests/platform/ut/utCheckValidTest.cpp: Invalid object"};
    copy->~Stamped();
    copy->use();
    EXPECT_EQ(reports(), report);

    // Bytes that only look like an object.
    std::memcpy(storage, static_cast<void const*>(&original), sizeof storage);
    copy->use();
    EXPECT_EQ(reports(), report);
}
