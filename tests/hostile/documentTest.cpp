// Documents made to harm their reader, each as a document and as a material file.
#include "confined.h"
#include "readers.h"

#include "xmlParser.h"

namespace {

/// Elements, properties and other things repeated; fewer where everything takes ten times as long.
constexpr int million = sanitized ? 50'000 : 1'000'000;
std::string const million_words = sanitized ? "50,000" : "1,000,000";
/// Bytes of text.
constexpr std::size_t much = sanitized ? std::size_t{1} << 20 : std::size_t{1} << 23;

std::string const head = "<multimat>\n<image_encapsulation_type>none</image_encapsulation_type>\n";
std::string const tail = "</multimat>\n";

std::string filled(std::string const& unit)
{
    return repeated(unit, static_cast<int>(much / unit.size()));
}

/// A line break about every hundred units: the shorter a unit, the more it costs for its length.
std::string in_lines(std::string const& unit)
{
    return filled(repeated(unit, 100) + "\n");
}

/// A million texts that differ in the number between the two parts.
std::string numbered(std::string const& before, std::string const& after)
{
    std::string all;
    for (int number = 0; number < million; ++number)
        all += before + std::to_string(number) + after;
    return all;
}

class HostileDocument : public testing::Test
{
protected:
    /// Reads the text both ways. It is let go before the file is read.
    void expect(std::string const& title, std::string text, char const* document, char const* material)
    {
        Hostile input{title, static_cast<std::int64_t>(text.size())};
        write_bytes(path, text);
        EXPECT_EQ(confined(input, [&text] { return parse_document(text); }), document) << title;
        std::string().swap(text);
        input.title += ", as a material file";
        EXPECT_EQ(confined(input, [this] { return read_material(path); }), material) << title;
    }

    /// The same, of a text inside the root of a material file.
    void expect_inside(std::string const& title, std::string const& inside, char const* document = "read",
                       char const* material = "read")
    {
        expect(title, head + inside + tail, document, material);
    }

    TestFolder const folder;
    std::string const path = folder.path("hostile.multimat");
};

} // namespace

TEST_F(HostileDocument, OddRoots)
{
    std::string const plain = head + tail;
    expect("attribute on the root", "<multimat a=''>" + plain.substr(10), "read", "no document");
    expect("two roots in lines of their own", plain + plain, "junk after document element", "read");
    expect("two roots in one line", plain.substr(0, plain.size() - 1) + plain, "junk after document element",
           "bad content");
    expect("document type with entities",
           "<!DOCTYPE multimat [<!ENTITY a 'aaaaaaaa'><!ENTITY b '&a;&a;&a;&a;'>]>\n" + head + "&b;" + tail,
           "document type declarations are refused", "bad content");
    // The lines before that of the opening tag are no part of the document.
    expect("document type in the line of the root",
           "<!DOCTYPE multimat [<!ENTITY a SYSTEM '/etc/passwd'>]>" + head + "&a;" + tail,
           "document type declarations are refused", "bad content");
}

TEST_F(HostileDocument, Nested)
{
    expect_inside("nested 100,000 deep", repeated("<a>\n", 100'000) + repeated("</a>\n", 100'000),
                  "elements nested too deep", "bad content");
    expect_inside("opened and never closed", filled("<a>\n"), "elements nested too deep", "bad content");
}

TEST_F(HostileDocument, Many)
{
    expect_inside(million_words + " properties of distinct names",
                  "<properties>" +
                      numbered("<property><name>",
                               "</name><type>integer</type><value>0</value><client_data>0</client_data>"
                               "</property>\n") +
                      "</properties>");
    expect_inside("elements of one character", in_lines("<a>b</a>"));
    expect_inside("characters between elements", in_lines("<a/>b"));
    expect_inside("elements of distinct names", numbered("<a", "/>\n"), "too many different element names",
                  "bad content");
    expect_inside("attributes of distinct names", "<a " + numbered(" a", "=''\n") + "/>");
    expect_inside("empty textures",
                  "<facets><facet><textures>" + filled("<texture/>\n") + "</textures></facet></facets>",
                  "read", "bad content");
}

TEST_F(HostileDocument, LongTokens)
{
    expect_inside("a long attribute", "<a b='" + filled("c\n") + "'/>");
    expect_inside("a long text", filled("text\n"));
    expect_inside("a long comment", "<!--" + filled("text\n") + "-->");
    expect_inside("a comment without an end", "<!--" + filled("text\n"), "unclosed token", "bad content");
    expect_inside("a tag without an end", "<a " + filled("\n"), "not well-formed (invalid token)",
                  "bad content");
    expect_inside("a text in many pieces", filled("a<!---->&lt;<![CDATA[b]]>\n"));
    expect_inside("UTF-8 that ends in 8-bit text", filled("\xC3\xA9\n") + "\xE9");
    expect("a line of a megabyte", head + std::string(std::size_t{1} << 20, 'a') + "\n" + tail, "read",
           "no document");
    expect("NULs", std::string(much, '\0'), "not well-formed: the text holds a NUL", "no document");
    expect("empty lines", std::string(much, '\n'), "no element found", "no document");
}
