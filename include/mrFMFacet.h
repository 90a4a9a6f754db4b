// One facet of a material.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "utCheckValid.h"

#include <memory>

class mrFMPlainMat;
class xmlElement;
struct mrFault;

/// A facet: one plain material, which it owns, and the texture layers laid over it, in order.
///
/// Valid exactly when it has a plain material.
class MR_API mrFMFacet
{
public:
    /// An invalid facet: no plain material, no layers.
    mrFMFacet();

    /// @param plain_mat  made with `new`; the facet deletes it
    /// @report "Args" when @p plain_mat is null
    mrFMFacet(mrFMPlainMat* plain_mat, mrFMTexturecoDList const& textures);

    ~mrFMFacet();
    mrFMFacet(mrFMFacet const&) = delete;
    mrFMFacet& operator=(mrFMFacet const&) = delete;

    /// 1 when there is no plain material.
    int invalid() const;

    /// 1 when the plain materials are equal and so are the layers, pair by pair, or both facets are invalid.
    int operator==(mrFMFacet const& other) const;

    /// @return the plain material; an invalid facet gives an invalid one that all of them share
    /// @report "State" when the facet is invalid
    mrFMPlainMat const& plain_mat() const;
    /// @report "State" when the facet is invalid; the list is returned all the same
    mrFMTexturecoDList const& textures() const;

    /// Appends the facet to @p parent as a "facet" element.
    /// @report "State" when the facet is invalid; the element is then appended without a plain material
    void xml_write(xmlElement& parent) const;

    /// Takes its plain material from a "facet" element, in the place of the one it had, which is deleted, and
    /// adds the element's layers to those it has. Safe for untrusted input.
    /// @return 1, or 0 with the facet invalid: there is not exactly one "plain_material", or it or a layer
    ///         does not read. Layers read before that one are kept
    int xml_read(xmlElement const& element);
    /// @param fault  receives what is wrong and where, when the result is 0
    int xml_read(xmlElement const& element, mrFault& fault);

private:
    std::unique_ptr<mrFMPlainMat> m_plain_mat;
    mrFMTexturecoDList m_textures;
    utCheckValid m_check{this};
};
