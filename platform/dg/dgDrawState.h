// The values that a triangle block is drawn with.
#pragma once

#include "dgDuctImage.h"
#include "giBox.h"
#include "gsColour.h"

enum dgTriangleBlockRendering
{
    dgTriangleBlockFilled = 0
};

enum dgShadingMethodType
{
    dgShadingSmooth = 1 ///< the nodes' normals, interpolated
};

enum dgReflectionModelType
{
    dgReflectionNone = 0,      ///< surface colour and texture, without light
    dgReflectionBlinnPhong = 1 ///< ambient, diffuse and specular light with the half-way vector
};

enum dgTextureImageFormat
{
    dgTextureImageAsIs = 0
};

enum dgTextureFilterType
{
    dgTextureFilterLinear = 1 ///< linear, between mipmaps too
};

enum dgTextureWrapType
{
    dgTextureWrapRepeat = 1
};

enum dgTextureCompositionType
{
    dgTextureModulate = 0 ///< the texture times the lit surface, the highlight added after it
};

/// How a surface answers light. All numbers are factors of the light, except the exponent.
struct dgReflection
{
    double ambient = 0.0;
    double diffuse = 1.0;
    double transmission = 0.0; ///< carried for renderers that draw transparent surfaces
    double specular = 0.0;
    double specular_exponent = 1.0;
    gsColour specular_colour{1.0, 1.0, 1.0};
    gsColour emission;
};

/// A texture over the next triangle block. Its alpha is ignored: a surface is opaque.
struct dgTextureState
{
    dgDuctImage* image = nullptr; ///< borrowed; null draws as if texturing were off
    dgTextureImageFormat format = dgTextureImageAsIs;
    dgTextureFilterType filter = dgTextureFilterLinear;
    dgTextureWrapType wrap = dgTextureWrapRepeat;
    dgTextureCompositionType composition = dgTextureModulate;
};

/// The values in force when a triangle block comes up.
///
/// All hold until they are replaced, except the last three, which hold for one block: a plain facet after a
/// textured one shows its own colour.
struct dgDrawState
{
    dgTriangleBlockRendering rendering = dgTriangleBlockFilled;
    gsColour surface{1.0, 1.0, 1.0};
    dgReflection reflection;
    dgShadingMethodType shading = dgShadingSmooth;
    dgReflectionModelType reflection_model = dgReflectionBlinnPhong;
    bool cull_back_faces = false; ///< off, both sides are drawn, with the normal turned to the viewer

    bool texturing = false;
    dgTextureState texture;
    giBox2 texture_range; ///< for renderers that need it; coordinates are taken as they stand
};
