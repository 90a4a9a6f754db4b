#include "room.h"

#include "mrTest.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

using sandbox::Room;

TEST(Room, GivesWhatWasWrittenAndKeepsItsSize)
{
    Room room(1 << 20);
    ASSERT_GE(room.file(), 0);
    EXPECT_EQ(Room::size_of(room.file()), std::uint64_t{1} << 20);
    ASSERT_EQ(write(room.file(), "abc", 3), 3);
    for (off_t const size : {0, 2 << 20})
        EXPECT_NE(ftruncate(room.file(), size), 0) << size;
    EXPECT_LT(pwrite(room.file(), "d", 1, 1 << 20), 0);
    EXPECT_FALSE(room.close((1 << 20) + 1));
    EXPECT_EQ(room.close(3), "abc");
    EXPECT_LT(pwrite(room.file(), "d", 1, 0), 0);
}

TEST(Room, GivesNothingThatSomebodyMayStillChange)
{
    Room room(4096);
    void* const mapped = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED, room.file(), 0);
    ASSERT_NE(mapped, MAP_FAILED);
    EXPECT_FALSE(room.close(3));
    munmap(mapped, 4096);
    EXPECT_TRUE(room.close(3));
}
