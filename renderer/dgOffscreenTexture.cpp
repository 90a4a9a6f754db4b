#include "dgOffscreenTexture.h"

#include "dgCounted.h"
#include "gr_stretch_blt.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace {

bool driver_takes(int width, int height)
{
    glTexImage2D(GL_PROXY_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glGetError(); // a size out of all bounds may be one
    GLint taken = 0;
    glGetTexLevelParameteriv(GL_PROXY_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &taken);
    return taken == width;
}

dgCounted<dgDuctImage> scaled_down(dgDuctImage const& image, int width, int height)
{
    // Made opaque first: scaling weights colours by alpha, which a texture ignores.
    dgCounted<dgDuctImage> const opaque(new dgDuctImage(utCopyDeep, image));
    for (std::size_t at = 3; at < opaque->byte_count(); at += 4)
        opaque->pixels()[at] = 255;
    dgCounted<dgDuctImage> scaled(new dgDuctImage("", width, height));
    gr_stretch_blt(*scaled, 0, 0, width, height, *opaque, 0, 0, image.width(), image.height(),
                   grStretchBltAverage);
    return scaled;
}

void upload(dgDuctImage const& image)
{
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, image.width(), image.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 image.pixels());
}

void set_sampling()
{
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glGenerateMipmap(GL_TEXTURE_2D);
}

} // namespace

dgOffscreenTexture::dgOffscreenTexture(dgTextureState const& state)
{
    dgDuctImage const& image = *state.image;
    int width = image.width();
    int height = image.height();
    while (!driver_takes(width, height) && (width > 1 || height > 1)) {
        width = std::max(width / 2, 1);
        height = std::max(height / 2, 1);
    }
    glGenTextures(1, &m_texture);
    glBindTexture(GL_TEXTURE_2D, m_texture);
    if (width == image.width() && height == image.height())
        upload(image);
    else
        upload(*scaled_down(image, width, height));
    set_sampling();
    m_ready = glGetError() == GL_NO_ERROR;
}

dgOffscreenTexture::~dgOffscreenTexture()
{
    glDeleteTextures(1, &m_texture);
}
