// The program that OpenGL shades with.
#pragma once

#include "dgDrawState.h"
#include "dgProjection.h"
#include "utString.h"

/// Pixels of a frame, from the low corner to below the high one.
struct dgOffscreenPart
{
    int low_x = 0;
    int low_y = 0;
    int high_x = 0;
    int high_y = 0;
};

/// Shades a pixel by one directional light and ambient light, with the half-way vector's highlight.
///
/// Takes the vertices of dgOffscreenMesh. Its OpenGL objects belong to the context that is current when it is
/// built, and go with it.
class dgOffscreenProgram
{
public:
    /// What of the frame is drawn. Keeping to a part takes longer, for hidden pixels are shaded too.
    enum class Extent
    {
        whole,
        part
    };

    /// @param problem  receives the driver's words when it cannot be built
    bool build(Extent extent, utString& problem);
    bool is_built() const { return m_built; }

    /// Puts the program and its values in force.
    /// @param part  where pixels are drawn, unless it was built for the whole frame
    void use(dgProjection const& projection, dgDrawState const& state, bool textured,
             dgOffscreenPart const& part) const;

private:
    unsigned m_program = 0;
    bool m_built = false;
    int m_to_view = -1;
    int m_part = -1;
    int m_depth_scale = -1;
    int m_textured = -1;
    int m_lit = -1;
    int m_surface = -1;
    int m_ambient = -1;
    int m_diffuse = -1;
    int m_specular = -1;
    int m_exponent = -1;
    int m_emission = -1;
};
