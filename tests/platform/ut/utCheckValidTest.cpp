#include "utCheckValid.h"

#include "mrTest.h"

#include <cstring>
#include <new>
#include <string>
#include <vector>

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

std::vector<std::string> const one_report{"tests/platform/ut/utCheckValidTest.cpp: Invalid object"};

} // namespace

TEST(UtCheckValid, AcceptsLiveObjectsAndCopies)
{
    Stamped const original;
    Stamped const copy(original);
    EXPECT_EQ(original.value() + copy.value(), 14);
}

TEST(UtCheckValid, ReportsAnObjectThatWasDestroyed)
{
    alignas(Stamped) unsigned char storage[sizeof(Stamped)];
    auto* const object = new (storage) Stamped;
    object->value();
    EXPECT_TRUE(reports().empty());
    object->~Stamped();
    object->value();
    EXPECT_EQ(reports(), one_report);
}

TEST(UtCheckValid, ReportsBytesThatOnlyLookLikeAnObject)
{
    Stamped const original;
    alignas(Stamped) unsigned char storage[sizeof(Stamped)];
    std::memcpy(storage, static_cast<void const*>(&original), sizeof storage);
    reinterpret_cast<Stamped const*>(storage)->value();
    EXPECT_EQ(reports(), one_report);
}
