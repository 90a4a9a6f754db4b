// The elements of a scene.
#pragma once

#include "dgCounted.h"
#include "dgDrawState.h"
#include "giTriBlock.h"
#include "utExport.h"

/// One step of a scene: a change of the values in force, or something to draw with them.
class UT_API dgElement
{
public:
    dgElement() = default;
    dgElement(dgElement const&) = delete;
    dgElement& operator=(dgElement const&) = delete;
    virtual ~dgElement();

    /// Changes the values in force; a drawn element changes none.
    virtual void set(dgDrawState& state) const;

    /// The block to draw, or null for an element that only sets values.
    virtual giTriBlock const* triangle_block() const;
};

class UT_API dgDrawQuality : public dgElement
{
public:
    void triangle_block_rendering(dgTriangleBlockRendering rendering) { m_rendering = rendering; }
    void set(dgDrawState& state) const override;

private:
    dgTriangleBlockRendering m_rendering = dgTriangleBlockFilled;
};

class UT_API dgSurfColour : public dgElement
{
public:
    explicit dgSurfColour(gsColour const& colour) : m_colour(colour) {}
    void set(dgDrawState& state) const override;

private:
    gsColour m_colour;
};

class UT_API dgReflectionAttributes : public dgElement
{
public:
    dgReflectionAttributes(double ambient, double diffuse, double transmission, double specular,
                           double specular_exponent, gsColour const& specular_colour,
                           gsColour const& emission)
        : m_reflection{ambient, diffuse, transmission, specular, specular_exponent, specular_colour, emission}
    {}
    void set(dgDrawState& state) const override;

private:
    dgReflection m_reflection;
};

class UT_API dgShadingMethod : public dgElement
{
public:
    explicit dgShadingMethod(dgShadingMethodType type) : m_type(type) {}
    void set(dgDrawState& state) const override;

private:
    dgShadingMethodType m_type;
};

class UT_API dgReflectionModel : public dgElement
{
public:
    explicit dgReflectionModel(dgReflectionModelType type) : m_type(type) {}
    void set(dgDrawState& state) const override;

private:
    dgReflectionModelType m_type;
};

/// 0 draws both sides of a triangle, anything else its front alone.
class UT_API dgBackFaceFlag : public dgElement
{
public:
    explicit dgBackFaceFlag(int flag) : m_flag(flag) {}
    void set(dgDrawState& state) const override;

private:
    int m_flag;
};

/// Texturing on or off for the next triangle block.
class UT_API dgTextureFlag : public dgElement
{
public:
    /// @param on       1 to texture, 0 not to
    /// @param on_back  makes no difference: both sides show the texture
    dgTextureFlag(int on, [[maybe_unused]] int on_back) : m_on(on) {}
    void set(dgDrawState& state) const override;

private:
    int m_on;
};

/// The texture of the next triangle block.
class UT_API dgTexture : public dgElement
{
public:
    /// @param image     null for none; the element holds a reference on it, so one that must outlive the
    ///                  element is referenced by its owner
    /// @param priority  makes no difference
    dgTexture(dgDuctImage* image, dgTextureImageFormat format, dgTextureFilterType filter,
              dgTextureWrapType wrap, dgTextureCompositionType composition, int priority);
    void set(dgDrawState& state) const override;

private:
    dgCounted<dgDuctImage> m_image;
    dgTextureState m_texture;
};

/// The range of the next triangle block's own texture coordinates.
class UT_API dgTextureCoordGenUV : public dgElement
{
public:
    /// @param range      box of the block's texture coordinates; empty when it has none
    /// @param transform  null; coordinates are taken as they stand
    /// @param flags      0
    dgTextureCoordGenUV(giBox2 const& range, double const* transform, int flags);
    void set(dgDrawState& state) const override;

private:
    giBox2 m_range;
};

/// Triangles to draw.
class UT_API dgTriangleBlock : public dgElement
{
public:
    /// @param block  borrowed; the caller keeps it alive while the scene is used
    /// @param flags  0
    dgTriangleBlock(giTriBlock const& block, int flags);
    giTriBlock const* triangle_block() const override;

private:
    giTriBlock const* m_block;
};
