// Every prefix of a small file, every byte of it changed in three ways, and one byte more at every place.
#include "confined.h"
#include "rawPNG.h"
#include "readers.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

using namespace std::literals;

namespace {

enum class Damage
{
    cut,     ///< what stands from the place on is gone
    changed, ///< the byte there is another
    added    ///< one stands in front of it
};

/// What is wrong with what becomes of the bytes, or nothing.
using Judge = std::function<std::string(std::string const& bytes, Damage damage, std::size_t at)>;

/// @return how many pieces of damage came out as they should, or the first that did not
std::string judge_all(std::string const& good, Judge const& judge)
{
    std::string fault;
    int count = 0;
    auto const judge_one = [&](std::string const& bytes, Damage damage, std::size_t at) {
        ++count;
        if (fault.empty() && !(fault = judge(bytes, damage, at)).empty())
            fault += ": damage " + std::to_string(static_cast<int>(damage)) + " at " + std::to_string(at);
    };
    for (std::size_t at = 0; at <= good.size(); ++at)
        judge_one(std::string(good).insert(at, 1, 'x'), Damage::added, at);
    for (std::size_t at = 0; at < good.size(); ++at) {
        judge_one(good.substr(0, at), Damage::cut, at);
        for (int flip : {1, 0x80, 0xff}) {
            std::string bytes = good;
            bytes[at] = static_cast<char>(bytes[at] ^ flip);
            judge_one(bytes, Damage::changed, at);
        }
    }
    return fault.empty() ? std::to_string(count) + " as they should be" : fault;
}

std::string const document = "<multimat>\n"
                             "<image_encapsulation_type>embedded_png</image_encapsulation_type>\n"
                             "<properties><property><name>a</name><type>string</type><value>&lt;b</value>"
                             "<client_data>0</client_data></property></properties>\n"
                             "<facets><facet><plain_material><name>red</name><affinity>1</affinity>"
                             "<diffuse_colour><rgb8><red>2</red><green>3</green><blue>4</blue></rgb8>"
                             "</diffuse_colour>\n<polish>64bAAAAAAAA4D8=</polish><reflect>0.5</reflect>"
                             "<transparency>0</transparency><emission>1</emission>"
                             "<refractive_index>1e0</refractive_index></plain_material>\n<textures><texture>"
                             "<image_name>weave</image_name><layer_type>colour</layer_type>"
                             "<recoloured>1</recoloured><recolour><rgb8><red>2</red><green>3</green>"
                             "<blue>4</blue></rgb8></recolour></texture></textures></facet></facets>\n"
                             "</multimat>";

std::string const title = chunk("tEXt", "Title\0weave"s);
std::string const image =
    RawPNG{.width = 4, .height = 4, .before = title, .rows = std::string(20, '\0')}.bytes();

class DamagedFile : public testing::Test
{
protected:
    void expect(std::string const& name, std::string const& good, Judge const& judge)
    {
        Hostile const input{name, static_cast<std::int64_t>(good.size())};
        EXPECT_EQ(confined(input, [&] { return judge_all(good, judge); }),
                  std::to_string(5 * good.size() + 1) + " as they should be");
    }

    /// A file of the bytes. Not written over: some file systems then wait for the disk.
    std::string file_of(std::string const& bytes) const
    {
        std::string path = folder.path("damaged");
        std::filesystem::remove(path);
        write_bytes(path, bytes);
        return path;
    }

    TestFolder const folder;
};

/// Whether what is left of a file of images is read: whole images and fewer than ten bytes.
bool is_block(std::size_t length)
{
    return length % image.size() < 10;
}

} // namespace

TEST_F(DamagedFile, Document)
{
    expect("document, damaged", document, [](std::string const& bytes, Damage damage, std::size_t) {
        std::string const outcome = parse_document(bytes);
        if (outcome.starts_with("result"))
            return outcome;
        return damage == Damage::cut && outcome == "read" ? "read though it is cut" : std::string();
    });
}

TEST_F(DamagedFile, Material)
{
    std::size_t const images = document.size() + 2;
    Judge const judge = [&](std::string const& bytes, Damage damage, std::size_t at) {
        std::string const outcome = read_material(file_of(bytes));
        if (damage != Damage::cut)
            return outcome == "open failed" || outcome == "no status" ? outcome : std::string();
        char const* const expected = at < document.size()                   ? "no document"
                                     : at < images || is_block(at - images) ? "read"
                                                                            : "bad content";
        return outcome == expected ? std::string() : outcome;
    };
    expect("material file, damaged", document + "\n\n" + image, judge);
}

TEST_F(DamagedFile, ImageCache)
{
    std::string const text = "9 2\n-7 561081600\n12 561081900\n\n";
    Judge const judge = [&](std::string const& bytes, Damage damage, std::size_t at) {
        std::string const outcome = read_cache(file_of(bytes));
        if (outcome.ends_with("lost") || !(outcome.starts_with("read") || outcome.starts_with("bad content")))
            return outcome;
        bool const read = at >= text.size() && is_block(at - text.size());
        return damage == Damage::cut && outcome.starts_with("read") != read ? outcome : std::string();
    };
    expect("image cache file, damaged", text + image + image, judge);
}

TEST_F(DamagedFile, Palette)
{
    std::string const text = "rgb8 255 0 9 Red\ncmy8 0 255 255 # red\ncmyk 0 0 0 100 Black\n";
    Judge const judge = [this](std::string const& bytes, Damage, std::size_t at) {
        std::string const outcome = read_palette(file_of(bytes));
        // Lines before the damage are kept, and no colour comes of nothing.
        auto const whole = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(at), '\n');
        int const colours = std::atoi(outcome.c_str() + outcome.find(", ") + 2);
        bool const status = outcome.starts_with("read") || outcome.starts_with("bad format") ||
                            outcome.starts_with("out of range") || outcome.starts_with("duplicate name");
        return status && colours >= whole && colours <= 4 ? std::string() : outcome;
    };
    expect("palette, damaged", text, judge);
}

TEST_F(DamagedFile, Png)
{
    std::size_t const text_chunk = image.find("tEXt");
    std::size_t const text_end = text_chunk + title.size() - 4;
    Judge const judge = [&](std::string const& bytes, Damage damage, std::size_t at) {
        std::string const outcome = read_png(file_of(bytes));
        // Of everything that stands in the file only the text may be wrong, or an unknown chunk in its place:
        // its name is one where a single letter has turned from small to large or back.
        bool const known = damage == Damage::changed && at >= text_chunk && at < text_end;
        bool const in_text = known && (at >= text_chunk + 4 || outcome == "4 x 4");
        bool const read = outcome.starts_with("4 x 4");
        if (read != (in_text || (damage == Damage::added && at == image.size())))
            return outcome;
        bool const in_sum = in_text && at >= text_end - 4;
        return in_sum && outcome != "4 x 4 \"weave\"" ? outcome : std::string();
    };
    expect("PNG, damaged", image, judge);
}
