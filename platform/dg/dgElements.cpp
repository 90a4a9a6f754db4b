#include "dgElements.h"

dgElement::~dgElement() = default;

void dgElement::set(dgDrawState&) const {}

giTriBlock const* dgElement::triangle_block() const
{
    return nullptr;
}

void dgDrawQuality::set(dgDrawState& state) const
{
    state.rendering = m_rendering;
}

void dgSurfColour::set(dgDrawState& state) const
{
    state.surface = m_colour;
}

void dgReflectionAttributes::set(dgDrawState& state) const
{
    state.reflection = m_reflection;
}

void dgShadingMethod::set(dgDrawState& state) const
{
    state.shading = m_type;
}

void dgReflectionModel::set(dgDrawState& state) const
{
    state.reflection_model = m_type;
}

void dgBackFaceFlag::set(dgDrawState& state) const
{
    state.cull_back_faces = m_flag != 0;
}

void dgTextureFlag::set(dgDrawState& state) const
{
    state.texturing = m_on != 0;
}

dgTexture::dgTexture(dgDuctImage* image, dgTextureImageFormat format, dgTextureFilterType filter,
                     dgTextureWrapType wrap, dgTextureCompositionType composition, int)
    : m_image(dg_hold(image)), m_texture{image, format, filter, wrap, composition}
{}

void dgTexture::set(dgDrawState& state) const
{
    state.texture = m_texture;
}

dgTextureCoordGenUV::dgTextureCoordGenUV(giBox2 const& range, double const*, int) : m_range(range) {}

void dgTextureCoordGenUV::set(dgDrawState& state) const
{
    state.texture_range = m_range;
}

dgTriangleBlock::dgTriangleBlock(giTriBlock const& block, int) : m_block(&block) {}

giTriBlock const* dgTriangleBlock::triangle_block() const
{
    return m_block;
}
