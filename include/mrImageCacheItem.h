// One entry of an image cache.
#pragma once

#include "mrExport.h"

#include "dgCounted.h"
#include "utCheckValid.h"

class dgDuctImage;

/// An image, on which the entry holds one reference, and its age: see mrImageCache.
class MR_API mrImageCacheItem
{
public:
    /// @param image  null makes an entry without an image
    /// @param age    any
    /// @report "Args" when @p image is null
    mrImageCacheItem(dgDuctImage* image, int age);
    ~mrImageCacheItem();

    void set_age(int age);
    int age() const;

    /// Borrowed; null in an entry without an image.
    /// @report "Invalid image!" in an entry without an image
    dgDuctImage* image() const;

protected:
    /// Copies nothing: makes an entry without an image, of age 0.
    /// @report "call to prohibited function | Copy constructor : Use prohibited!"
    mrImageCacheItem(mrImageCacheItem const& other);

    /// Changes nothing.
    /// @report "call to prohibited function | Assignment operator : Use prohibited!"
    void operator=(mrImageCacheItem const& other);

private:
    dgCounted<dgDuctImage> m_image;
    int m_age = 0;
    utCheckValid m_check{this};
};
