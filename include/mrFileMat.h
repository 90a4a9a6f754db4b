// A material file in memory.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrFault.h"
#include "mrTypes.h"
#include "utCheckValid.h"

#include <cstdio>

class mrSource;
class mrTarget;
class utString;
struct mrReadLimits;

/// A material with all that belongs to it: file properties, facets, and the images that its texture layers
/// name.
///
/// It owns its facets and holds one reference on each of its images. Filled once, by a constructor or by one
/// read().
class MR_API mrFileMat
{
public:
    /// An empty file.
    mrFileMat();

    /// @param facets  handed over: the file deletes them
    /// @param images  the file takes one reference on each; null ones are kept as they are
    mrFileMat(mrMatPropcoSet const& properties, mrFMFacetcoDListPtrcoPtrcoDList const& facets,
              utStringdgDuctImagecoTablePtrcoPtrcoTable const& images);

    ~mrFileMat();
    mrFileMat(mrFileMat const&) = delete;
    mrFileMat& operator=(mrFileMat const&) = delete;

    /// 1 when there are no properties, no facets and no images.
    int empty() const;

    mrMatPropcoSet const& file_props() const;
    mrFMFacetcoDListPtrcoPtrcoDList const& facets() const;
    utStringdgDuctImagecoTablePtrcoPtrcoTable const& images() const;

    /// Writes the document to the path, in the place of what is there, and after it the images, if any.
    /// @return 1, or 0 when the file cannot be created, takes no more, or an image cannot be written; what
    ///         was written until then stays
    /// @report "State" when the file is empty; a document without members is written all the same
    int write(utString const& path) const;

    /// Reads the path, adding to what is held. Safe for untrusted input; see xmlParser, mrXMLUtils::max_line,
    /// mrXMLUtils::max_document and mrReadLimits for the limits.
    ///
    /// What is no regular file counts as one that cannot be opened: a pipe would keep the reader waiting. The
    /// file is opened once.
    ///
    /// A document that says "none" has no images whatever follows it. Without enough memory for what the file
    /// holds the status is mrFileMatBadContent. After any status but mrFileMatReadOK the file may hold a part
    /// of what it read.
    /// @report "State" when the file is not empty; it is read all the same
    mrFileMatReadStatus read(utString const& path);

    // The same to and from anywhere, with words for what goes wrong.

    /// @param fault  receives the reason when the result is 0
    /// @report "State" as above
    int write(mrTarget const& target, mrFault& fault) const;

    /// @param limits   what is taken of the images
    /// @param fault    receives what is wrong and where, when the status is not mrFileMatReadOK: a line of the file, a
    ///                 part of the document with the line in which it begins, or an image with its byte
    /// @param remarks  where not null, receives what of the images is left out of a file that reads
    /// @report "State" as above
    mrFileMatReadStatus read(mrSource const& source, mrReadLimits const& limits, mrFault& fault,
                             mrFaultcoDList* remarks = nullptr);

    /// What the document that was read last says of its images; mrImageEncapsulationNone before that.
    mrImageEncapsulationType encapsulation() const;

private:
    mrFileMatReadStatus read_parts(std::FILE* file, mrReadLimits const& limits, mrFault& fault,
                                   mrFaultcoDList* remarks);

    mrMatPropcoSet m_file_props;
    mrFMFacetcoDListPtrcoPtrcoDList m_facets;
    utStringdgDuctImagecoTablePtrcoPtrcoTable m_images;
    mrImageEncapsulationType m_encapsulation = mrImageEncapsulationNone;
    utCheckValid m_check{this};
};
