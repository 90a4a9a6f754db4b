// One facet of a material.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "utCheckValid.h"

#include <memory>

class mrFMPlainMat;
class xmlElement;
struct mrFault;

/// A facet: one plain material, which it owns, and the texture layers laid over it, in order. Valid exactly when it has
/// a plain material.
class MR_API mrFMFacet
{
public:
    /// An invalid facet: no plain material, no layers.
    mrFMFacet();

    /// @param plain_mat  made with `new`; the facet deletes it. It stays the caller's when there is no memory for the
    ///                   layers, and std::bad_alloc is thrown
    /// @report "Args" when @p plain_mat is null
    mrFMFacet(mrFMPlainMat* plain_mat, mrFMTexturecoDList const& textures);

    ~mrFMFacet();
    mrFMFacet(mrFMFacet const&) = delete;
    mrFMFacet& operator=(mrFMFacet const&) = delete;

    /// 1 without a plain material.
    int invalid() const;

    /// 1 when plain materials and layers are equal, layers in order, or both facets are invalid.
    int operator==(mrFMFacet const& other) const;

    /// @return for an invalid facet, an invalid material that all invalid facets share
    /// @report "State" when the facet is invalid
    mrFMPlainMat const& plain_mat() const;
    /// @report "State" when the facet is invalid; the list is returned all the same
    mrFMTexturecoDList const& textures() const;

    /// Appends the facet to @p parent as a "facet" element. May throw std::bad_alloc, with @p parent unchanged.
    /// @report "State" when the facet is invalid; the element is then appended without a plain material
    void xml_write(xmlElement& parent) const;

    /// Replaces the plain material by that of a "facet" element, deletes the old one, and adds the element's layers to
    /// its own. Safe for untrusted input.
    /// @param fault  unless null, receives the reason and the place of a failure
    /// @return 1, or 0 with the facet invalid: the element has not exactly one "plain_material", or it or a layer is
    ///         bad. Layers read before a bad one are kept
    int xml_read(xmlElement const& element) { return xml_read(element, nullptr); }
    int xml_read(xmlElement const& element, mrFault* fault);

private:
    int read_parts(xmlElement const& element, mrFault* fault);

    std::unique_ptr<mrFMPlainMat> m_plain_mat;
    mrFMTexturecoDList m_textures;
    utCheckValid m_check{this};
};
