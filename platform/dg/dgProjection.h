// How points of the scene become points of a picture.
#pragma once

#include "giBox.h"
#include "giPoint.h"
#include "giVector3.h"
#include "utExport.h"

/// A parallel projection onto a viewport.
struct UT_API dgProjection
{
    /// Unit axes of view space in the scene's coordinates: to the right, up, and towards the viewer.
    giVector3 right{1.0, 0.0, 0.0};
    giVector3 up{0.0, 1.0, 0.0};
    giVector3 normal{0.0, 0.0, 1.0};

    giPoint3 centre;         ///< the scene's point shown in the middle of the viewport
    double scale = 1.0;      ///< pixels for each unit of the scene
    double half_depth = 1.0; ///< everything lies within this distance of the centre along the normal
    giBox2 view_port;        ///< in pixels; the picture's lower left corner is (0, 0)

    /// The point in the picture: x and y in pixels from its lower left corner, z from -1 (far) to 1 (near).
    giPoint3 device(giPoint3 const& point) const;
};
