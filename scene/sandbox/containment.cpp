#include "containment.h"

#include "childProcess.h"
#include "utConcat.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace sandbox {

namespace {

bool limit_to(__rlimit_resource resource, rlim_t most)
{
    rlimit const both{most, most};
    return setrlimit(resource, &both) == 0;
}

// ---- Landlock, by its numbers: the headers of a distribution know less of it than the kernels that it runs on.

struct Ruleset
{
    std::uint64_t files = 0;
    std::uint64_t network = 0;
    std::uint64_t scopes = 0;
};

struct [[gnu::packed]] PlaceRule
{
    std::uint64_t allowed;
    std::int32_t place;
};

constexpr unsigned ask_for_version = 1;
constexpr int place_rule = 1;

constexpr std::uint64_t read_file = 1 << 2;
constexpr std::uint64_t read_folder = 1 << 3;

/// All that a version can take away.
Ruleset all_of_version(int version)
{
    Ruleset all;
    all.files = (1 << 13) - 1;
    if (version >= 2)
        all.files |= 1 << 13; // into another folder
    if (version >= 3)
        all.files |= 1 << 14; // truncating
    if (version >= 4)
        all.network = 3; // TCP: binding and connecting
    if (version >= 5)
        all.files |= 1 << 15; // control of devices
    if (version >= 6)
        all.scopes = 3; // abstract sockets, signals
    return all;
}

/// The size of the ruleset that a version knows.
std::size_t size_of_version(int version)
{
    return version >= 6   ? sizeof(Ruleset)
           : version >= 4 ? offsetof(Ruleset, scopes)
                          : offsetof(Ruleset, network);
}

void allow(int rules, std::string const& path)
{
    int const place = open(path.c_str(), O_PATH | O_CLOEXEC);
    if (place < 0)
        return;
    struct stat status
    {};
    bool const is_folder = fstat(place, &status) == 0 && S_ISDIR(status.st_mode);
    PlaceRule const rule{is_folder ? read_file | read_folder : read_file, place};
    syscall(SYS_landlock_add_rule, rules, place_rule, &rule, 0);
    close(place);
}

/// What the address sanitizer opens at the end, to look for leaks: this process, and the list of those that are meant.
void allow_sanitizer(int rules)
{
    allow(rules, "/proc");
    constexpr std::string_view key = "suppressions=";
    char const* const options = std::getenv("LSAN_OPTIONS");
    std::string_view const text = options ? options : "";
    if (std::size_t const at = text.find(key); at != text.npos)
        allow(rules, std::string(text.substr(at + key.size(), text.find(':', at) - at - key.size())));
}

} // namespace

std::vector<std::string> Containment::words() const
{
    std::vector<std::string> words;
    if (no_new_privileges)
        words.emplace_back("no new privileges");
    if (limits)
        words.emplace_back("limits");
    if (landlock > 0)
        words.push_back(ut_concat("Landlock (ABI ", landlock, ")"));
    if (filter)
        words.emplace_back("seccomp");
    return words;
}

Containment contain_process(std::uint64_t largest_file)
{
    Containment given_up;
    given_up.no_new_privileges = prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
    // A core that is piped to a program has no limit but this.
    bool const dumpable = !under_address_sanitizer() && prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) != 0;
    signal(SIGXFSZ, SIG_IGN);
    given_up.limits = limit_to(RLIMIT_CORE, 0) && limit_to(RLIMIT_FSIZE, largest_file) && !dumpable;
    given_up.filter = refuse_system_calls();
    // Counts threads too, which loaders may need.
    if (!given_up.filter)
        limit_to(RLIMIT_NPROC, 0);
    return given_up;
}

int restrict_reading(std::vector<std::string> const& places)
{
    auto const version =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, nullptr, std::size_t{0}, ask_for_version));
    if (version < 1)
        return 0;
    Ruleset const all = all_of_version(version);
    auto const rules =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, &all, size_of_version(version), 0u));
    if (rules < 0)
        return 0;
    for (std::string const& place : places)
        allow(rules, place);
    if (under_address_sanitizer())
        allow_sanitizer(rules);
    bool const in_force = syscall(SYS_landlock_restrict_self, rules, 0u) == 0;
    close(rules);
    return in_force ? version : 0;
}

} // namespace sandbox
