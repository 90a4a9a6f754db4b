#include "mrImageCacheFile.h"

#include "mrImageCache.h"
#include "mrSource.h"
#include "mrTarget.h"
#include "mrTest.h"
#include "testImage.h"

#include <gmock/gmock.h>

using testing::StartsWith;

namespace {

/// A file of the hash values 7 and 3,000,000,000, each with an image of 2 x 1 pixels named "own".
std::string make_file()
{
    mrImageCache cache(20, 5);
    for (unsigned int const hash : {7u, 3'000'000'000u})
        cache.add_image(hash, new dgDuctImage("own", 2, 1));
    std::string bytes;
    mrFault fault;
    EXPECT_EQ(cache.write(mrTarget::to_memory(bytes), fault), 1);
    return bytes;
}

} // namespace

TEST(mrImageCacheFile, KeepsTheLastImageOfATitleInTheFirstPlace)
{
    std::string const bytes = make_file();
    std::string const images = bytes.substr(bytes.find("\n\n") + 2);
    std::string const again = bytes + images.substr(0, images.find("\x89PNG", 1)) + "rest";
    mrImageCacheFile file;
    mrFault fault;
    mrFaultcoDList remarks;
    ASSERT_EQ(file.read(mrSource::from_memory(again), {}, false, fault, &remarks), mrFileMatReadOK);
    EXPECT_EQ(file.images().begin()->key, "7");
    EXPECT_EQ(file.images().begin()->value.byte, static_cast<std::int64_t>(bytes.size()));
    ASSERT_EQ(remarks.size(), 2u);
    EXPECT_EQ(remarks[0].words(), "image 3 takes the place of an earlier one with the title \"7\"");
    EXPECT_EQ(remarks[1].words(), "the last 4 bytes of the file are no image and are left out");
}

TEST(mrImageCacheFile, TellsTheLineThatIsWrong)
{
    std::string const good = make_file();
    struct
    {
        std::string bytes;
        std::int64_t line;
        char const* words;
    } const cases[] = {
        {"", 1, "the file ends here"},
        {"20 5\n7 1\n8 1", 3, "the file ends here, without the empty line"},
        {"20 5\n7 " + std::string(1022, '1') + "\n\n", 2, "longer than 1,023 characters"},
        {good.substr(0, good.size() - 9), 0, "image 2, at byte "},
    };
    for (auto const& each : cases) {
        mrImageCacheFile file;
        mrFault fault;
        EXPECT_EQ(file.read(mrSource::from_memory(each.bytes), {}, false, fault), mrFileMatBadContent);
        EXPECT_EQ(fault.line, each.line);
        EXPECT_THAT(std::string((each.line > 0 ? fault.reason : fault.words()).view()),
                    StartsWith(each.words));
    }
    mrCacheLine const half("12 ");
    EXPECT_TRUE(half.first == 12 && half.second == 0 && !half.two_fields && !half.two_integers);
    mrCacheLine const words("a  b");
    EXPECT_TRUE(words.first == 0 && words.two_fields && !words.two_integers);
}
