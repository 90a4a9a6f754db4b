// mrtool as a process, beside a program that draws one frame.
#include "support/material.h"
#include "support/table.h"

#include <spawn.h>
#include <sys/wait.h>

namespace {

void run(std::vector<std::string> arguments)
{
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t process = 0;
    int status = 0;
    require(posix_spawn(&process, pointers[0], nullptr, nullptr, pointers.data(), environ) == 0 &&
                waitpid(process, &status, 0) == process && status == 0,
            "a program failed");
}

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    WorkFolder const folder;
    std::string const file = folder.file("plain.multimat");
    std::string const thumbnail = folder.file("plain.png");
    require(material(1, 0)->write(utString(file)), "the material cannot be written");
    table.compare(
        "mrtool thumb of one material, whole process",
        [&] {
            run({MR_BENCHMARK_MRTOOL, "thumb", file, "-o", thumbnail});
        },
        {"one frame", [] { run({MR_BENCHMARK_ONE_FRAME}); }}, 1.5);
}
