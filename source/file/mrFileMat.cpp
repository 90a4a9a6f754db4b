#include "mrFileMat.h"

#include "mrFileMultimat.h"
#include "mrFMFacet.h"
#include "mrMatProp.h"
#include "mrUtils.h"
#include "mrXMLUtils.h"

#include "dgDuctImage.h"
#include "gxOpenFile.h"
#include "utAssert.h"
#include "utString.h"

#include <fstream>
#include <limits>
#include <new>

namespace {

utString const root_name = "multimat";

/// Where the images start after a document that ends at the position: one separating byte later.
/// @return 0 when that is no int
int block_start(std::streamoff document_end)
{
    std::streamoff const start = document_end + 1;
    return start > 0 && start <= std::numeric_limits<int>::max() ? static_cast<int>(start) : 0;
}

} // namespace

mrFileMat::mrFileMat() : m_file_props(mrInitialSize, mrFillLimit), m_images(mrInitialSize, mrFillLimit) {}

mrFileMat::mrFileMat(mrMatPropcoSet const& properties, mrFMFacetcoDListPtrcoPtrcoDList const& facets,
                     utStringdgDuctImagecoTablePtrcoPtrcoTable const& images)
    : m_file_props(properties), m_facets(facets), m_images(images)
{
    for (auto const& [name, image] : m_images)
        if (image)
            image->reference();
}

mrFileMat::~mrFileMat()
{
    for (mrFMFacet* facet : m_facets)
        delete facet;
    for (auto const& [name, image] : m_images)
        if (image)
            image->unreference();
}

int mrFileMat::empty() const
{
    UT_CHECK_VALID(m_check);
    return m_file_props.empty() && m_facets.empty() && m_images.empty();
}

mrMatPropcoSet const& mrFileMat::file_props() const
{
    UT_CHECK_VALID(m_check);
    return m_file_props;
}

mrFMFacetcoDListPtrcoPtrcoDList const& mrFileMat::facets() const
{
    UT_CHECK_VALID(m_check);
    return m_facets;
}

utStringdgDuctImagecoTablePtrcoPtrcoTable const& mrFileMat::images() const
{
    UT_CHECK_VALID(m_check);
    return m_images;
}

int mrFileMat::write(utString const& path) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!empty(), "State");

    std::ofstream out = gx_create_stream(path);
    if (!out.is_open())
        return 0;
    auto const encapsulation = m_images.empty() ? mrImageEncapsulationNone : mrImageEncapsulationEmbeddedPng;
    mrFileMultimat::write(out, encapsulation, m_file_props, m_facets);
    out.close();
    // On a full disk the stream fails; half a document is no success.
    if (!out)
        return 0;
    return mrUtils::write_images(m_images, path);
}

mrFileMatReadStatus mrFileMat::read(utString const& path)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(empty(), "State");
    try {
        return read_parts(path);
    } catch (std::bad_alloc const&) {
        return mrFileMatBadContent;
    }
}

mrFileMatReadStatus mrFileMat::read_parts(utString const& path)
{
    std::ifstream in = gx_open_stream(path);
    if (!in.is_open())
        return mrFileMatOpenFailed;
    utString document;
    if (!mrXMLUtils::read_doc(in, root_name, document))
        return mrFileMatNoDocument;
    in.clear(); // a last line without a line break ends the file, and tellg() would not tell
    int const start = block_start(in.tellg());
    in.close();

    mrImageEncapsulationType encapsulation = mrImageEncapsulationNone;
    if (!mrFileMultimat::read(document, encapsulation, m_file_props, m_facets))
        return mrFileMatBadContent;
    if (encapsulation == mrImageEncapsulationNone)
        return mrFileMatReadOK;
    return mrUtils::read_images(path, start, m_images) ? mrFileMatReadOK : mrFileMatBadContent;
}
