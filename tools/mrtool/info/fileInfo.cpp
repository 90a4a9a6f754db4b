#include "fileInfo.h"

#include "fileKind.h"
#include "inputFile.h"
#include "readFile.h"

#include "mrFMFacet.h"
#include "mrFMTexture.h"
#include "mrImageCache.h"
#include "mrImageCacheFile.h"
#include "mrSource.h"

#include "gxFileHints.h"
#include "utConcat.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <set>

namespace mrtool {

namespace {

// ---- Materials

void check_layers(mrFileMat const& material, std::vector<std::string>& warnings)
{
    std::set<std::string_view> used;
    int facet_number = 0;
    for (mrFMFacet const* facet : material.facets()) {
        ++facet_number;
        int layer_number = 0;
        for (mrFMTexture const& layer : facet->textures()) {
            ++layer_number;
            used.insert(layer.image_name().view());
            if (!material.images().member(layer.image_name()))
                warnings.push_back(ut_concat("facet ", facet_number, ", layer ", layer_number,
                                             ": there is no image ", ut_quote(layer.image_name().view())));
        }
    }
    for (auto const& [name, image] : material.images())
        if (!used.contains(name.view()))
            warnings.push_back("no layer uses the image " + ut_quote(name.view()));
}

// ---- Image caches

constexpr std::size_t most_warnings = 100;

/// Adds warnings to a list. Counts those beyond the first hundred and adds their number at the end.
class Warnings
{
public:
    explicit Warnings(std::vector<std::string>& texts) : m_texts(texts) {}
    ~Warnings()
    {
        if (m_more > 0)
            m_texts.push_back(ut_concat("and ", m_more, " more"));
    }
    Warnings(Warnings const&) = delete;
    Warnings& operator=(Warnings const&) = delete;

    template <class... Parts>
    void add(Parts const&... parts)
    {
        if (m_texts.size() < most_warnings)
            m_texts.push_back(ut_concat(parts...));
        else
            ++m_more;
    }

private:
    std::vector<std::string>& m_texts;
    std::size_t m_more = 0;
};

void check_lines(mrImageCacheFile const& file, Warnings& warnings)
{
    constexpr char no_integers[] = ": not two integers; one that is missing or none counts as 0";
    int const size = file.limits().first;
    int const shrinkage = file.limits().second;
    if (!file.limits().two_integers)
        warnings.add("line 1", no_integers);
    if (size <= 0)
        warnings.add("line 1: the size limit ", size, " is not above 0");
    if (shrinkage >= size)
        warnings.add("line 1: the shrinkage ", shrinkage, " is not below the size limit ", size);
    if (shrinkage <= 0)
        warnings.add("line 1: the shrinkage ", shrinkage,
                     " is not above 0; the cache may grow past its size limit");
    int number = 1;
    for (mrCacheLine const& line : file.lines()) {
        ++number;
        if (!line.two_integers)
            warnings.add("line ", number, no_integers);
        else if (line.second <= 0)
            warnings.add("line ", number, ": the age ", line.second, " is not above 0");
    }
}

/// Makes the entry of an image and of the line of its rank.
/// @param number  of the line in the file
CacheContents::Entry make_entry(mrBlockImage const& image, mrCacheLine const& line, int number,
                                Warnings& warnings)
{
    CacheContents::Entry entry{0, line.second, std::string(image.name.view()), image.width, image.height};
    if (!mrImageCacheFile::parse_hash(image.title, entry.hash))
        warnings.add("the image title ", ut_quote(image.title.view()), " is no hash value and counts as 0");
    else if (entry.hash == 0)
        warnings.add("line ", number,
                     ": its image has the hash value 0, which the library reports when it is looked up");
    if (line.two_integers && line.first != entry.hash)
        warnings.add("line ", number, ": the hash value is ", line.first, ", but the image in its place has ",
                     entry.hash, ", which gets this age");
    return entry;
}

/// Enters images into the contents as the library enters them into a cache, but without evictions.
void enter_images(mrImageCacheFile const& file, CacheContents& contents, Warnings& warnings)
{
    std::map<int, std::size_t> places; // from hash value to entry
    bool evicts = false;
    auto line = file.lines().begin();
    int number = 1;
    for (auto const& [title, image] : file.images()) {
        if (line == file.lines().end())
            break;
        CacheContents::Entry entry = make_entry(image, *line++, ++number, warnings);
        // The first entry evicts nothing, whatever the limit.
        evicts |= static_cast<int>(contents.entries.size()) >= std::max(contents.max_cache_size, 1);
        auto const [place, is_new] = places.try_emplace(entry.hash, contents.entries.size());
        if (!is_new)
            warnings.add("two images have the hash value ", entry.hash,
                         "; the later one replaces the earlier");
        contents.entries.resize(places.size());
        contents.entries[place->second] = std::move(entry);
    }
    std::size_t const lines = file.lines().size(), images = file.images().size();
    if (images < lines)
        warnings.add("more lines (", lines, ") than images (", images, "); the last lines are left out");
    if (images > lines)
        warnings.add("more images (", images, ") than lines (", lines, "); the last images are left out");
    if (evicts)
        warnings.add("there are at least as many entries as the size limit (", contents.max_cache_size,
                     ") before the last image is entered; reading it may evict some");
}

// ---- Reading

/// Chooses the contents that the file is to be read as.
void choose_format(FileInfo& info, std::string_view beginning)
{
    std::string const extension = gx_extension(info.path);
    if (extension == "multimat" || opens_material(beginning))
        return;
    if (extension == "pcp" || is_palette(beginning))
        info.contents.emplace<mrColourPalette>();
    else if (mrCacheLine(beginning.substr(0, beginning.find('\n'))).two_integers)
        info.contents.emplace<CacheContents>();
}

void read_contents(mrSource const& source, FileInfo& info, mrFileMat& material)
{
    mrFault fault;
    mrFaultcoDList remarks;
    info.status = material.read(source, {}, fault, &remarks);
    info.fault.words = fault.words().view();
    if (!info.is_read())
        return;
    check_layers(material, info.warnings);
    for (mrFault const& remark : remarks)
        info.warnings.emplace_back(remark.words().view());
}

void read_contents(mrSource const& source, FileInfo& info, mrColourPalette& palette)
{
    Fault warning;
    Result<> const read = read_palette(source, palette, warning);
    info.status = read ? mrFileMatReadOK : mrFileMatBadContent;
    if (!read)
        info.fault = read.error();
    else if (!warning.words.empty())
        info.warnings.push_back(ut_concat("line ", warning.line, ": ", warning.words));
}

void read_contents(mrSource const& source, FileInfo& info, CacheContents& contents)
{
    mrImageCacheFile file;
    mrFault fault;
    mrFaultcoDList remarks;
    info.status = file.read(source, {}, false, fault, &remarks);
    info.fault = {std::string((fault.line > 0 ? fault.reason : fault.words()).view()), fault.line};
    if (!info.is_read())
        return;
    contents.max_cache_size = file.limits().first;
    contents.shrinkage = file.limits().second;
    Warnings warnings(info.warnings);
    check_lines(file, warnings);
    for (mrFault const& remark : remarks)
        warnings.add(remark.words());
    enter_images(file, contents, warnings);
}

} // namespace

void read_file_info(std::string const& path, FileInfo& info)
{
    info.path = path;
    utString reason;
    gxDescriptor file;
    if (Result<InputFile> const input = find_input(path))
        file = gx_open_regular(utString(input->path), reason);
    else
        reason = utString(input.error().words);
    gxFile const stream = file ? gx_open_descriptor(file.get(), reason) : nullptr;
    choose_format(info, stream ? gx_read_beginning(stream.get()) : std::string());
    if (!stream) {
        info.fault.words = reason.view();
        return;
    }
    mrSource const source = mrSource::from_descriptor(file.get());
    std::visit([&](auto& contents) { read_contents(source, info, contents); }, info.contents);
}

std::string format_age(int age)
{
    std::time_t const time = mrImageCache::start_of_ages() + age;
    std::tm local{};
    localtime_r(&time, &local);
    char words[32];
    return {words, std::strftime(words, sizeof words, "%Y-%m-%d %H:%M:%S", &local)};
}

} // namespace mrtool
