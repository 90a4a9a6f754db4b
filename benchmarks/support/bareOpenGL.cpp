#include "bareOpenGL.h"

#include "dgOffscreenContext.h"
#include "dgOffscreenProgram.h"

#include <epoxy/gl.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace {

struct Vertex
{
    float place[3];
    float normal[3];
    float coordinate[2];
};

/// A block and its image in the driver's memory.
struct Uploaded
{
    GLuint texture = 0;
    GLuint array = 0;
    GLuint buffers[2] = {};
};

void check(bool condition, char const* message)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", message);
    std::exit(1);
}

std::vector<Vertex> converted(Scene const& scene, Scene::Draw const& draw)
{
    dgProjection const& projection = draw.projection;
    giVector3 const right = projection.right * (projection.scale * 2.0 / scene.width);
    giVector3 const up = projection.up * (projection.scale * 2.0 / scene.height);
    giVector3 const away = projection.normal * (-1.0 / projection.half_depth);
    giPoint3 const* const nodes = draw.block->nodes().begin();
    giVector3 const* const normals = draw.block->normals().data();
    giPoint2 const* const coordinates = draw.state.texturing ? draw.block->tus()->begin() : nullptr;
    std::vector<Vertex> vertices(draw.block->nodes().size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        giVector3 const offset(nodes[i].x - projection.centre.x, nodes[i].y - projection.centre.y,
                               nodes[i].z - projection.centre.z);
        Vertex& vertex = vertices[i];
        vertex.place[0] = static_cast<float>(offset.dot(right));
        vertex.place[1] = static_cast<float>(offset.dot(up));
        vertex.place[2] = static_cast<float>(offset.dot(away));
        vertex.normal[0] = static_cast<float>(normals[i].x);
        vertex.normal[1] = static_cast<float>(normals[i].y);
        vertex.normal[2] = static_cast<float>(normals[i].z);
        vertex.coordinate[0] = coordinates ? static_cast<float>(coordinates[i].x) : 0.0F;
        vertex.coordinate[1] = coordinates ? static_cast<float>(1.0 - coordinates[i].y) : 0.0F;
    }
    return vertices;
}

void upload_image(dgDuctImage const& image)
{
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, image.width(), image.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 image.pixels());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glGenerateMipmap(GL_TEXTURE_2D);
}

template <class T>
void upload_buffer(GLenum target, T const& elements)
{
    glBufferData(target, static_cast<GLsizeiptr>(elements.size() * sizeof(elements[0])), elements.data(),
                 GL_STREAM_DRAW);
}

Uploaded upload(Scene const& scene, Scene::Draw const& draw)
{
    Uploaded uploaded;
    if (draw.state.texturing) {
        glGenTextures(1, &uploaded.texture);
        glBindTexture(GL_TEXTURE_2D, uploaded.texture);
        upload_image(*draw.state.texture.image);
    }
    glGenVertexArrays(1, &uploaded.array);
    glBindVertexArray(uploaded.array);
    glGenBuffers(2, uploaded.buffers);
    glBindBuffer(GL_ARRAY_BUFFER, uploaded.buffers[0]);
    upload_buffer(GL_ARRAY_BUFFER, converted(scene, draw));
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, uploaded.buffers[1]);
    upload_buffer(GL_ELEMENT_ARRAY_BUFFER, draw.block->triangles());
    auto const attribute = [](GLuint index, GLint size, std::size_t offset) {
        glVertexAttribPointer(index, size, GL_FLOAT, GL_FALSE, sizeof(Vertex),
                              reinterpret_cast<void const*>(offset));
        glEnableVertexAttribArray(index);
    };
    attribute(0, 3, offsetof(Vertex, place));
    attribute(1, 3, offsetof(Vertex, normal));
    attribute(2, 2, offsetof(Vertex, coordinate));
    return uploaded;
}

void release(Uploaded const& uploaded)
{
    glDeleteTextures(1, &uploaded.texture);
    glDeleteBuffers(2, uploaded.buffers);
    glDeleteVertexArrays(1, &uploaded.array);
}

} // namespace

struct BareOpenGL::State
{
    void make_framebuffers();
    void draw(Scene::Draw const& draw, Uploaded const& uploaded) const;
    void begin(gsColour const& background) const;
    std::vector<unsigned char> end() const;

    int width;
    int height;
    std::unique_ptr<dgOffscreenContext> context;
    dgOffscreenProgram program;
    GLuint drawn = 0;
    GLuint resolved = 0;
    Scene kept;
    std::vector<Uploaded> kept_uploads;
};

void BareOpenGL::State::make_framebuffers()
{
    auto const attach = [this](GLenum attachment, GLenum format, GLsizei samples) {
        GLuint buffer = 0;
        glGenRenderbuffers(1, &buffer);
        glBindRenderbuffer(GL_RENDERBUFFER, buffer);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
    };
    glGenFramebuffers(1, &resolved);
    glBindFramebuffer(GL_FRAMEBUFFER, resolved);
    attach(GL_COLOR_ATTACHMENT0, GL_RGBA8, 0);
    glGenFramebuffers(1, &drawn);
    glBindFramebuffer(GL_FRAMEBUFFER, drawn);
    attach(GL_COLOR_ATTACHMENT0, GL_RGBA8, 4);
    attach(GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24, 4);
}

void BareOpenGL::State::begin(gsColour const& background) const
{
    glBindFramebuffer(GL_FRAMEBUFFER, drawn);
    glClearColor(static_cast<float>(background.red()), static_cast<float>(background.green()),
                 static_cast<float>(background.blue()), 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void BareOpenGL::State::draw(Scene::Draw const& draw, Uploaded const& uploaded) const
{
    program.use(draw.projection, draw.state, draw.state.texturing, {});
    glBindTexture(GL_TEXTURE_2D, uploaded.texture);
    glBindVertexArray(uploaded.array);
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(draw.block->triangles().size() * 3), GL_UNSIGNED_INT,
                   nullptr);
}

std::vector<unsigned char> BareOpenGL::State::end() const
{
    std::vector<unsigned char> pixels(static_cast<std::size_t>(width * height) * 4);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, drawn);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolved);
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, resolved);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

BareOpenGL::BareOpenGL(int width, int height) : m_state(std::make_unique<State>())
{
    m_state->width = width;
    m_state->height = height;
    utString problem;
    m_state->context = dgOffscreenContext::create(problem);
    check(m_state->context != nullptr, problem.c_str());
    dgOffscreenContext::Scope const scope(*m_state->context);
    check(m_state->program.build(dgOffscreenProgram::Extent::whole, problem), problem.c_str());
    m_state->make_framebuffers();
    glViewport(0, 0, width, height);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_DEPTH_CLAMP);
}

BareOpenGL::~BareOpenGL() = default;

std::vector<unsigned char> BareOpenGL::frame(Scene const& scene)
{
    dgOffscreenContext::Scope const scope(*m_state->context);
    m_state->begin(scene.background);
    for (Scene::Draw const& draw : scene.draws) {
        Uploaded const uploaded = upload(scene, draw);
        m_state->draw(draw, uploaded);
        release(uploaded);
    }
    return m_state->end();
}

void BareOpenGL::keep(Scene const& scene)
{
    dgOffscreenContext::Scope const scope(*m_state->context);
    for (Uploaded const& uploaded : m_state->kept_uploads)
        release(uploaded);
    m_state->kept_uploads.clear();
    m_state->kept = scene;
    for (Scene::Draw const& draw : scene.draws)
        m_state->kept_uploads.push_back(upload(scene, draw));
}

std::vector<unsigned char> BareOpenGL::frame()
{
    dgOffscreenContext::Scope const scope(*m_state->context);
    m_state->begin(m_state->kept.background);
    for (std::size_t i = 0; i < m_state->kept_uploads.size(); ++i)
        m_state->draw(m_state->kept.draws[i], m_state->kept_uploads[i]);
    return m_state->end();
}
