// The document of a material file.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrTypes.h"

#include <ostream>

class xmlDocument;
struct mrFault;

/// Writes and reads the "multimat" document.
class MR_API mrFileMultimat
{
public:
    /// Writes the declaration line and the document; no line is longer than mrXMLUtils::max_line.
    /// Without enough memory the stream becomes bad (std::ios::badbit), with nothing or a part of it written.
    /// With mrImageEncapsulationEmbeddedPng one more line break follows; the images belong after it.
    /// @report "Enum mrImageEncapsulationType: %d", at source/utils/mrTypes.cpp and with the value for %d,
    ///         when @p encapsulation is no enumerator; its element is then written empty
    static void write(std::ostream& out, mrImageEncapsulationType encapsulation,
                      mrMatPropcoSet const& properties, mrFMFacetcoDListPtrcoPtrcoDList const& facets);

    /// Parses the text and extracts its contents. Safe for untrusted input.
    /// @param fault  unless null, receives the reason and the place of a failure
    /// @return 1, or 0 when xmlParser refuses the text, extract() fails, or memory runs out; the arguments may then
    ///         hold what was read before
    static int read(utString const& text, mrImageEncapsulationType& encapsulation, mrMatPropcoSet& properties,
                    mrFMFacetcoDListPtrcoPtrcoDList& facets)
    {
        return read(text, encapsulation, properties, facets, nullptr);
    }
    static int read(utString const& text, mrImageEncapsulationType& encapsulation, mrMatPropcoSet& properties,
                    mrFMFacetcoDListPtrcoPtrcoDList& facets, mrFault* fault);

    /// Adds the contents of the document to the arguments.
    /// @param facets  receives new facets, which the list's owner deletes
    /// @param fault   as above
    /// @return 1, or 0 at the first that is wrong of the root's name, the encapsulation, the properties and the facets;
    ///         a failed collection leaves its argument empty
    static int extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                       mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets)
    {
        return extract(document, encapsulation, properties, facets, nullptr);
    }
    static int extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                       mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets, mrFault* fault);
};
