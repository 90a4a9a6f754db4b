// The image cache: looking up, evictions, its file; and the keys of files.
#include "mrImageCache.h"
#include "mrUtils.h"

#include "support/barePng.h"
#include "support/material.h"
#include "support/table.h"

#include "utClock.h"
#include "utString.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <list>
#include <numeric>

namespace {

constexpr int entries = 10'000;
constexpr int insertions = 100'000;
constexpr int evicted_at_a_time = 100;
constexpr int evictions = (insertions - entries) / evicted_at_a_time;

/// Enters the image under rising hash values from 1, the clock going on by @p seconds for each.
void insert(mrImageCache& cache, dgDuctImage* image, int count, int seconds)
{
    std::time_t time = 1'750'000'000;
    for (int i = 1; i <= count; ++i, time += seconds) {
        utClock::set(time);
        cache.add_image(static_cast<unsigned int>(i), image);
    }
    utClock::unset();
}

/// Finds the last element by a walk from the first.
void walk(std::list<int> const& list)
{
    int const wanted = static_cast<int>(list.size());
    for (int const element : list)
        if (element == wanted) {
            benchmark::DoNotOptimize(&element);
            return;
        }
}

std::list<int> rising(int count)
{
    std::list<int> list(static_cast<std::size_t>(count));
    std::iota(list.begin(), list.end(), 1);
    return list;
}

void compare_look_up(Table& table, dgDuctImage* image, std::list<int> const& list)
{
    mrImageCache cache(2 * entries, evicted_at_a_time);
    insert(cache, image, entries, 1);
    table.compare(
        "find the last of 10,000 images in a cache",
        [&] { require(cache.get_image(entries) == image, "another image was found"); },
        {"walk over a std::list", [&] { walk(list); }}, 1.5);
}

/// What is evicted stays alive: each run takes some memory for good.
void compare_evictions(Table& table, dgDuctImage* image, std::list<int> const& list)
{
    auto const insert_all = [image](int seconds) {
        mrImageCache cache(entries, evicted_at_a_time);
        insert(cache, image, insertions, seconds);
        require(cache.size() == entries, "the cache has not the entries that it should have");
    };
    Table::Side const walks{"900 walks over a std::list", [&] {
                                for (int i = 0; i < evictions; ++i)
                                    walk(list);
                            }};
    table.compare(
        "100,000 insertions into a cache of 10,000, 900 evictions", [&] { insert_all(1); }, walks, 4.0);
    table.note(
        "the same with one age for all", [&] { insert_all(0); }, walks);
}

void compare_file(Table& table)
{
    constexpr int count = 500;
    WorkFolder const folder;
    utString const ours(folder.file("cache"));
    std::string const theirs = folder.file("cache.png");
    std::vector<Picture> pictures;
    std::vector<dgDuctImage const*> images;
    mrImageCache cache(count + 1, evicted_at_a_time);
    for (int i = 1; i <= count; ++i) {
        pictures.push_back(material_picture("entry", 128, static_cast<unsigned>(i)));
        images.push_back(pictures.back().get());
        cache.add_image(static_cast<unsigned>(i), pictures.back().get());
    }
    table.compare(
        "write and read a cache of 500 images of 128²",
        [&] {
            require(cache.write(ours), "the cache cannot be written");
            mrImageCache restored;
            require(restored.read(ours) == mrFileMatReadOK && restored.size() == count,
                    "the cache cannot be read");
        },
        {"libpng",
         [&] {
             encode(images, theirs);
             require(decode(theirs, images.size()).size() == images.size(), "images are missing");
         }},
        1.2);
}

void compare_key(Table& table)
{
    WorkFolder const folder;
    std::string const path = folder.file("texture.png");
    std::ofstream(path) << "a texture";
    utString const ours(path);
    table.compare(
        "the key of a file", [&] { benchmark::DoNotOptimize(mrUtils::file_hash(ours)); },
        {"std::filesystem's three calls",
         [&] {
             benchmark::DoNotOptimize(std::filesystem::exists(path));
             benchmark::DoNotOptimize(std::filesystem::last_write_time(path));
             benchmark::DoNotOptimize(std::filesystem::file_size(path));
         }},
        1.3);
}

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    // The first of all, so that its elements lie one after the other in memory.
    std::list<int> const list = rising(entries);
    Picture const image = material_picture("entry", 16, 1);
    compare_look_up(table, image.get(), list);
    compare_evictions(table, image.get(), list);
    compare_file(table);
    compare_key(table);
}
