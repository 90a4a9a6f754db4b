// Reading and saving while system calls fail, each in its turn. Success means that all is there; an older file is whole
// or new; no temporary file stays.
#include "systemCalls.h"

#include "foreignPalette.h"
#include "mrTest.h"
#include "outputFile.h"

#include "mrColourPalette.h"
#include "mrFileMat.h"
#include "mrImageCache.h"
#include "mrSource.h"
#include "mrTarget.h"
#include "mrThumbnails.h"
#include "mrUtils.h"

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "gxImageFileUtils.h"

#include <sstream>

namespace fs = std::filesystem;

namespace {

/// What work says of itself.
struct Result
{
    bool succeeded = false;
    mrFault fault;
};

using Writer = std::function<Result(std::string const& path)>;

class systemCalls : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!can_fail_calls())
            GTEST_SKIP() << "the kernel lets no process filter its own system calls";
        material.read(sample("materials/kitchen.multimat").c_str());
        for (auto const& [name, image] : material.images())
            cache.add_image(static_cast<unsigned int>(cache.size() + 1), image);
        reports();
    }

    /// @param parts_stay  whether a failure may leave a part of a file where there was none
    void fail_writing(std::string const& name, Writer const& write, bool parts_stay) const
    {
        std::string const path = folder.path("file"), older = "what was there before";
        ASSERT_TRUE(write(path).succeeded);
        std::string const whole = read_bytes(path);
        Result result;
        for (bool const replaces : {false, true}) {
            auto const prepare = [&] {
                fs::remove(path);
                if (replaces)
                    write_bytes(path, older);
            };
            auto const judge = [&]() -> std::string {
                bool const there = fs::exists(path);
                std::string const bytes = there ? read_bytes(path) : "";
                if (std::distance(fs::directory_iterator(folder.path("")), {}) > there)
                    return "a temporary file stays";
                if (result.succeeded)
                    return bytes == whole ? "" : "success with another file";
                if (result.fault.reason.invalid())
                    return "failure without a reason";
                if (replaces)
                    return bytes == older || bytes == whole ? "" : "the older file is lost";
                return !there || parts_stay || bytes == whole ? "" : "a part of a file stays";
            };
            fail_every_call({name + (replaces ? " over an older one" : ""), prepare,
                             [&] { result = write(path); }, judge});
        }
    }

    /// @param read  reads anew; returns what was read, empty on failure
    static void fail_reading(std::string const& name, std::function<std::string()> const& read)
    {
        std::string const whole = read();
        ASSERT_NE(whole, "");
        std::string found;
        auto const judge = [&] {
            return std::string(found.empty() || found == whole ? "" : "success with other contents");
        };
        fail_every_call({name, [] {}, [&] { found = read(); }, judge});
    }

    template <class Object>
    static std::string bytes_of(Object const& object)
    {
        std::string bytes;
        mrFault fault;
        EXPECT_TRUE(object.write(mrTarget::to_memory(bytes), fault));
        return bytes;
    }

    TestFolder const folder;
    mrFileMat material;
    mrImageCache cache{20, 5};
};

Result take(mrtool::Result<> const& written)
{
    return {written.has_value(), {.reason = utString(written ? "" : written.error().words)}};
}

} // namespace

TEST_F(systemCalls, FailWhileWriting)
{
    fail_writing(
        "write a material",
        [&](std::string const& path) {
            Result result;
            result.succeeded = material.write(mrTarget::to_path(path.c_str()), result.fault);
            return result;
        },
        true);
    fail_writing(
        "write a cache",
        [&](std::string const& path) {
            Result result;
            // It succeeds also without images, which the fault tells.
            result.succeeded =
                cache.write(mrTarget::to_path(path.c_str()), result.fault) && result.fault.reason.invalid();
            return result;
        },
        true);
    fail_writing(
        "write a palette",
        [&](std::string const& path) {
            return take(mrtool::write_palette({{"red", giColour(255, 0, 0, 0)}}, path).map([](auto) {}));
        },
        false);
    fail_writing(
        "write a thumbnail",
        [&](std::string const& path) {
            return take(mrtool::write_png(*material.images().begin()->value, path));
        },
        false);
}

TEST_F(systemCalls, FailWhileReading)
{
    fail_reading("read a material", [] {
        mrFileMat read;
        bool const whole = read.read(sample("materials/kitchen.multimat").c_str()) == mrFileMatReadOK;
        return whole ? bytes_of(read) : "";
    });
    utString const saved(folder.path("cache"));
    ASSERT_TRUE(cache.write(saved));
    fail_reading("read a cache", [&] {
        mrImageCache read;
        return read.read(saved) == mrFileMatReadOK ? bytes_of(read) : "";
    });
    fail_reading("read a palette", [] {
        mrColourPalette read;
        mrFault fault;
        std::ostringstream lines;
        // What could be read before is kept, and the fault tells.
        if (mrUtils::read_pcp(mrSource::from_path(sample("palettes/woods.pcp").c_str()), read, fault) ==
                mrPaletteFileOK &&
            fault.reason.invalid())
            mrUtils::write_pcp(read, lines);
        return lines.str();
    });
    fail_reading("thumbnail of an image file", [] {
        mrThumbnails thumbnails(nullptr,
                                mrThumbAtts(64, 64, gsRGB(), gsRGB(), {}, {}, nullptr, nullptr, nullptr));
        auto const made = dg_hold(thumbnails.from_image_file(sample("images/dahlia.png").c_str()));
        reports();
        return made ? std::string(reinterpret_cast<char const*>(made->pixels()), 64 * 64 * 4) : "";
    });
}
