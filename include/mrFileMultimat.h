// The document of a material file.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrTypes.h"

#include <ostream>

class utString;
class xmlDocument;
struct mrFault;

/// Writing and reading the "multimat" document.
class MR_API mrFileMultimat
{
public:
    /// Writes the declaration line and the document, of which no line is longer than mrXMLUtils::max_line.
    /// With mrImageEncapsulationEmbeddedPng one more line break follows, after which the images are expected.
    /// @report "Enum mrImageEncapsulationType: %d", at source/utils/mrTypes.cpp and with the value for %d,
    ///         when @p encapsulation is none of the enumerators; its element is then written empty
    static void write(std::ostream& out, mrImageEncapsulationType encapsulation,
                      mrMatPropcoSet const& properties, mrFMFacetcoDListPtrcoPtrcoDList const& facets);

    /// Parses the text and extracts what is in it. Safe for untrusted input.
    /// @return 1, or 0 when the text is no XML that xmlParser takes, extract() fails, or there is not enough
    ///         memory; the arguments may then hold what was read before
    static int read(utString const& text, mrImageEncapsulationType& encapsulation, mrMatPropcoSet& properties,
                    mrFMFacetcoDListPtrcoPtrcoDList& facets);
    /// @param fault  receives what is wrong and where in the text, when the result is 0
    static int read(utString const& text, mrImageEncapsulationType& encapsulation, mrMatPropcoSet& properties,
                    mrFMFacetcoDListPtrcoPtrcoDList& facets, mrFault& fault);

    /// Adds what the document holds to the arguments.
    /// @param facets  receives new facets, which the list's owner deletes
    /// @return 1, or 0 at the first that is wrong, of the root's name, the encapsulation, the properties and
    ///         the facets; a failed collection leaves its argument empty
    static int extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                       mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets);
    /// @param fault  as above
    static int extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                       mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets, mrFault& fault);
};
