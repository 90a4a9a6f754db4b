// A camera, and a view of a scene on a renderer.
#pragma once

#include "dgCounted.h"
#include "dgProjection.h"
#include "dgRenderer.h"
#include "dgStructure.h"
#include "giBox.h"
#include "giVector3.h"
#include "utExport.h"

enum dgBoundingViewType
{
    dgBoundingViewNone = 0, ///< keep the camera
    dgBoundingViewFit = 1   ///< show the whole box
};

/// Where a scene is seen from: a parallel projection onto a viewport.
///
/// By default the viewer looks down the z axis with y up.
class UT_API dgCamera : public dgBase
{
public:
    /// The part of the picture that is drawn, in pixels; (0, 0) is its lower left corner.
    void view_port_dc(giBox2 const& box);

    /// Directions that cannot serve leave the default ones, both: a normal or an up without length, unset or
    /// not finite, an up along the normal.
    /// @param at      the point of the scene to look at; taken as the origin when it is not finite
    /// @param normal  from the scene to the viewer, of any length
    /// @param up      upwards in the picture, of any length; made perpendicular to @p normal
    void orientation(giPoint3 const& at, giVector3 const& normal, giVector3 const& up);

    dgProjection const& projection() const { return m_projection; }

protected:
    /// Puts the eight corners of @p box into the viewport with 4 % of its smaller side free all round, the
    /// aspect kept. An empty box, or one with a coordinate that is no finite number, is taken as the unit
    /// cube (0 to 1); a box without any extent is shown with a scale of 1.
    void fit(giBox3 const& box);

    ~dgCamera() override;

private:
    dgProjection m_projection;
};

/// A scene on a renderer, which may be null: then nothing is drawn.
class UT_API dgView final : public dgCamera
{
public:
    /// @param renderer  referenced for the view's life
    /// @param store     null, or where the structures live; referenced for the view's life
    dgView(dgRenderer* renderer, dgStructureStore* store);

    void background_colour(gsColour const& colour) { m_background = colour; }

    /// The structure to draw, referenced while it is the root; null for none.
    void root(dgStructure* structure);

    void view_bounding_box(giBox3 const& box, dgBoundingViewType type);

    void erase(dgEraseZbuffer depth);

    /// Draws @p structure, or the root when it is null: the elements in order, each value holding for the
    /// blocks after it, those of the texture for the next block alone.
    void render_network(dgStructure* structure);

private:
    ~dgView() override;

    dgCounted<dgRenderer> m_renderer;
    dgCounted<dgStructureStore> m_store;
    dgCounted<dgStructure> m_root;
    gsColour m_background;
};
