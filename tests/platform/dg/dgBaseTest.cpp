#include "dgBase.h"

#include "mrTest.h"

namespace {

class Counted : public dgBase
{
public:
    explicit Counted(bool& gone) : m_gone(gone) {}
    Counted(Counted const& other, bool& gone) : dgBase(other), m_gone(gone) {}

private:
    ~Counted() override { m_gone = true; }

    bool& m_gone;
};

} // namespace

TEST(DgBase, DeletesItselfWithItsLastReference)
{
    bool gone = false;
    auto* const object = new Counted(gone);
    EXPECT_EQ(object->references(), 0);
    object->reference();
    object->reference();
    object->unreference();
    EXPECT_FALSE(gone);
    EXPECT_EQ(object->references(), 1);
    object->unreference();
    EXPECT_TRUE(gone);
}

TEST(DgBase, IsGivenBackByOneCallWhereThereWasNoReference)
{
    bool gone = false;
    (new Counted(gone))->unreference();
    EXPECT_TRUE(gone);
}

TEST(DgBase, CountsReferencesOfACopyAnew)
{
    bool gone = false;
    bool copy_gone = false;
    auto* const object = new Counted(gone);
    object->reference();
    auto* const copy = new Counted(*object, copy_gone);
    EXPECT_EQ(copy->references(), 0);
    copy->unreference();
    EXPECT_TRUE(copy_gone);
    EXPECT_FALSE(gone);
    object->unreference();
}
