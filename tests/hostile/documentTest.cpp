// Material files made to harm their reader by the document in them.
#include "confined.h"
#include "readers.h"

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

/// A million texts that differ in the number between the two parts.
std::string numbered(std::string const& before, std::string const& after)
{
    std::string all;
    for (int number = 0; number < million; ++number)
        all += before + std::to_string(number) + after;
    return all;
}

class HostileDocument : public HostileFile
{
protected:
    void expect_inside(std::string const& title, std::string const& inside,
                       char const* outcome = "read") const
    {
        expect(title, head + inside + tail, read_material, outcome);
    }
};

} // namespace

TEST_F(HostileDocument, OddRoots)
{
    std::string const plain = head + tail;
    expect("two roots in lines of their own", plain + plain, read_material, "read");
    expect("two roots in one line", plain.substr(0, plain.size() - 1) + plain, read_material, "bad content");
    // The lines before that of the opening tag are no part of the document.
    expect("document type in the line of the root",
           "<!DOCTYPE multimat [<!ENTITY a SYSTEM '/etc/passwd'>]>" + head + "&a;" + tail, read_material,
           "bad content");
}

TEST_F(HostileDocument, Many)
{
    expect_inside("opened and never closed", filled("<a>\n"), "bad content");
    expect_inside(million_words + " properties of distinct names",
                  "<properties>" +
                      numbered("<property><name>",
                               "</name><type>integer</type><value>0</value><client_data>0</client_data>"
                               "</property>\n") +
                      "</properties>");
    // A line break about every hundred units: the shorter a unit, the more it costs for its length.
    expect_inside("characters between elements", filled(repeated("<a/>b", 100) + "\n"));
    expect_inside("elements of distinct names", numbered("<a", "/>\n"), "bad content");
    expect_inside("attributes of distinct names", "<a " + numbered(" a", "=''\n") + "/>");
}

TEST_F(HostileDocument, LongTokens)
{
    expect_inside("a long attribute", "<a b='" + filled("c\n") + "'/>");
    expect_inside("a tag without an end", "<a " + filled("\n"), "bad content");
    expect_inside("a text in many pieces", filled("a<!---->&lt;<![CDATA[b]]>\n"));
    expect_inside("UTF-8 that ends in 8-bit text", filled("\xC3\xA9\n") + "\xE9");
    expect("a line of a megabyte", head + std::string(std::size_t{1} << 20, 'a') + "\n" + tail, read_material,
           "no document");
    expect("NULs", std::string(much, '\0'), read_material, "no document");
}
