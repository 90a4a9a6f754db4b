#include "xmlWriter.h"

#include "utUTF8.h"
#include "xmlUtils.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view break_start = "<!--";
constexpr std::string_view break_end = "-->";

/// The text that stands in the file for a byte; empty for a byte that stands there itself.
std::array<std::string, 256> make_replacements()
{
    std::array<std::string, 256> made;
    for (std::size_t byte = 0; byte < made.size(); ++byte) {
        utString const character(std::string(1, static_cast<char>(byte)));
        if (utString const picture = xmlUtils::carried(character); picture != character)
            made[byte] = picture.view();
    }
    made['\n'] = "\n";
    made['\r'] = "&#13;"; // a reader makes a line feed of a carriage return that stands there itself
    made['&'] = "&amp;";
    made['<'] = "&lt;";
    made['>'] = "&gt;"; // also for "]]>", which may not stand in a text
    return made;
}

std::array<std::string, 256> const replacements = make_replacements();

std::string_view replacement_of(char character)
{
    return replacements[static_cast<unsigned char>(character)];
}

/// The text of the file, gathered, with an eye on the length of the line.
class Sheet
{
public:
    explicit Sheet(std::ostream& out) : m_out(out) {}

    void indent(std::size_t depth)
    {
        std::size_t const spaces = std::min(2 * depth, xmlWriter::max_indent);
        m_buffer.append(spaces, ' ');
        m_column += spaces;
    }

    void end_line()
    {
        m_buffer += '\n';
        m_column = 0;
    }

    void tag(std::string_view start, utString const& name)
    {
        make_room(start.size() + name.length() + 1);
        append(start);
        append(name.view());
        append(">");
    }

    void text(std::string_view text);

    /// Hands what was gathered to the stream, when it is much or the last of all.
    void flush(bool last)
    {
        if (!last && m_buffer.size() < 65536)
            return;
        m_out.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
        m_buffer.clear();
    }

private:
    // What a line holds before the start of a break has to follow.
    static constexpr std::size_t usable = xmlWriter::max_line - break_start.size();

    void append(std::string_view bytes)
    {
        m_buffer += bytes;
        m_column += bytes.size();
    }

    void break_line()
    {
        m_buffer += break_start;
        end_line();
        append(break_end);
    }

    void make_room(std::size_t size)
    {
        if (m_column + size > usable)
            break_line();
    }

    void plain(std::string_view run);

    std::ostream& m_out;
    std::string m_buffer;
    std::size_t m_column = 0;
};

void Sheet::text(std::string_view text)
{
    while (!text.empty()) {
        auto const special = std::find_if(text.begin(), text.end(),
                                          [](char character) { return !replacement_of(character).empty(); });
        auto const length = static_cast<std::size_t>(special - text.begin());
        plain(text.substr(0, length));
        text.remove_prefix(length);
        if (text.empty())
            return;
        std::string_view const replacement = replacement_of(text.front());
        text.remove_prefix(1);
        if (replacement == "\n") {
            end_line();
            continue;
        }
        make_room(replacement.size());
        append(replacement);
    }
}

void Sheet::plain(std::string_view run)
{
    while (!run.empty() && m_column + run.size() > usable) {
        std::size_t const room = usable - std::min(usable, m_column);
        std::size_t const length = utUTF8::cut(run, room).size();
        append(run.substr(0, length));
        run.remove_prefix(length);
        break_line();
    }
    append(run);
}

/// Whether layout inside the element would change what it holds.
bool holds_text(xmlElement const& element)
{
    xmlNodeList const& children = element.child_nodes();
    for (std::size_t i = 0; i < children.length(); ++i)
        if (children.item(i).node_type() == xmlTextNode)
            return true;
    return false;
}

/// An element whose start tag is written and whose end tag is not.
struct OpenElement
{
    xmlElement const* element;
    std::size_t next_child;
    bool laid_out; ///< each child on a line of its own
};

/// Writes elements without recursion, so that no depth of the tree matters.
class Walk
{
public:
    explicit Walk(Sheet& sheet) : m_sheet(sheet) {}

    void write(xmlElement const& root)
    {
        open(root);
        while (!m_open.empty()) {
            OpenElement& current = m_open.back();
            xmlNodeList const& children = current.element->child_nodes();
            if (current.next_child == children.length())
                close();
            else
                write_child(children.item(current.next_child++));
            m_sheet.flush(false);
        }
    }

private:
    bool on_own_line() const { return m_open.empty() || m_open.back().laid_out; }

    void write_child(xmlNode const& child)
    {
        if (xmlElement const* const element = child.element())
            open(*element);
        else
            m_sheet.text(child.node_value().view());
    }

    void open(xmlElement const& element)
    {
        bool const laid_out = on_own_line() && element.first_child() && !holds_text(element);
        if (on_own_line())
            m_sheet.indent(m_open.size());
        m_sheet.tag("<", element.node_name());
        if (laid_out)
            m_sheet.end_line();
        m_open.push_back({&element, 0, laid_out});
    }

    void close()
    {
        OpenElement const closed = m_open.back();
        m_open.pop_back();
        if (closed.laid_out)
            m_sheet.indent(m_open.size());
        m_sheet.tag("</", closed.element->node_name());
        if (on_own_line())
            m_sheet.end_line();
    }

    Sheet& m_sheet;
    std::vector<OpenElement> m_open;
};

} // namespace

int xmlWriter::write(std::ostream& out) const
{
    xmlElement const* const root = m_document->document_element();
    if (!root)
        return 0;
    Sheet sheet(out);
    Walk(sheet).write(*root);
    sheet.flush(true);
    return out ? 1 : 0;
}
