#include "utAssert.h"

#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

void write_to_standard_error(char const* file, int line, char const* message)
{
    std::fprintf(stderr, "%s:%d: %s\n", file, line, message);
}

utAssertHandler current_handler = write_to_standard_error;

} // namespace

utAssertHandler ut_set_assert_handler(utAssertHandler handler)
{
    utAssertHandler const previous = current_handler;
    current_handler = handler ? handler : write_to_standard_error;
    return previous;
}

void ut_report_assert_failure(char const* file, int line, char const* message)
{
    current_handler(file, line, message);
}

void ut_report_assert_failure(char const* file, int line, utString const& message)
{
    current_handler(file, line, message.c_str());
}

utString ut_build_assert_varargs(char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list measured;
    va_copy(measured, arguments);
    int const length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);

    std::string text;
    if (length > 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    }
    va_end(arguments);
    return utString(std::move(text));
}
