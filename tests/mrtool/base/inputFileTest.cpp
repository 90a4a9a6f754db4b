#include "inputFile.h"

#include "program.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>

namespace mrtool {

using testing::EndsWith;
using testing::HasSubstr;

namespace {

struct inputFile : testing::Test
{
    TestFolder const folder;

    /// Runs the program in the folder.
    Outcome run(std::string const& arguments, std::string const& before = {})
    {
        return run_mrtool(arguments, "cd " + folder.path("") + "; " + before);
    }

    /// The file comes through a pipe, which is open as the number 3.
    Outcome run_on_pipe(std::string const& file, std::string const& arguments)
    {
        return run(arguments, "rm -f pipe; mkfifo pipe; cat " + file + " >pipe & exec 3<pipe;");
    }
};

} // namespace

TEST_F(inputFile, takes_what_comes_through_a_pipe_on_purpose)
{
    write_bytes(folder.path("a.png"), png_bytes(*four_colours()));
    write_bytes(folder.path("a.pgm"), "P5 1 1 255\nx");
    write_bytes(folder.path("a.pcp"), "rgb8 255 0 0\n");
    write_bytes(folder.path("a.gpl"), "GIMP Palette\n1 2 3 a\n");
    std::filesystem::copy(sample("images/hills.bmp"), folder.path("a.bmp"));
    write_material(folder.path("a.multimat"), {giColour(1, 2, 3, 0)});
    struct
    {
        char const* file;
        char const* direct; ///< makes the file "made"
        char const* piped;
    } const cases[] = {
        {"a.png", "thumb a.png -o made", "thumb -o made "},
        {"a.bmp", "thumb a.bmp -o made", "thumb -o made "},
        {"a.multimat", "thumb a.multimat -o made", "thumb -o made "},
        {"a.pcp", "palette a.pcp -o made", "palette -o made "},
        {"a.gpl", "palette --from a.gpl -o made --force", "palette -o made --force --from "},
    };
    for (auto const& each : cases) {
        EXPECT_EQ(run(each.direct).status, 0);
        std::string const made = read_bytes(folder.path("made"));
        EXPECT_NE(made, "");
        write_bytes(folder.path("made"), {});
        Outcome const piped = run_on_pipe(each.file, std::string(each.piped) + "- <&3");
        EXPECT_EQ(piped.status, 0) << each.piped << piped.errors;
        EXPECT_EQ(read_bytes(folder.path("made")), made) << each.piped;
    }
    for (char const* name : {"/dev/stdin <&3", "/dev/fd/3", "/proc/self/fd/3"})
        EXPECT_THAT(run_on_pipe("a.multimat", std::string("info ") + name).output, HasSubstr("1 2 3"))
            << name;
    EXPECT_THAT(run("info - <a.pcp").output, HasSubstr("255 0 0"));
    EXPECT_THAT(run_on_pipe("a.pgm", "thumb /dev/fd/3 -o t.png").errors,
                EndsWith("/dev/fd/3: not a material, mesh or image file\n"));
}

TEST_F(inputFile, limits_what_comes_through_a_pipe_and_where_it_goes)
{
    EXPECT_EQ(run("info - </dev/zero").errors,
              "mrtool: -: cannot be opened: larger than 256 MiB, the most that is taken from a pipe\n");
    EXPECT_EQ(run("info /dev/fd/77").errors, "mrtool: /dev/fd/77: cannot be opened: Bad file descriptor\n");
    write_bytes(folder.path("a.png"), png_bytes(*four_colours()));
    for (auto const& [arguments, said] : {std::pair("thumb -", "the thumbnail of - has no name"),
                                          {"thumb - -o ./", "has no name"},
                                          {"thumb - a.png -o out", "- has to be the only input"}}) {
        Outcome const refused = run(arguments + std::string(" <a.png"));
        EXPECT_EQ(refused.status, 2) << arguments;
        EXPECT_THAT(refused.errors, HasSubstr(said));
    }
    EXPECT_EQ(files_in(folder.path("")), 1);
}

/// /proc/kmsg has the type of a file, makes its reader wait, and takes what is read from everybody else.
TEST_F(inputFile, neither_waits_for_nor_reads_what_is_no_file)
{
    ASSERT_EQ(mkfifo(folder.path("pipe.png").c_str(), 0600), 0);
    for (char const* name : {"log.png", "log.obj", "log.mtl"})
        std::filesystem::create_symlink("/proc/kmsg", folder.path(name));
    std::filesystem::create_symlink("/dev/zero", folder.path("zero.png"));
    write_bytes(folder.path("a.obj"), "mtllib a.mtl log.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    std::string library;
    for (char const* texture : {"/proc/kmsg", "log.png", "pipe.png", "/dev/zero", "/dev/kmsg"})
        library += "newmtl a" + std::to_string(library.size()) + "\nmap_Kd " + texture + "\n";
    write_bytes(folder.path("a.mtl"), library);
    std::string const all = "a.obj log.obj pipe.png log.png zero.png /proc/kmsg /dev/zero";
    for (char const* each : {"import -o out ", "thumb . ", "info ", "palette -o p.png "}) {
        Outcome const outcome = run(each + all, "timeout 20");
        EXPECT_EQ(outcome.status, 1) << each << outcome.errors;
    }
}

} // namespace mrtool
