// The command line: its subcommands with their options, and what is said when it is wrong.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace CLI {
class App;
}

namespace mrtool {

/// Exit statuses.
inline constexpr int all_well = 0;
inline constexpr int something_failed = 1; ///< the failure was reported, the rest was done
inline constexpr int wrong_usage = 2;      ///< nothing was done

/// Thrown when the arguments make no sense together. Nothing has been written then.
struct WrongUsage
{
    std::string words;
};

struct Subcommand
{
    CLI::App* options; ///< its part of the command line; owned by the program's
    /// Does the work after the options were parsed, and reports failures on standard error.
    /// @return the exit status
    /// @throws WrongUsage
    std::function<int()> run;
    /// Bytes that the program, and each of its processes, may use; read after the options were parsed.
    std::uint64_t const* memory = nullptr; ///< default_memory where null
};

inline constexpr std::uint64_t default_memory = std::uint64_t{4} << 30;

/// Adds a subcommand and its options to the program's command line.
using AddSubcommand = Subcommand(CLI::App& program);

/// A check for an option that names a file or a folder.
/// @return what is wrong with the value, or an empty text
std::string check_not_empty(std::string const& value);

/// Parses the arguments and runs the subcommand that they name. Help goes to standard output; wrong usage and the
/// usage of the subcommand to standard error.
/// @return the exit status
int run_command_line(int argc, char** argv, std::span<AddSubcommand* const> subcommands);

} // namespace mrtool
