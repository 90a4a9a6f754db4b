#include "mrFileMultimat.h"

#include "mrXMLUtils.h"

#include "utString.h"
#include "xmlDocument.h"
#include "xmlParser.h"
#include "xmlUtils.h"
#include "xmlWriter.h"

#include <new>

namespace {

utString const root_name = "multimat";
utString const encapsulation_name = "image_encapsulation_type";

static_assert(xmlWriter::max_line <= mrXMLUtils::max_line, "a document that is written can be read");

} // namespace

void mrFileMultimat::write(std::ostream& out, mrImageEncapsulationType encapsulation,
                           mrMatPropcoSet const& properties, mrFMFacetcoDListPtrcoPtrcoDList const& facets)
{
    xmlDocument document;
    xmlElement& root = document.create_element(root_name);
    document.append_child(root);
    utString word;
    mrTypes::print(encapsulation, word);
    xmlUtils::append_child_text_element(root, encapsulation_name, word);
    mrXMLUtils::write_properties(root, properties);
    mrXMLUtils::write_facets(root, facets);

    out << "<?xml version=\"1.0\"?>\n";
    xmlWriter(&document).write(out);
    // The byte that stands between the document and its images.
    if (encapsulation == mrImageEncapsulationEmbeddedPng)
        out << '\n';
}

int mrFileMultimat::read(utString const& text, mrImageEncapsulationType& encapsulation,
                         mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets)
{
    try {
        xmlDocument document;
        if (!xmlParser().parse(text, document))
            return 0;
        return extract(document, encapsulation, properties, facets);
    } catch (std::bad_alloc const&) {
        return 0;
    }
}

int mrFileMultimat::extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                            mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets)
{
    xmlElement const* const root = document.document_element();
    if (!root || !(root->node_name() == root_name))
        return 0;
    int word = encapsulation;
    if (!mrXMLUtils::find_child_text_enum(*root, encapsulation_name, mrTypes::parse_mrImageEncapsulationType,
                                          word))
        return 0;
    encapsulation = static_cast<mrImageEncapsulationType>(word);
    return mrXMLUtils::read_properties(*root, properties) && mrXMLUtils::read_facets(*root, facets);
}
