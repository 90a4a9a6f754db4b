#include "mrFileMultimat.h"

#include "mrElementReader.h"

#include "utConcat.h"
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
    mrFault ignored;
    return read(text, encapsulation, properties, facets, ignored);
}

int mrFileMultimat::read(utString const& text, mrImageEncapsulationType& encapsulation,
                         mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets, mrFault& fault)
{
    try {
        xmlDocument document;
        xmlParser parser;
        if (parser.parse(text, document))
            return extract(document, encapsulation, properties, facets, fault);
        fault.reason = parser.error().reason;
        fault.line = parser.error().line;
        fault.column = parser.error().column;
    } catch (std::bad_alloc const&) {
        fault.reason = "not enough memory";
    }
    return 0;
}

int mrFileMultimat::extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                            mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets)
{
    mrFault ignored;
    return extract(document, encapsulation, properties, facets, ignored);
}

int mrFileMultimat::extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                            mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets,
                            mrFault& fault)
{
    xmlElement const* const root = document.document_element();
    if (!root) {
        fault.reason = "there is no element";
        return 0;
    }
    mrElementReader const reader(*root, fault);
    if (!(root->node_name() == root_name))
        return reader.refuse(ut_concat("the root element is \"", root->node_name(), "\", not \"multimat\""));
    return reader.read_enum(encapsulation_name, mrTypes::parse_mrImageEncapsulationType,
                            "neither \"none\" nor \"embedded_png\"", encapsulation) &&
           mrXMLUtils::read_properties(*root, properties, fault) &&
           mrXMLUtils::read_facets(*root, facets, fault);
}
