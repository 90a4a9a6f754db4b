// The process's store of tinted images.
#pragma once

#include "mrExport.h"
#include "utCheckValid.h"
#include "utSingleton.h"

#include <memory>

class dgDuctImage;
class giColour;

/// Tinted images, each computed once for equal images and equal colours.
///
/// Entries are only ever added, without a limit. What the cache made stays alive for the process's life, also
/// after clear() and after the cache itself is gone, so that the images handed out stay good until the libraries are
/// unloaded: the tinted image's four bytes a pixel and about 300 bytes more for each entry, and the image that it was
/// made from. Created on first use, deleted when the library is unloaded. For one thread at a time.
class MR_API mrRecolouredImageCache
{
public:
    /// May throw std::bad_alloc where it makes the cache.
    static mrRecolouredImageCache& singleton();

    /// Deletes the cache; the next singleton() makes a new, empty one.
    static void delete_singleton();

    mrRecolouredImageCache(mrRecolouredImageCache const&) = delete;
    mrRecolouredImageCache& operator=(mrRecolouredImageCache const&) = delete;

    /// The image tinted towards the colour: that of the youngest entry whose image equals @p image and whose
    /// colour equals @p colour, else that of a new entry, which takes one reference on @p image.
    /// Takes one comparison of images for each entry of the same colour and image size, the youngest first, however
    /// many others there are: so n different images of one size take the square of n to tint in one colour.
    /// @param image  null gets an entry of its own, which no later call finds
    /// @return borrowed, without a reference for the caller; null for a null image; null without enough memory, with no
    ///         entry and no reference taken
    /// @report "Args" when @p image is null, followed by what mrRecolouredImage reports of it
    dgDuctImage* recoloured_image(dgDuctImage* image, giColour const& colour);

    /// Forgets every entry; their images stay alive.
    /// @return the number of entries there were
    int clear();

protected:
    mrRecolouredImageCache();
    ~mrRecolouredImageCache();

    /// @param action  utSingletonGet creates the cache on first use; anything else deletes it
    /// @return the cache, or null after deleting it
    static mrRecolouredImageCache* access_singleton(utSingletonAccessAction action);

private:
    friend class utKillerOfmrRecolouredImageCache;

    struct Entries;

    std::unique_ptr<Entries> m_entries;
    utCheckValid m_check{this};
};

/// Deletes the cache when it is destroyed; the library holds one, for its own unloading.
class MR_API utKillerOfmrRecolouredImageCache
{
public:
    ~utKillerOfmrRecolouredImageCache();
};
