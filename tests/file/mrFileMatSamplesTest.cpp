// The material files of samples/, read, written and read again.
#include "mrFileMat.h"

#include "materialText.h"
#include "mrFMFacet.h"

#include "dgDuctImage.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

using testing::ElementsAreArray;

namespace {

std::vector<std::string> sample_materials()
{
    std::vector<std::string> paths;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(sample("")))
        if (entry.path().extension() == ".multimat")
            paths.push_back(entry.path().string());
    return paths;
}

/// Name, value and client data; properties compare equal by their names alone.
std::vector<std::string> described(mrMatPropcoSet const& properties)
{
    std::vector<std::string> all;
    for (mrMatProp const& each : properties) {
        all.emplace_back(each.name().c_str());
        if (each.prop_type() == mrMatPropString)
            all.push_back(std::string("string ") + each.string_value().c_str());
        else if (each.prop_type() == mrMatPropInteger)
            all.push_back("integer " + testing::PrintToString(each.integer_value()));
        else
            all.push_back("double " + testing::PrintToString(each.double_value()));
        all.push_back(std::to_string(each.client_data()));
    }
    return all;
}

void expect_same_facets(mrFileMat const& one, mrFileMat const& other)
{
    ASSERT_EQ(one.facets().size(), other.facets().size());
    auto at = other.facets().begin();
    for (mrFMFacet const* facet : one.facets()) {
        mrFMFacet const& twin = **at;
        ++at;
        EXPECT_TRUE(*facet == twin) << facet->plain_mat().name().c_str();
        EXPECT_THAT(described(twin.plain_mat().properties()),
                    ElementsAreArray(described(facet->plain_mat().properties())));
    }
}

void expect_same_images(mrFileMat const& one, mrFileMat const& other)
{
    ASSERT_EQ(one.images().size(), other.images().size());
    auto at = other.images().begin();
    for (auto const& [key, image] : one.images()) {
        EXPECT_EQ(at->key, key);
        EXPECT_STREQ(at->value->name(), image->name());
        EXPECT_TRUE(at->value->equal(image)) << key.c_str();
        ++at;
    }
}

} // namespace

TEST(mrFileMat, KeepsEverySampleOnReadingWritingAndReadingAgain)
{
    TestFolder const folder;
    std::vector<std::string> const paths = sample_materials();
    EXPECT_GE(paths.size(), 9u);
    for (std::string const& path : paths) {
        SCOPED_TRACE(path);
        std::string const written_again = folder.path(fs::path(path).filename().string());
        mrFileMat first, second;
        ASSERT_EQ(first.read(utString(path)), mrFileMatReadOK);
        ASSERT_EQ(first.write(utString(written_again)), 1);
        ASSERT_EQ(second.read(utString(written_again)), mrFileMatReadOK);
        EXPECT_THAT(described(second.file_props()), ElementsAreArray(described(first.file_props())));
        expect_same_facets(first, second);
        expect_same_images(first, second);
    }
}
