// Material files: what is read can be written and reads as the same; mrtool info has words for any file.
#include "fuzz.h"

#include "fileInfo.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrMatProp.h"

#include "dgDuctImage.h"
#include "utString.h"

#include <string_view>

namespace {

template <class Range, class Same>
bool equal(Range const& range, Range const& others, Same const& same)
{
    if (range.size() != others.size())
        return false;
    for (auto each = range.begin(), other = others.begin(); each != range.end(); ++each, ++other)
        if (!same(*each, *other))
            return false;
    return true;
}

bool same_property(mrMatProp const& property, mrMatProp const& other)
{
    // They are equal by their names; the hash is of the value.
    return property.name() == other.name() && property.prop_type() == other.prop_type() &&
           co_hash(property) == co_hash(other);
}

bool equal(mrFileMat const& material, mrFileMat const& other)
{
    auto const same_facet = [](mrFMFacet const* facet, mrFMFacet const* another) {
        return *facet == *another;
    };
    auto const same_image = [](auto const& image, auto const& another) {
        return image.key == another.key && image.value->equal(another.value) &&
               std::string_view(image.value->name()) == another.value->name();
    };
    return equal(material.file_props(), other.file_props(), same_property) &&
           equal(material.facets(), other.facets(), same_facet) &&
           equal(material.images(), other.images(), same_image);
}

void try_info(MemoryFile const& input)
{
    mrtool::FileInfo info;
    mrtool::read_file_info(input.path(), info);
    require(info.is_read() || !info.fault.words.empty(), "mrtool says what is wrong with a file");
    make_text(info);
    make_json(info);
}

} // namespace

void try_input(std::string const& bytes)
{
    MemoryFile const input(with_checksums(bytes));
    mrFileMat material;
    try_info(input);
    if (material.read(utString(input.path())) != mrFileMatReadOK)
        return;
    MemoryFile const written;
    require(material.write(utString(written.path())), "a material that was read can be written");
    mrFileMat again;
    require(again.read(utString(written.path())) == mrFileMatReadOK, "a material that was written reads");
    require(equal(material, again), "a material is the same when it is written and read");
}
