#include "dgOffscreenTarget.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace {

constexpr GLsizei samples = 4;

void attach(GLenum attachment, GLuint buffer)
{
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
}

bool complete()
{
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void make_storage(GLuint buffer, GLsizei sample_count, GLenum format, int width, int height)
{
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, sample_count, format, width, height);
}

bool driver_takes(int width, int height)
{
    GLint most_side = 0;
    GLint most_view[2] = {};
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &most_side);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, most_view);
    return width <= std::min(most_side, most_view[0]) && height <= std::min(most_side, most_view[1]);
}

} // namespace

bool dgOffscreenTarget::resize(int width, int height)
{
    if (width == m_width && height == m_height && m_width > 0)
        return true;
    m_width = m_height = 0;
    if (width < 1 || height < 1 || static_cast<long long>(width) * height > most_pixels ||
        !driver_takes(width, height) || !allocate(width, height))
        return false;
    m_width = width;
    m_height = height;
    return true;
}

bool dgOffscreenTarget::allocate(int width, int height)
{
    glGetError(); // whatever was left over
    if (!m_drawn) {
        glGenFramebuffers(1, &m_drawn);
        glGenFramebuffers(1, &m_resolved);
        glGenRenderbuffers(1, &m_colour);
        glGenRenderbuffers(1, &m_depth);
        glGenRenderbuffers(1, &m_resolved_colour);
    }
    make_storage(m_colour, samples, GL_RGBA8, width, height);
    make_storage(m_depth, samples, GL_DEPTH_COMPONENT24, width, height);
    make_storage(m_resolved_colour, 0, GL_RGBA8, width, height);
    if (glGetError() != GL_NO_ERROR)
        return false;

    glBindFramebuffer(GL_FRAMEBUFFER, m_resolved);
    attach(GL_COLOR_ATTACHMENT0, m_resolved_colour);
    bool const resolves = complete();
    glBindFramebuffer(GL_FRAMEBUFFER, m_drawn);
    attach(GL_COLOR_ATTACHMENT0, m_colour);
    attach(GL_DEPTH_ATTACHMENT, m_depth);
    if (!resolves || !complete())
        return false;
    // Colour is filled with each frame, depth perhaps never.
    glDisable(GL_SCISSOR_TEST);
    glClear(GL_DEPTH_BUFFER_BIT);
    return glGetError() == GL_NO_ERROR;
}

void dgOffscreenTarget::clear(gsColour const& colour, bool with_depth) const
{
    bind();
    glDisable(GL_SCISSOR_TEST);
    glClearColor(static_cast<float>(colour.red()), static_cast<float>(colour.green()),
                 static_cast<float>(colour.blue()), 1.0F);
    glClear(with_depth ? GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT : GL_COLOR_BUFFER_BIT);
}

void dgOffscreenTarget::bind() const
{
    glBindFramebuffer(GL_FRAMEBUFFER, m_drawn);
    glViewport(0, 0, m_width, m_height);
}

void dgOffscreenTarget::read(int x, int y, int width, int height, unsigned char* pixels) const
{
    glDisable(GL_SCISSOR_TEST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, m_drawn);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, m_resolved);
    glBlitFramebuffer(x, y, x + width, y + height, x, y, x + width, y + height, GL_COLOR_BUFFER_BIT,
                      GL_NEAREST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, m_resolved);
    glReadPixels(x, y, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
}
