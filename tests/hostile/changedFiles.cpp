// Makes files of six formats and, of each, copies that were changed at random: what scripts/check-hostile-files
// hands to mrtool.
//
//     mr_changed_files SAMPLES COUNT SEED FOLDER
//
// writes COUNT changed copies of each format into FOLDER/stl, FOLDER/obj and so on. The same arguments give the
// same files wherever the image writers of gdk-pixbuf are the same.
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>

namespace {

[[noreturn]] void fail(std::string const& what)
{
    std::fprintf(stderr, "mr_changed_files: cannot %s\n", what.c_str());
    std::exit(1);
}

std::string read_bytes(std::string const& path)
{
    std::ifstream in(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (bytes.empty())
        fail("read " + path);
    return bytes;
}

std::string saved(GdkPixbuf* picture, char const* format)
{
    gchar* bytes = nullptr;
    gsize count = 0;
    if (!gdk_pixbuf_save_to_buffer(picture, &bytes, &count, format, nullptr, nullptr))
        fail(std::string("write ") + format);
    std::string result(bytes, count);
    g_free(bytes);
    return result;
}

/// One to eight changes: a byte replaced or turned by a bit, a run taken out, repeated or filled, or the end cut
/// off. Every other one falls into the first 256 bytes, where formats say the most.
std::string changed(std::string bytes, std::mt19937& numbers)
{
    for (auto changes = 1 + numbers() % 8; changes > 0 && bytes.size() > 16; --changes) {
        std::size_t const reach = numbers() % 2 ? bytes.size() : std::min<std::size_t>(bytes.size(), 256);
        std::size_t const at = numbers() % reach;
        std::size_t const run = std::min<std::size_t>(1 + numbers() % 16, bytes.size() - at);
        auto const byte = static_cast<char>(numbers());
        auto const kind = numbers() % 16;
        if (kind == 0)
            bytes.resize(std::max<std::size_t>(at, 16));
        else if (kind == 1)
            bytes.erase(at, run);
        else if (kind == 2)
            bytes.insert(at, bytes.substr(at, run));
        else if (kind == 3)
            bytes.replace(at, run, run, byte);
        else if (kind < 8)
            bytes[at] = static_cast<char>(bytes[at] ^ 1 << numbers() % 8);
        else
            bytes[at] = byte;
    }
    return bytes;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::fprintf(stderr, "usage: mr_changed_files SAMPLES COUNT SEED FOLDER\n");
        return 2;
    }
    std::string const samples = argv[1];
    int const count = std::atoi(argv[2]);
    std::mt19937 numbers(static_cast<std::mt19937::result_type>(std::atoi(argv[3])));

    std::string const hills = samples + "/images/hills.bmp";
    GdkPixbuf* const small = gdk_pixbuf_new_from_file_at_scale(hills.c_str(), 64, 48, FALSE, nullptr);
    if (!small)
        fail("read " + hills);
    std::pair<std::string, std::string> const originals[] = {
        {"stl", read_bytes(samples + "/meshes/gear.stl")},
        {"obj", read_bytes(samples + "/scenes/still-life.obj")},
        {"glb", read_bytes(samples + "/scenes/oil-lamp.glb")},
        {"jpeg", saved(small, "jpeg")},
        {"tiff", saved(small, "tiff")},
        {"bmp", saved(small, "bmp")},
    };
    for (auto const& [extension, bytes] : originals) {
        std::string const folder = std::string(argv[4]) + "/" + extension;
        std::filesystem::create_directories(folder);
        for (int i = 0; i <= count; ++i) {
            // The first is the original: a format that is not read at all would prove nothing.
            std::string const name = i == 0 ? "original" : std::to_string(i);
            std::ofstream out(folder + "/" + name + "." + extension, std::ios::binary);
            out << (i == 0 ? bytes : changed(bytes, numbers));
        }
    }
    g_object_unref(small);
    return 0;
}
