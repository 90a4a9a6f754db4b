// The libraries leave the process when whoever used them is unloaded. This program is linked with none of them.
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <malloc.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

namespace {

struct Close
{
    void operator()(void* module) const { dlclose(module); }
};

/// Uses a module twice and unloads it.
/// @param after_first  receives how much more was on the heap after the first use, in bytes
/// @return what the two uses gave
std::pair<int, int> use_and_unload(char const* path, std::size_t* after_first = nullptr)
{
    std::size_t const before = mallinfo2().uordblks;
    std::unique_ptr<void, Close> const module(dlopen(path, RTLD_NOW | RTLD_LOCAL));
    auto* const use = module ? reinterpret_cast<int (*)()>(dlsym(module.get(), "use")) : nullptr;
    if (!use) {
        ADD_FAILURE() << dlerror();
        return {-1, -1};
    }
    int const first = use();
    if (after_first)
        *after_first = mallinfo2().uordblks - before;
    return {first, use()};
}

/// The project's libraries among the files that the process has mapped.
std::string mapped()
{
    std::string found;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
        if (line.find("/libmr") != std::string::npos)
            found += line + '\n';
    return found;
}

} // namespace

TEST(unload, LibraryStartsEmptyWhenItIsLoadedAgain)
{
    std::filesystem::current_path(testing::TempDir());
    // What Assimp and GLib keep for good, they keep from the first time on.
    EXPECT_EQ(use_and_unload(MR_LIBRARY_USER), std::pair(0, 2));
    EXPECT_EQ(mapped(), "");

    std::size_t const before = mallinfo2().uordblks;
    std::size_t in_use = 0;
    EXPECT_EQ(use_and_unload(MR_LIBRARY_USER, &in_use), std::pair(0, 2));
    EXPECT_EQ(mapped(), "");
    // Its static objects let go of the palette. The sanitizers do not say what is on the heap.
    if (in_use > 0) {
        EXPECT_LT(mallinfo2().uordblks - before, in_use / 10);
    }
}

TEST(unload, RendererAndScenesUnloadToo)
{
    for (char const* const user : {MR_RENDERER_USER, MR_SCENE_USER})
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(use_and_unload(user), std::pair(0, 0)) << user;
            EXPECT_EQ(mapped(), "");
        }
}
