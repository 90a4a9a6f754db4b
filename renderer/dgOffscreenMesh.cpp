#include "dgOffscreenMesh.h"

#include "dgOffscreenSamples.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstddef>

namespace {

using Vertex = dgOffscreenMesh::Vertex;

// Triangles are handed to OpenGL as they lie in the block.
static_assert(sizeof(giTri) == 3 * sizeof(GLuint));

// The largest device coordinate (the picture's sides are 2 long) and texture coordinate: beyond it single precision
// distorts them.
constexpr double furthest = 1e6;

// A buffer is freed when blocks need less than this part of it.
constexpr std::size_t much_smaller = 8;
constexpr std::size_t always_kept = std::size_t{1} << 20;

bool finite(giPoint3 const& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

/// A projection into normalised device coordinates.
class Placing
{
public:
    Placing(dgProjection const& projection, int width, int height)
        : m_centre(projection.centre),
          m_right(projection.right * projection.scale),
          m_up(projection.up * projection.scale),
          m_normal(projection.normal),
          m_half_depth(projection.half_depth),
          m_width(2.0 / width),
          m_height(2.0 / height)
    {
        giPoint2 const& low = projection.view_port.low();
        giPoint2 const& high = projection.view_port.high();
        m_x = (low.x + high.x) / width - 1.0;
        m_y = (low.y + high.y) / height - 1.0;
    }

    void place(giPoint3 const& point, float* at) const
    {
        giVector3 const offset(point.x - m_centre.x, point.y - m_centre.y, point.z - m_centre.z);
        at[0] = near(offset.dot(m_right) * m_width + m_x);
        at[1] = near(offset.dot(m_up) * m_height + m_y);
        // OpenGL's depth grows away from the viewer.
        at[2] = near(-offset.dot(m_normal) / m_half_depth);
    }

private:
    // The difference of two huge numbers may not be a number; this makes it one.
    static float near(double value)
    {
        return static_cast<float>(value > -furthest ? std::min(value, furthest) : -furthest);
    }

    giPoint3 m_centre;
    giVector3 m_right;
    giVector3 m_up;
    giVector3 m_normal;
    double m_half_depth;
    double m_width;
    double m_height;
    double m_x;
    double m_y;
};

/// Any vector as a direction that single precision can hold, or zeros.
void write_direction(giVector3 const& vector, float* at)
{
    giVector3 direction = vector;
    double const square = direction.dot(direction);
    bool const plain = square > 1e-12 && square < 1e12;
    if (!plain && (direction.invalid() || !direction.unitize()))
        direction = giVector3(0.0, 0.0, 0.0);
    at[0] = static_cast<float>(direction.x);
    at[1] = static_cast<float>(direction.y);
    at[2] = static_cast<float>(direction.z);
}

float coordinate(double value)
{
    return std::isfinite(value) ? static_cast<float>(std::clamp(value, -furthest, furthest)) : 0.0F;
}

/// Nodes in normalised device coordinates.
struct Places
{
    std::vector<std::array<float, 3>> nodes;
    bool finite = false; ///< whether all nodes are finite points

    float const* operator[](int node) const { return nodes[static_cast<std::size_t>(node)].data(); }
};

Places place_nodes(giBoxArrPoint3 const& nodes, Placing const& placing)
{
    Places places;
    places.nodes.reserve(nodes.size());
    // Stays zero while all are finite, and becomes NaN at the first that is not.
    double sum = 0.0;
    for (giPoint3 const& node : nodes) {
        sum += node.x * 0.0 + node.y * 0.0 + node.z * 0.0;
        placing.place(node, places.nodes.emplace_back().data());
    }
    places.finite = sum == 0.0;
    return places;
}

/// What is drawn of a block.
struct Visible
{
    giTriArr triangles;             ///< between the nodes below
    std::vector<std::size_t> nodes; ///< by their numbers in the block
};

/// Finds the triangles that hold together and may cover a sample, in their order, and their nodes.
Visible find_visible(giTriBlock const& block, Places const& places, dgOffscreenSamples const& samples)
{
    giPoint3 const* const nodes = block.nodes().begin();
    auto const usable = [&](int index) {
        return static_cast<unsigned>(index) < places.nodes.size() && (places.finite || finite(nodes[index]));
    };
    Visible visible;
    std::vector<int> numbers(places.nodes.size(), -1);
    auto const number_of = [&](int index) {
        auto const node = static_cast<std::size_t>(index);
        if (numbers[node] < 0) {
            numbers[node] = static_cast<int>(visible.nodes.size());
            visible.nodes.push_back(node);
        }
        return numbers[node];
    };
    for (giTri const& tri : block.triangles())
        if (usable(tri.a) && usable(tri.b) && usable(tri.c) &&
            samples.reached(places[tri.a], places[tri.b], places[tri.c]))
            visible.triangles.push_back({number_of(tri.a), number_of(tri.b), number_of(tri.c)});
    return visible;
}

void write_vertices(giTriBlock const& block, dgOffscreenMesh::Use use, Places const& places,
                    std::vector<std::size_t> const& nodes, Vertex* vertices)
{
    giVector3 const* const normals = use.normals ? block.normals().data() : nullptr;
    giPoint2 const* const coordinates = use.coordinates ? block.tus()->begin() : nullptr;
    for (std::size_t const i : nodes) {
        Vertex& vertex = *vertices++;
        std::copy(places.nodes[i].begin(), places.nodes[i].end(), vertex.place);
        if (normals)
            write_direction(normals[i], vertex.normal);
        else
            std::fill_n(vertex.normal, 3, 0.0F);
        vertex.coordinate[0] = coordinates ? coordinate(coordinates[i].x) : 0.0F;
        vertex.coordinate[1] = coordinates ? coordinate(1.0 - coordinates[i].y) : 0.0F;
    }
}

} // namespace

bool dgOffscreenMesh::draw(giTriBlock const& block, Use use, dgProjection const& projection, int width,
                           int height)
{
    if (block.triangles().empty() || block.nodes().size() == 0)
        return true;
    Places const places = place_nodes(block.nodes(), Placing(projection, width, height));
    Visible const visible = find_visible(block, places, dgOffscreenSamples(width, height));
    giTriArr const& triangles = visible.triangles;
    if (triangles.empty())
        return true;
    bind();
    glGetError(); // whatever was left over
    Vertex* const room = map_vertices(visible.nodes.size());
    if (!room)
        return false;
    write_vertices(block, use, places, visible.nodes, room);
    if (glUnmapBuffer(GL_ARRAY_BUFFER) != GL_TRUE || !fill_indices(triangles))
        return false;
    std::size_t const most = INT_MAX / 3;
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(std::min(triangles.size(), most) * 3), GL_UNSIGNED_INT,
                   nullptr);
    return true;
}

void dgOffscreenMesh::bind()
{
    if (m_array) {
        glBindVertexArray(m_array);
        glBindBuffer(GL_ARRAY_BUFFER, m_vertices);
        return;
    }
    glGenVertexArrays(1, &m_array);
    glGenBuffers(1, &m_vertices);
    glGenBuffers(1, &m_indices);
    glBindVertexArray(m_array);
    glBindBuffer(GL_ARRAY_BUFFER, m_vertices);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_indices);
    auto const attribute = [](GLuint index, GLint size, std::size_t offset) {
        glVertexAttribPointer(index, size, GL_FLOAT, GL_FALSE, sizeof(Vertex),
                              reinterpret_cast<void const*>(offset));
        glEnableVertexAttribArray(index);
    };
    attribute(0, 3, offsetof(Vertex, place));
    attribute(1, 3, offsetof(Vertex, normal));
    attribute(2, 2, offsetof(Vertex, coordinate));
}

dgOffscreenMesh::Vertex* dgOffscreenMesh::map_vertices(std::size_t count)
{
    std::size_t const size = count * sizeof(Vertex);
    bool const wasteful = m_capacity > always_kept && size < m_capacity / much_smaller;
    if (size > m_capacity || wasteful) {
        m_capacity = 0;
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(size), nullptr, GL_STREAM_DRAW);
        if (glGetError() != GL_NO_ERROR)
            return nullptr;
        m_capacity = size;
    }
    return static_cast<Vertex*>(glMapBufferRange(GL_ARRAY_BUFFER, 0, static_cast<GLsizeiptr>(size),
                                                 GL_MAP_WRITE_BIT | GL_MAP_INVALIDATE_BUFFER_BIT));
}

bool dgOffscreenMesh::fill_indices(giTriArr const& triangles) const
{
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(triangles.size() * sizeof(giTri)),
                 triangles.data(), GL_STREAM_DRAW);
    return glGetError() == GL_NO_ERROR;
}
