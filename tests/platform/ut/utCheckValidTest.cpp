#include "utCheckValid.h"

#include "mrTest.h"

#include <cstring>
#include <new>

namespace {

class Stamped
{
public:
    Stamped() = default;
    Stamped(Stamped const& other) : m_value(other.m_value) {}
    ~Stamped() { m_value = 0; }

    [[gnu::noinline]] int value() const
    {
        UT_CHECK_VALID(m_check);
        return m_value;
    }

private:
    int m_value = 7;
    utCheckValid m_check{this};
};

} // namespace

TEST(UtCheckValid, ReportsObjectsThatAreNotAlive)
{
    alignas(Stamped) unsigned char storage[sizeof(Stamped)];
    Stamped const original;
    auto* const copy = new (storage) Stamped(original);
    EXPECT_EQ(original.value() + copy->value(), 14);
    EXPECT_TRUE(reports().empty());

    std::vector<std::string> const report{"tests/platform/ut/utCheckValidTest.cpp: Invalid object"};
    copy->~Stamped();
    copy->value();
    EXPECT_EQ(reports(), report);

    // Bytes that only look like an object.
    std::memcpy(storage, static_cast<void const*>(&original), sizeof storage);
    copy->value();
    EXPECT_EQ(reports(), report);
}
