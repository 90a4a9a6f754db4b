#include "dgOffscreenRenderer.h"

#include "dgOffscreenContext.h"
#include "dgOffscreenMesh.h"
#include "dgOffscreenProgram.h"
#include "dgOffscreenTarget.h"
#include "dgOffscreenTexture.h"

#include "utConcat.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <new>
#include <optional>

struct dgOffscreenRenderer::State
{
    /// @return false when there is not enough memory
    bool draw(dgProjection const& projection, dgDrawState const& state, giTriBlock const& block);
    /// @return the program that keeps to the part, or null when it cannot be built
    dgOffscreenProgram const* program_for(dgOffscreenPart const& part);

    std::unique_ptr<dgOffscreenContext> context;
    utString device;
    dgOffscreenProgram whole_program;
    dgOffscreenProgram part_program; // built when it is first needed
    dgOffscreenMesh mesh;
    dgOffscreenTarget target;
    int read_buffer = dgBackBuffer;
    bool frame_lost = true; // nothing was erased yet, or memory ran out on the way
};

namespace {

/// The pixels up to a coordinate, begun ones counted; 0 for a coordinate that no picture reaches.
int pixels_up_to(double coordinate)
{
    return coordinate > 0.0 && coordinate <= INT_MAX ? static_cast<int>(std::ceil(coordinate)) : 0;
}

/// The pixels of a frame that belong to the viewport, begun ones counted.
dgOffscreenPart part_within(giBox2 const& view_port, int width, int height)
{
    auto const low = [](double value, int most) {
        // Written so that a value that is no number gives 0.
        return value > 0.0 ? static_cast<int>(std::min(value, static_cast<double>(most))) : 0;
    };
    dgOffscreenPart part;
    part.low_x = low(view_port.low().x, width);
    part.low_y = low(view_port.low().y, height);
    part.high_x = std::clamp(pixels_up_to(view_port.high().x), part.low_x, width);
    part.high_y = std::clamp(pixels_up_to(view_port.high().y), part.low_y, height);
    return part;
}

/// Turns rows from the bottom into rows from the top.
void turn_rows(unsigned char* pixels, int width, int height)
{
    std::size_t const row = static_cast<std::size_t>(width) * 4;
    unsigned char* low = pixels;
    unsigned char* high = pixels + row * static_cast<std::size_t>(height);
    for (; high - low >= static_cast<std::ptrdiff_t>(2 * row); low += row) {
        high -= row;
        std::swap_ranges(low, low + row, high);
    }
}

} // namespace

dgOffscreenRenderer* dgOffscreenRenderer::create(utString& reason)
{
    try {
        return start(reason);
    } catch (std::bad_alloc const&) {
        ut_say(reason, "there is not enough memory for a renderer");
        return nullptr;
    }
}

dgOffscreenRenderer* dgOffscreenRenderer::start(utString& reason)
{
    auto state = std::make_unique<State>();
    state->context = dgOffscreenContext::create(reason);
    if (!state->context)
        return nullptr;
    dgOffscreenContext::Scope const scope(*state->context);
    utString problem;
    if (!scope || !state->whole_program.build(dgOffscreenProgram::Extent::whole, problem)) {
        reason = "the OpenGL driver does not take the shading program: ";
        reason += problem;
        return nullptr;
    }
    state->device = reinterpret_cast<char const*>(glGetString(GL_RENDERER));
    glEnable(GL_DEPTH_TEST);
    // Draws also in front of and behind the depth range.
    glEnable(GL_DEPTH_CLAMP);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    return new dgOffscreenRenderer(std::move(state));
}

dgOffscreenRenderer::dgOffscreenRenderer(std::unique_ptr<State> state) : m_state(std::move(state)) {}

dgOffscreenRenderer::~dgOffscreenRenderer() = default;

utString const& dgOffscreenRenderer::device() const
{
    return m_state->device;
}

int dgOffscreenRenderer::select_read_buffer() const
{
    return m_state->read_buffer;
}

void dgOffscreenRenderer::select_read_buffer(int buffer)
{
    m_state->read_buffer = buffer;
}

void dgOffscreenRenderer::select_buffer(dgDoubleBuffer) {}

void dgOffscreenRenderer::erase(giBox2 const& view_port, gsColour const& background, dgEraseZbuffer depth)
{
    m_state->frame_lost = true;
    dgOffscreenContext::Scope const scope(*m_state->context);
    dgOffscreenTarget& target = m_state->target;
    if (!scope || !target.resize(pixels_up_to(view_port.high().x), pixels_up_to(view_port.high().y)))
        return;
    target.clear(background, depth != dgEraseColour);
    m_state->frame_lost = false;
}

void dgOffscreenRenderer::draw(dgProjection const& projection, dgDrawState const& state,
                               giTriBlock const& block)
{
    if (m_state->frame_lost)
        return;
    dgOffscreenContext::Scope const scope(*m_state->context);
    try {
        m_state->frame_lost = !scope || !m_state->draw(projection, state, block);
    } catch (std::bad_alloc const&) {
        m_state->frame_lost = true;
    }
}

bool dgOffscreenRenderer::State::draw(dgProjection const& projection, dgDrawState const& state,
                                      giTriBlock const& block)
{
    std::size_t const nodes = block.nodes().size();
    if (nodes == 0 || block.triangles().empty())
        return true; // before a texture is handed to the driver for nothing
    bool const has_image = state.texturing && state.texture.image && state.texture.image->width() > 0;
    dgOffscreenMesh::Use const use = {block.normals().size() == nodes,
                                      has_image && block.tus() && block.tus()->size() == nodes};

    std::optional<dgOffscreenTexture> texture;
    if (use.coordinates && !texture.emplace(state.texture))
        return false;
    target.bind();
    dgOffscreenPart const part = part_within(projection.view_port, target.width(), target.height());
    dgOffscreenProgram const* const program = program_for(part);
    if (!program)
        return false;
    program->use(projection, state, use.coordinates, part);
    if (state.cull_back_faces)
        glEnable(GL_CULL_FACE);
    else
        glDisable(GL_CULL_FACE);
    return mesh.draw(block, use, projection, target.width(), target.height());
}

dgOffscreenProgram const* dgOffscreenRenderer::State::program_for(dgOffscreenPart const& part)
{
    glDisable(GL_SCISSOR_TEST);
    if (part.low_x == 0 && part.low_y == 0 && part.high_x == target.width() && part.high_y == target.height())
        return &whole_program;
    // Saves time; but a software renderer lets half the samples through along the lower and left edge.
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.low_x, part.low_y, part.high_x - part.low_x, part.high_y - part.low_y);
    utString ignored;
    bool const built =
        part_program.is_built() || part_program.build(dgOffscreenProgram::Extent::part, ignored);
    return built ? &part_program : nullptr;
}

void dgOffscreenRenderer::begin_read_image() {}

dgDuctImage* dgOffscreenRenderer::read_image(dgImageType, char const* name, int x, int y, int width,
                                             int height, dgSetAlpha, short alpha)
{
    dgOffscreenTarget const& target = m_state->target;
    bool const within = x >= 0 && y >= 0 && width > 0 && height > 0 && width <= target.width() - x &&
                        height <= target.height() - y;
    if (m_state->frame_lost || !within)
        return nullptr;
    dgOffscreenContext::Scope const scope(*m_state->context);
    if (!scope)
        return nullptr;
    try {
        auto* const image = new dgDuctImage(name, width, height);
        target.read(x, y, width, height, image->pixels());
        turn_rows(image->pixels(), width, height);
        auto const opacity = static_cast<unsigned char>(std::clamp<int>(alpha, 0, 255));
        for (std::size_t at = 3; at < image->byte_count(); at += 4)
            image->pixels()[at] = opacity;
        return image;
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

void dgOffscreenRenderer::end_read_image() {}
