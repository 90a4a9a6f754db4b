// A triangle block in the form that OpenGL draws.
#pragma once

#include "dgProjection.h"
#include "giTriBlock.h"

/// Turns blocks into buffers, one block at a time; the buffers are kept for the next one.
///
/// Its OpenGL objects belong to the context that is current when it is first used, and go with it.
class dgOffscreenMesh
{
public:
    /// The optional arrays of a block that are used.
    struct Use
    {
        bool normals = false;
        bool coordinates = false;
    };

    struct Vertex
    {
        float place[3];
        float normal[3];
        float coordinate[2];
    };

    /// Draws the block's triangles with the program in force, as far as they hold together: those with an
    /// index beyond the nodes or a node that is no finite point are left out, and those too small to be seen.
    ///
    /// The vertex attributes are 0 the place in normalised device coordinates, 1 the normal in the scene's
    /// axes, of length 0 without a normal, 2 the texture coordinates with v from the top.
    /// @param width, height  of the picture that is drawn into
    /// The picture is bound for drawing.
    /// @return false when there is not enough memory; then nothing was drawn
    bool draw(giTriBlock const& block, Use use, dgProjection const& projection, int width, int height);

private:
    void bind();
    /// @return room for so many, to be written to and unmapped; null when there is not enough memory
    Vertex* map_vertices(std::size_t count);
    bool fill_indices(giTriArr const& triangles) const;

    unsigned m_array = 0;
    unsigned m_vertices = 0;
    unsigned m_indices = 0;
    std::size_t m_capacity = 0; // of the vertex buffer, in bytes
};
