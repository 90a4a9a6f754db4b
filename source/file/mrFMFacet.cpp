#include "mrFMFacet.h"

#include "mrElementReader.h"
#include "mrElementWriter.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrGuard.h"

#include "utAssert.h"
#include "utNeverDestroyed.h"

#include <algorithm>
#include <utility>

namespace {

utString const facets_name = "facets";
utString const facet_name = "facet";
utString const plain_material_name = "plain_material";

} // namespace

mrFMFacet::mrFMFacet() = default;

mrFMFacet::mrFMFacet(mrFMPlainMat* plain_mat, mrFMTexturecoDList const& textures) : m_textures(textures)
{
    UT_REQUIRE(plain_mat, "Args");
    m_plain_mat.reset(plain_mat); // last: it stays the caller's when there is no memory for the layers
}

mrFMFacet::~mrFMFacet() = default;

int mrFMFacet::invalid() const
{
    UT_CHECK_VALID(m_check);
    return !m_plain_mat;
}

int mrFMFacet::operator==(mrFMFacet const& other) const
{
    UT_CHECK_VALID(m_check);
    if (!m_plain_mat || !other.m_plain_mat)
        return !m_plain_mat && !other.m_plain_mat;
    return *m_plain_mat == *other.m_plain_mat && m_textures.size() == other.m_textures.size() &&
           std::equal(m_textures.begin(), m_textures.end(), other.m_textures.begin());
}

mrFMPlainMat const& mrFMFacet::plain_mat() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(m_plain_mat, "State");
    static utNeverDestroyed<mrFMPlainMat> const invalid_plain_mat;
    return m_plain_mat ? *m_plain_mat : *invalid_plain_mat;
}

mrFMTexturecoDList const& mrFMFacet::textures() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(m_plain_mat, "State");
    return m_textures;
}

void mrFMFacet::xml_write(xmlElement& parent) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(m_plain_mat, "State");
    xmlElement& facet = parent.owner_document().create_element(facet_name);
    if (m_plain_mat)
        m_plain_mat->xml_write(facet);
    mr_need(mrXMLUtils::write_textures(facet, m_textures));
    parent.append_child(facet);
}

int mrFMFacet::xml_read(xmlElement const& element, mrFault* fault)
{
    UT_CHECK_VALID(m_check);
    m_plain_mat.reset(); // every failure leaves the facet invalid
    return mr_guard(fault, 0, [&] { return read_parts(element, fault); });
}

int mrFMFacet::read_parts(xmlElement const& element, mrFault* fault)
{
    auto const plain_mats = xmlUtils::find_child_elements_by_name(element, plain_material_name);
    if (plain_mats.size() != 1)
        return mrElementReader(element, fault)
            .refuse(
                ut_concat("there are ", plain_mats.size(), " elements \"plain_material\" instead of one"));
    auto plain_mat = std::make_unique<mrFMPlainMat>();
    if (!plain_mat->xml_read(*plain_mats.front(), fault)) {
        if (fault)
            fault->within("plain material");
        return 0;
    }
    if (!mrXMLUtils::read_textures(element, m_textures, fault))
        return 0;
    m_plain_mat = std::move(plain_mat);
    return 1;
}

xmlElement* mrXMLUtils::write_facets(xmlElement& element, mrFMFacetcoDListPtrcoPtrcoDList const& facets)
{
    return mr_write_collection(element, facets_name, [&](xmlElement& collection) {
        for (mrFMFacet const* facet : facets)
            if (facet)
                facet->xml_write(collection);
    });
}

int mrXMLUtils::read_facets(xmlElement const& element, mrFMFacetcoDListPtrcoPtrcoDList& facets,
                            mrFault* fault)
{
    auto const read = [&](xmlElement const& member) {
        auto facet = std::make_unique<mrFMFacet>();
        if (!facet->xml_read(member, fault))
            return 0;
        facets.append(facet.get());
        facet.release();
        return 1;
    };
    if (mr_guard(fault, 0,
                 [&] { return mrElementReader(element, fault).read_members(facets_name, facet_name, read); }))
        return 1;
    for (mrFMFacet const* facet : facets)
        delete facet;
    facets.clear();
    return 0;
}
