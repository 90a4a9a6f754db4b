// An image tinted towards a colour.
#pragma once

#include "dgCounted.h"
#include "mrExport.h"
#include "utCheckValid.h"

#include <memory>

class dgDuctImage;
class giColour;

/// An image, a colour, and the resultant: a copy of the image whose red, green and blue are each multiplied
/// by the colour's channel as a fraction of 255. White takes the colour, black stays black.
///
/// Invalid while it has no image or no colour; the resultant has no part in that. References on the two
/// images do not balance for copies: each member says what it takes and drops, and the caller who copies evens it
/// out. Making one and copying may throw std::bad_alloc; references and objects are then as before.
class MR_API mrRecolouredImage
{
public:
    /// An invalid object without image, colour and resultant.
    mrRecolouredImage();

    /// Takes one reference on @p image, copies the colour, and computes the resultant, on which it holds one
    /// reference.
    /// @param image  null makes an invalid object without a resultant
    /// @report "Args" when @p image is null
    mrRecolouredImage(dgDuctImage* image, giColour const& colour);

    /// Shares the other's image and resultant without a reference on either, although the destructor takes
    /// one off both. The colour is a new one with a fourth byte of 0.
    /// @report "Args" when @p other is invalid
    mrRecolouredImage(mrRecolouredImage const& other);

    /// Takes one reference off the image and one off the resultant, and deletes the colour.
    ~mrRecolouredImage();

    /// Shares the other's image without a reference on it, although the destructor takes one off. The colour
    /// is a new one with a fourth byte of 0, the resultant a new copy without references. What was held
    /// before stays alive: the references on both images are kept, and the colour is not deleted.
    /// @report "Args" when @p other is invalid
    mrRecolouredImage& operator=(mrRecolouredImage const& other);

    /// 1 while the image or the colour is missing.
    int invalid() const;

    /// The image to tint; null in an invalid object.
    dgDuctImage* original_image() const;

    /// The object's own colour; black in an invalid object.
    giColour const& colour() const;

    /// The tinted copy, borrowed; null in an object made without an image.
    /// @report "State" when invalid
    /// @report "Invalid resultant imsge" when it is null
    dgDuctImage* resultant_image() const;

    /// 1 when the images are equal, whatever the colours; else 1 only when both hold the very same colour
    /// object, as an object and itself do, or neither holds one.
    int operator==(mrRecolouredImage const& other) const;
    int operator!=(mrRecolouredImage const& other) const;

protected:
    /// Makes the resultant: the image's size, name and alpha, and for each colour component the product with
    /// channel / 255.0 in double precision, truncated. Because the fraction is formed first, a product that
    /// ought to be a whole number can come out one lower: 85 under a channel of 147 gives 48.
    /// Does nothing without an image or a colour. An existing resultant is replaced and stays alive.
    /// @report "State" when there is a resultant already
    void create_resultant();

private:
    dgCounted<dgDuctImage> m_image;
    std::unique_ptr<giColour> m_colour;
    dgCounted<dgDuctImage> m_resultant;
    utCheckValid m_check{this};
};
