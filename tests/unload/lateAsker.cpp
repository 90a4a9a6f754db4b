// An application with a static object made before the library's first use, which still asks for values when the
// process ends: after the static objects that the library made on use. Ends with 1 where one is no more.
#include "mrColourPaletteCache.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrPieChart.h"
#include "mrThumbAtts.h"

#include "utAssert.h"
#include "xmlDocument.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

class Asker
{
public:
    ~Asker();

    /// @return how many of the values for what is absent are not as they were made
    int ask() const;
};

int dead = 0;

void count_dead(char const* file, int line, char const* message)
{
    if (std::strcmp(message, "Invalid object") != 0)
        return;
    std::fprintf(stderr, "%s:%d: %s\n", file, line, message);
    ++dead;
}

int Asker::ask() const
{
    mrThumbAtts atts;
    xmlDocument document;
    coDList<utString> const list;
    coPageArr<utString> const array;
    coTable<int, std::unique_ptr<utString>> const table(4, 50);

    bool const all_there = mrColourPaletteCache::singleton().get_palette("absent").empty() &&
                           mrFMFacet().plain_mat().invalid() && atts.tex_blocks().empty() &&
                           !atts.tex_blocks().read(1) && atts.pie_chart().blocks(2).size() == 2 &&
                           document.create_element("a").node_value().invalid() && list[0].invalid() &&
                           array[0].invalid() && !table.read(1);
    return dead + (all_there ? 0 : 1);
}

Asker::~Asker()
{
    if (ask() != 0)
        std::_Exit(1);
}

Asker const asker;

} // namespace

int main()
{
    ut_set_assert_handler(count_dead);
    return asker.ask();
}
