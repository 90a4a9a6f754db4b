#include "ntFileOps.h"

#include "utString.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

int ntFileOps::exists(utString const& path)
{
    // The system would take a path with a NUL for a shorter one.
    if (path.view().find('\0') != std::string_view::npos)
        return 0;
    std::error_code error;
    return std::filesystem::exists(path.c_str(), error) ? 1 : 0;
}

ntFileDate ntFileOps::file_modified_date(char const* path)
{
    std::error_code error;
    auto const written = std::filesystem::last_write_time(path, error);
    if (error)
        return ntFileDate();
    auto const seconds = std::chrono::file_clock::to_sys(std::chrono::floor<std::chrono::seconds>(written));
    auto const midnight = std::chrono::floor<std::chrono::days>(seconds);
    std::chrono::year_month_day const date(midnight);
    std::chrono::hh_mm_ss const time(seconds - midnight);
    return ntFileDate(static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                      static_cast<int>(static_cast<unsigned>(date.day())),
                      static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                      static_cast<int>(time.seconds().count()));
}

int ntFileOps::file_size(char const* path)
{
    std::error_code error;
    std::uintmax_t const size = std::filesystem::file_size(path, error);
    return error ? 0 : static_cast<int>(static_cast<std::uint32_t>(size));
}

void ntFileOps::back_slash_to_proper_ones(utString& path)
{
    path.convert([](int character) { return character == '\\' ? '/' : character; });
}
