#include "dgBase.h"

#include "mrTest.h"

namespace {

class Counted : public dgBase
{
public:
    explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
    Counted(Counted const& other) : dgBase(other), m_alive(other.m_alive) { ++m_alive; }

private:
    ~Counted() override { --m_alive; }

    int& m_alive;
};

} // namespace

TEST(DgBase, DeletesItselfWithItsLastReferenceOrWithoutOne)
{
    int alive = 0;
    auto* const object = new Counted(alive);
    object->reference();
    object->reference();
    auto* const copy = new Counted(*object);
    EXPECT_EQ(copy->references(), 0);
    copy->unreference();
    EXPECT_EQ(alive, 1);

    object->unreference();
    EXPECT_EQ(object->references(), 1);
    EXPECT_EQ(alive, 1);
    object->unreference();
    EXPECT_EQ(alive, 0);
}
