#include "xmlParser.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

enum class Encoding
{
    utf8,
    one_byte ///< every byte of the text is a character of its own, and is handed back as that byte
};

/// UTF-8 that came from one byte a character, as those bytes again; a character above 255, which only a
/// character reference can give, stays UTF-8.
void append_bytes(std::string& bytes, std::string_view utf8)
{
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        auto const lead = static_cast<unsigned char>(utf8[i]);
        if ((lead == 0xC2 || lead == 0xC3) && i + 1 < utf8.size())
            bytes += static_cast<char>((lead & 3) << 6 | (static_cast<unsigned char>(utf8[++i]) & 0x3F));
        else
            bytes += utf8[i];
    }
}

/// One parse of a text: builds the nodes as the parser comes upon them.
class Attempt
{
public:
    Attempt(Encoding encoding, xmlDocument& document);

    /// Throws std::bad_alloc when there is not enough memory.
    bool parse(std::string_view text);
    xmlParser::Error const& error() const { return m_error; }

private:
    static void start_element(void* self, XML_Char const* name, XML_Char const** attributes);
    static void end_element(void* self, XML_Char const* name);
    static void character_data(void* self, XML_Char const* text, int length);
    static void start_doctype(void* self, XML_Char const* name, XML_Char const* system_id,
                              XML_Char const* public_id, int has_internal_subset);

    template <class Work>
    static void guarded(void* self, Work const& work);
    void stop();
    void refuse(char const* reason);
    void note_error(char const* reason);
    void append(std::string& result, std::string_view utf8) const;
    void flush_text();

    Encoding m_encoding;
    xmlDocument& m_document;
    Parser m_parser;
    std::vector<xmlElement*> m_open;
    std::string m_text; // gathered until a tag ends it: comments and CDATA make no nodes of their own
    xmlParser::Error m_error;
    bool m_stopped = false;
    bool m_out_of_memory = false;
};

Attempt::Attempt(Encoding encoding, xmlDocument& document)
    : m_encoding(encoding),
      m_document(document),
      // An encoding that is named here overrides that of a declaration.
      m_parser(XML_ParserCreate(encoding == Encoding::utf8 ? "UTF-8" : "ISO-8859-1"), XML_ParserFree)
{
    if (!m_parser)
        throw std::bad_alloc();
    XML_SetUserData(m_parser.get(), this);
    XML_SetElementHandler(m_parser.get(), start_element, end_element);
    XML_SetCharacterDataHandler(m_parser.get(), character_data);
    XML_SetStartDoctypeDeclHandler(m_parser.get(), start_doctype);
}

bool Attempt::parse(std::string_view text)
{
    // In one piece: a token that does not end within a piece would be looked at again with each further one.
    int const length = static_cast<int>(text.size());
    if (XML_Parse(m_parser.get(), text.data(), length, XML_TRUE) == XML_STATUS_OK)
        return true;
    if (m_out_of_memory || XML_GetErrorCode(m_parser.get()) == XML_ERROR_NO_MEMORY)
        throw std::bad_alloc();
    if (m_error.reason.invalid())
        note_error(XML_ErrorString(XML_GetErrorCode(m_parser.get())));
    return false;
}

/// Does a handler's work, none any more after stop(): the end of an empty element follows its start all the
/// same. Nothing may be thrown through the parser, which is C.
template <class Work>
void Attempt::guarded(void* self, Work const& work)
{
    auto& attempt = *static_cast<Attempt*>(self);
    if (attempt.m_stopped)
        return;
    try {
        work(attempt);
    } catch (std::bad_alloc const&) {
        attempt.m_out_of_memory = true;
        attempt.stop();
    }
}

void Attempt::start_element(void* self, XML_Char const* name, XML_Char const**)
{
    guarded(self, [name](Attempt& attempt) {
        if (attempt.m_open.size() == xmlParser::max_depth)
            return attempt.refuse("elements nested too deep");

        attempt.flush_text();
        std::string own_name;
        attempt.append(own_name, name);
        xmlElement& element = attempt.m_document.create_element(utString(std::move(own_name)));
        element.set_line(static_cast<int>(XML_GetCurrentLineNumber(attempt.m_parser.get())));
        if (attempt.m_open.empty())
            attempt.m_document.append_child(element);
        else
            attempt.m_open.back()->append_child(element);
        attempt.m_open.push_back(&element);
        if (attempt.m_document.name_count() > xmlParser::max_names)
            attempt.refuse("too many different element names");
    });
}

void Attempt::end_element(void* self, XML_Char const*)
{
    guarded(self, [](Attempt& attempt) {
        attempt.flush_text();
        attempt.m_open.pop_back();
    });
}

void Attempt::character_data(void* self, XML_Char const* text, int length)
{
    guarded(self, [text, length](Attempt& attempt) {
        attempt.append(attempt.m_text, std::string_view(text, static_cast<std::size_t>(length)));
    });
}

void Attempt::start_doctype(void* self, XML_Char const*, XML_Char const*, XML_Char const*, int)
{
    guarded(self, [](Attempt& attempt) { attempt.refuse("document type declarations are refused"); });
}

void Attempt::stop()
{
    m_stopped = true;
    XML_StopParser(m_parser.get(), XML_FALSE);
}

void Attempt::refuse(char const* reason)
{
    note_error(reason);
    stop();
}

void Attempt::note_error(char const* reason)
{
    m_error.reason = reason;
    m_error.line = static_cast<int>(XML_GetCurrentLineNumber(m_parser.get()));
    m_error.column = static_cast<int>(XML_GetCurrentColumnNumber(m_parser.get())) + 1;
}

void Attempt::append(std::string& result, std::string_view utf8) const
{
    if (m_encoding == Encoding::utf8)
        result += utf8;
    else
        append_bytes(result, utf8);
}

void Attempt::flush_text()
{
    if (m_text.empty())
        return;
    m_open.back()->append_child(m_document.create_text_node(utString(std::string_view(m_text))));
    m_text.clear();
}

bool has_8_bit_bytes(std::string_view text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char character) { return static_cast<unsigned char>(character) >= 0x80; });
}

/// Parses the text as UTF-8 and, where that fails, as one byte a character.
/// @param error  why it failed; of no use when it did not
/// @return whether it came to its end; the document may hold a part of the text when not
bool parse_either_way(std::string_view text, xmlDocument& document, xmlParser::Error& error)
{
    for (Encoding const encoding : {Encoding::utf8, Encoding::one_byte}) {
        Attempt attempt(encoding, document);
        if (attempt.parse(text))
            return true;
        error = attempt.error();
        if (!has_8_bit_bytes(text))
            break;
        document.clear();
    }
    return false;
}

bool parse_text(std::string_view text, xmlDocument& document, xmlParser::Error& error)
{
    if (text.size() > xmlParser::max_length) {
        error.reason = "longer than an XML text may be";
        return false;
    }
    // No XML text holds a NUL except in UTF-16, which the parser below would turn to on seeing one.
    if (text.find('\0') != std::string_view::npos) {
        error.reason = "not well-formed: the text holds a NUL";
        return false;
    }
    // The mark is passed over: it would turn the second attempt to UTF-8 again.
    return parse_either_way(utUTF8::without_byte_order_mark(text), document, error);
}

} // namespace

int xmlParser::parse(utString const& text, xmlDocument& document)
{
    document.clear();
    try {
        m_error = {};
        if (parse_text(text.view(), document, m_error)) {
            m_error = {};
            return 1;
        }
    } catch (std::bad_alloc const&) {
        m_error = {};
        ut_say(m_error.reason, "not enough memory");
    }
    document.clear();
    return 0;
}
