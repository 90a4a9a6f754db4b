#include "mrFileMat.h"

#include "mrFileMultimat.h"
#include "mrFMFacet.h"
#include "mrGuard.h"
#include "mrImageBlock.h"
#include "mrMatProp.h"
#include "mrOutput.h"
#include "mrSource.h"
#include "mrTarget.h"
#include "mrXMLUtils.h"

#include "dgDuctImage.h"
#include "utAssert.h"

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

mrFileMat const& mrFileMat::check() const
{
    UT_CHECK_VALID(m_check);
    return *this;
}

int mrFileMat::write(utString const& path) const
{
    mrFault ignored;
    return mr_guard(ignored, 0, [&] { return write(mrTarget::to_path(path), ignored); });
}

int mrFileMat::write(mrTarget const& target, mrFault& fault) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!empty(), "State");
    fault = {};
    return mr_guard(fault, 0, [&] { return write_parts(target, fault); });
}

int mrFileMat::write_parts(mrTarget const& target, mrFault& fault) const
{
    if (!mrImageBlock::check_titles(m_images, fault))
        return 0;
    mrOutput out(target, mrOutput::Mode::replace, fault);
    if (!out.file())
        return 0;
    gxFileStream stream(out.file());
    auto const encapsulation = m_images.empty() ? mrImageEncapsulationNone : mrImageEncapsulationEmbeddedPng;
    mrFileMultimat::write(stream, encapsulation, m_file_props, m_facets);
    // On a full disk the stream fails; half a document is no success.
    bool const whole = static_cast<bool>(stream.flush());
    if (whole && mrImageBlock::write(m_images, out.file(), fault) == mrImageBlock::Written::all)
        return out.close(fault);
    if (!whole)
        fault.set_out_of_memory(); // unless the target is to blame
    out.explain(fault);
    return 0;
}

mrFileMatReadStatus mrFileMat::read(utString const& path)
{
    mrFault ignored;
    return mr_guard(ignored, mrFileMatBadContent,
                    [&] { return read(mrSource::from_path(path), {}, ignored); });
}

mrFileMatReadStatus mrFileMat::read(mrSource const& source, mrReadLimits const& limits, mrFault& fault,
                                    mrFaultcoDList* remarks)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(empty(), "State");
    fault = {};
    return mr_guard(fault, mrFileMatBadContent, [&] {
        gxFile const file(source.open(fault));
        return file ? read_parts(file.get(), limits, fault, remarks) : mrFileMatOpenFailed;
    });
}

mrFileMatReadStatus mrFileMat::read_parts(std::FILE* file, mrReadLimits const& limits, mrFault& fault,
                                          mrFaultcoDList* remarks)
{
    gxFileStream in(file);
    m_encapsulation = mrImageEncapsulationNone;
    utString document;
    std::int64_t first_line = 0;
    if (!mrXMLUtils::gather_doc(in, "multimat", document, first_line, fault))
        return mrFileMatNoDocument;
    if (!mrFileMultimat::read(document, m_encapsulation, m_file_props, m_facets, &fault)) {
        if (fault.line > 0)
            fault.line += first_line - 1;
        return mrFileMatBadContent;
    }
    in.clear();                            // a document may end with the file, and tellg() would fail then
    std::streamoff const end = in.tellg(); // of the document, or -1
    mrImageBlock block(file, end < 0 ? end : end + 1, limits);
    if (m_encapsulation != mrImageEncapsulationNone) {
        int const whole = block.read_into(m_images, remarks);
        fault = block.fault();
        return whole ? mrFileMatReadOK : mrFileMatBadContent;
    }
    if (remarks && block.at_image())
        remarks->append({"images follow a document that says there are none; they are left out"});
    return mrFileMatReadOK;
}
