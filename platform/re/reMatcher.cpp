#include "reMatcher.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace {

struct Free
{
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
    void operator()(pcre2_compile_context* context) const { pcre2_compile_context_free(context); }
};

template <class T>
using Held = std::unique_ptr<T, Free>;

PCRE2_SPTR bytes_of(utString const& text)
{
    return reinterpret_cast<PCRE2_SPTR>(text.c_str());
}

utString message(int error)
{
    char text[256] = "";
    pcre2_get_error_message(error, reinterpret_cast<PCRE2_UCHAR*>(text), sizeof text);
    return text;
}

} // namespace

struct reMatcher::Engine
{
    Held<pcre2_code> code;
    Held<pcre2_match_data> match;
};

reMatcher::reMatcher(utString const& pattern) : m_pattern(pattern), m_engine(std::make_unique<Engine>()) {}

reMatcher::~reMatcher() = default;

int reMatcher::compile(int, utString& error, int& position)
{
    *m_engine = Engine();
    m_text.set_invalid();
    Held<pcre2_compile_context> const context(pcre2_compile_context_create(nullptr));
    if (context)
        pcre2_set_newline(context.get(), PCRE2_NEWLINE_ANYCRLF);
    int code = PCRE2_ERROR_NOMEMORY;
    PCRE2_SIZE offset = 0;
    if (context)
        m_engine->code.reset(
            pcre2_compile(bytes_of(m_pattern), m_pattern.length(), 0, &code, &offset, context.get()));
    if (m_engine->code)
        m_engine->match.reset(pcre2_match_data_create_from_pattern(m_engine->code.get(), nullptr));
    if (m_engine->match) {
        // Without such a compiler the match is interpreted.
        pcre2_jit_compile(m_engine->code.get(), PCRE2_JIT_COMPLETE);
        return 1;
    }
    error = message(code);
    position = static_cast<int>(offset);
    return 0;
}

int reMatcher::match(utString const& text, int start)
{
    m_text.set_invalid();
    if (!m_engine->match || start < 0 || static_cast<std::size_t>(start) > text.length())
        return 0;
    int const count = pcre2_match(m_engine->code.get(), bytes_of(text), text.length(),
                                  static_cast<PCRE2_SIZE>(start), 0, m_engine->match.get(), nullptr);
    if (count <= 0)
        return 0;
    m_text = utString(text.view());
    return count;
}

utString reMatcher::get_substring(int n) const
{
    if (m_text.invalid() || n < 0 ||
        static_cast<std::uint32_t>(n) >= pcre2_get_ovector_count(m_engine->match.get()))
        return utString();
    PCRE2_SIZE const* const bounds = pcre2_get_ovector_pointer(m_engine->match.get()) + 2 * n;
    if (bounds[0] == PCRE2_UNSET || bounds[1] < bounds[0])
        return utString();
    return utString(m_text.view().substr(bounds[0], bounds[1] - bounds[0]));
}
