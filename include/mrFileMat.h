// A material file in memory.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrFault.h"
#include "mrReadLimits.h"
#include "mrTypes.h"
#include "utCheckValid.h"

#include <cstdio>

class mrSource;
class mrTarget;

/// A material: file properties, facets, and the images that its texture layers name.
///
/// It owns its facets and holds one reference on each of its images. A constructor or one read() fills it.
class MR_API mrFileMat
{
public:
    /// An empty file.
    mrFileMat();

    /// May throw std::bad_alloc; facets and images are the caller's then.
    /// @param facets  the file deletes them
    /// @param images  the file takes one reference on each; null entries are kept
    mrFileMat(mrMatPropcoSet const& properties, mrFMFacetcoDListPtrcoPtrcoDList const& facets,
              utStringdgDuctImagecoTablePtrcoPtrcoTable const& images);

    ~mrFileMat();
    mrFileMat(mrFileMat const&) = delete;
    mrFileMat& operator=(mrFileMat const&) = delete;

    /// 1 without properties, facets and images.
    int empty() const;

    mrMatPropcoSet const& file_props() const { return check().m_file_props; }
    mrFMFacetcoDListPtrcoPtrcoDList const& facets() const { return check().m_facets; }
    utStringdgDuctImagecoTablePtrcoPtrcoTable const& images() const { return check().m_images; }

    /// Writes the document and the images to the path. They take the place of an older file when all is written;
    /// mrTarget says what a crash leaves.
    /// @return 1, or 0 when the file cannot be opened for writing, the disk or memory is full, or an image cannot be written;
    ///         an older file stays as it was then, and where there was none, the part written before stays. Or 0
    ///         with the path untouched when two images would have one title: see mrImageBlock::check_titles
    /// @report "State" when the file is empty; a document without members is written all the same
    int write(utString const& path) const;

    /// Reads the path and adds to the contents. Safe for untrusted input; see xmlParser, mrXMLUtils::max_line,
    /// mrXMLUtils::max_document and mrReadLimits for the limits.
    ///
    /// The file is opened once. Only a regular file can be opened: a pipe would keep the reader waiting. Anything that
    /// follows a document with "none" is ignored. Images may stand beyond 2 GiB. The status is mrFileMatBadContent also
    /// when memory runs out, and mrFileMatOpenFailed when there is none to open the file. After
    /// any status but mrFileMatReadOK the object may hold a part of the file.
    /// @report "State" when the object is not empty; the file is read all the same
    mrFileMatReadStatus read(utString const& path);

    // The same for any target or source, with the reason for a failure.

    /// @param fault  receives the reason when the result is 0
    /// @report "State" as above
    int write(mrTarget const& target, mrFault& fault) const;

    /// @param limits   for the images
    /// @param fault    receives the reason when the status is not mrFileMatReadOK, and the place: a line of the file,
    ///                 a part of the document with the line where it begins, or an image with its byte
    /// @param remarks  unless null, receives the images and bytes that were left out of a file that could be read
    /// @report "State" as above
    mrFileMatReadStatus read(mrSource const& source, mrReadLimits const& limits, mrFault& fault,
                             mrFaultcoDList* remarks = nullptr);

    /// The encapsulation in the document that was read last; mrImageEncapsulationNone before.
    mrImageEncapsulationType encapsulation() const { return check().m_encapsulation; }

private:
    mrFileMat const& check() const;
    int write_parts(mrTarget const& target, mrFault& fault) const;
    mrFileMatReadStatus read_parts(std::FILE* file, mrReadLimits const& limits, mrFault& fault,
                                   mrFaultcoDList* remarks);

    mrMatPropcoSet m_file_props;
    mrFMFacetcoDListPtrcoPtrcoDList m_facets;
    utStringdgDuctImagecoTablePtrcoPtrcoTable m_images;
    mrImageEncapsulationType m_encapsulation = mrImageEncapsulationNone;
    utCheckValid m_check{this};
};
