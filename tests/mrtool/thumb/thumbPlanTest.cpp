#include "thumbPlan.h"

#include "commandLine.h"

#include "mrTest.h"

#include <gmock/gmock.h>

namespace mrtool {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// A folder with files of all kinds, most of them empty.
class thumbPlan : public testing::Test
{
protected:
    thumbPlan()
    {
        for (char const* name : {"all/chair.OBJ", "all/oak.multimat", "all/sub/oak.multimat",
                                 "all/sub/photo.jpg", "all/sub/photo.jpg.thumb.png", "all/.mr-0123abcd-3.tmp",
                                 "all/notes.txt", "all/feed.xml", "other/oak.multimat"})
            make(name);
        make("all/plain", "<?xml version=\"1.0\"?>\n<multimat>\n");
        make("all/really", "\x89PNG\r\n\x1a\n");
        fs::create_directory_symlink(path("other"), path("all/link"));
        fs::create_symlink(path("other/oak.multimat"), path("all/linked.multimat"));
    }

    void make(std::string const& name, std::string const& bytes = {})
    {
        fs::create_directories(fs::path(path(name)).parent_path());
        write_bytes(path(name), bytes);
    }

    std::string path(std::string const& name) const { return m_folder.path(name); }

    std::string below(fs::path const& file) const { return file.lexically_relative(path("")).string(); }

    /// "INPUT > OUTPUT" for each job, below the folder.
    std::vector<std::string> jobs(ThumbPlan const& plan) const
    {
        std::vector<std::string> texts;
        for (ThumbJob const& job : plan.jobs)
            texts.push_back(below(job.input) + " > " + below(job.output));
        return texts;
    }

    TestFolder m_folder;
};

} // namespace

TEST_F(thumbPlan, keeps_paths_below_a_folder)
{
    ThumbPlan const plan = plan_thumbs({path("all")}, path("out"));
    EXPECT_THAT(jobs(plan),
                ElementsAre("all/chair.OBJ > out/chair.OBJ.png",
                            "all/linked.multimat > out/linked.multimat.png",
                            "all/oak.multimat > out/oak.multimat.png", "all/plain > out/plain.png",
                            "all/really > out/really.png", "all/sub/oak.multimat > out/sub/oak.multimat.png",
                            "all/sub/photo.jpg > out/sub/photo.jpg.png"));
    EXPECT_THAT(plan.rejected, IsEmpty());
}

TEST_F(thumbPlan, names_what_is_nothing_to_draw)
{
    ThumbPlan const plan = plan_thumbs({path("all/notes.txt"), "/dev/null"}, {});
    ASSERT_EQ(plan.rejected.size(), 2u);
    EXPECT_EQ(plan.rejected[0].reason, "not a material, mesh or image file");
    EXPECT_EQ(plan.rejected[1].reason, "neither a file nor a folder");
}

TEST_F(thumbPlan, refuses_outputs_that_do_harm_or_have_no_place)
{
    std::string const oak = path("all/oak.multimat"), other = path("other/oak.multimat"),
                      link = path("all/linked.multimat"), image = path("all/really"),
                      plain = path("all/plain"), notes = path("all/notes.txt");
    make("all/notes.txt", "work");
    make("other/oak.multimat", "work");
    make("tree/plain", "<multimat>");
    fs::create_directory(path("links"));
    fs::create_symlink("really.png", path("links/plain.png"));
    fs::create_symlink(image, path("links/image"));
    fs::create_symlink("loop", path("links/loop"));
    make("tree/plain.png/photo.jpg");
    struct
    {
        std::vector<std::string> inputs;
        std::string output;
        std::string said;
    } const cases[] = {
        {{oak, other},
         path("out"),
         "the thumbnails of " + oak + " and " + other + " would both be " + path("out/oak.multimat.png")},
        {{image}, image, "the thumbnail of " + image + " would replace the input"},
        {{image}, path("links/image"), "the thumbnail of " + image + " would replace the input"},
        {{image, plain},
         path("links"),
         "the thumbnails of " + image + " and " + plain + " would both be " + path("links/plain.png")},
        {{image, plain}, "-", "standard output takes one thumbnail"},
        {{path("all")}, "-", "standard output takes one thumbnail"},
        {{link},
         other,
         "the thumbnail of " + link + " would replace " + other + ", to which the input " + link + " leads"},
        {{plain}, notes, "the thumbnail of " + plain + " would replace " + notes + ", which is no picture"},
        {{plain}, "/dev/null", "would replace /dev/null, which is no file"},
        {{plain}, "/dev/stdout", "would replace /dev/stdout, which is an open file"},
        {{plain}, path("links/loop"), "which leads nowhere: "},
        {{path("all")}, notes, "the thumbnails need a folder, and " + notes + " is none"},
        {{path("tree")},
         path("out"),
         "the thumbnail of " + path("tree/plain.png/photo.jpg") + " would lie below that of " +
             path("tree/plain") + ", " + path("out/plain.png")},
        {{path("all/sub")}, path("all/sub"), " is searched for inputs"},
    };
    for (auto const& each : cases) {
        std::string said;
        try {
            plan_thumbs(each.inputs, each.output);
        } catch (WrongUsage const& wrong) {
            said = wrong.words;
        }
        EXPECT_THAT(said, HasSubstr(each.said));
    }
}

TEST_F(thumbPlan, takes_outputs_that_do_no_harm)
{
    // One input given twice is one, a picture may be replaced, and an output is not walked.
    EXPECT_EQ(plan_thumbs({path("other"), path("all/../other/oak.multimat")}, path("out")).jobs.size(), 1u);
    EXPECT_THAT(jobs(plan_thumbs({path("all/plain")}, path("all/really"))),
                ElementsAre("all/plain > all/really"));
    make("all/sub/out/old.png");
    EXPECT_EQ(plan_thumbs({path("all/sub")}, path("all/sub/out")).jobs.size(), 2u);
}

} // namespace mrtool
