#include "mrFileMultimat.h"

#include "mrElementReader.h"
#include "mrGuard.h"

#include "xmlWriter.h"

namespace {

utString const root_name = "multimat";
utString const encapsulation_name = "image_encapsulation_type";

static_assert(xmlWriter::max_line <= mrXMLUtils::max_line, "the library reads what it writes");

} // namespace

void mrFileMultimat::write(std::ostream& out, mrImageEncapsulationType encapsulation,
                           mrMatPropcoSet const& properties, mrFMFacetcoDListPtrcoPtrcoDList const& facets)
{
    mr_guard_stream(out, [&] {
        xmlDocument document;
        xmlElement& root = document.create_element(root_name);
        document.append_child(root);
        xmlUtils::append_child_text_element(root, encapsulation_name, mrTypes::find_word(encapsulation));
        mr_need(mrXMLUtils::write_properties(root, properties));
        mr_need(mrXMLUtils::write_facets(root, facets));

        out << "<?xml version=\"1.0\"?>\n";
        xmlWriter(&document).write(out);
        // This byte separates the document from its images.
        if (encapsulation == mrImageEncapsulationEmbeddedPng)
            out << '\n';
    });
}

int mrFileMultimat::read(utString const& text, mrImageEncapsulationType& encapsulation,
                         mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets, mrFault* fault)
{
    mrFault ignored;
    mrFault& filled = fault ? *fault : ignored;
    return mr_guard(filled, 0, [&] {
        xmlDocument document;
        xmlParser parser;
        if (parser.parse(text, document))
            return extract(document, encapsulation, properties, facets, &filled);
        filled = {parser.error().reason, {}, parser.error().line, parser.error().column};
        return 0;
    });
}

int mrFileMultimat::extract(xmlDocument const& document, mrImageEncapsulationType& encapsulation,
                            mrMatPropcoSet& properties, mrFMFacetcoDListPtrcoPtrcoDList& facets,
                            mrFault* fault)
{
    return mr_guard(fault, 0, [&] {
        xmlElement const* const root = document.document_element();
        if (!root) {
            if (fault)
                *fault = {"there is no element"};
            return 0;
        }
        mrElementReader const reader(*root, fault);
        if (!(root->node_name() == root_name))
            return reader.refuse(
                ut_concat("the root element is \"", root->node_name(), "\", not \"multimat\""));
        return static_cast<int>(reader.read_enum(encapsulation_name, mrTypes::parse_mrImageEncapsulationType,
                                                 "neither \"none\" nor \"embedded_png\"", encapsulation) &&
                                mrXMLUtils::read_properties(*root, properties, fault) &&
                                mrXMLUtils::read_facets(*root, facets, fault));
    });
}
