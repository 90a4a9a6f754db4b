// How scenes, surfaces and images go from the child to the parent.
#pragma once

#include "scScene.h"
#include "wire.h"

#include "giTriBlock.h"
#include "gsTriUtils.h"

template <class Wire>
void exchange(Wire& wire, scNote& note)
{
    wire(note.kind);
    wire(note.pattern);
    wire(note.arguments);
}

template <class Wire>
void exchange(Wire& wire, scImage& image)
{
    wire(image.name);
    wire(image.extension);
    wire(image.width);
    wire(image.height);
    wire(image.bytes);
}

template <class Wire>
void exchange(Wire& wire, scMaterial& material)
{
    wire(material.name);
    wire(material.colour);
    wire(material.opacity);
    wire(material.transparency);
    wire(material.roughness);
    wire(material.shininess);
    wire(material.metalness);
    wire(material.reflectivity);
    wire(material.refractive_index);
    wire(material.emission);
    wire(material.texture);
    wire(material.embedded);
    wire(material.notes);
}

/// The scene without its surfaces.
template <class Wire>
void exchange(Wire& wire, scScene& scene)
{
    wire(scene.materials);
    wire(scene.images);
    wire(scene.notes);
}

inline void exchange(sandbox::WireWriter& wire, scSurface& surface)
{
    giTriBlock const& block = *surface.block;
    wire(surface.material_name);
    wire.array(block.nodes());
    wire.array(block.normals());
    bool textured = block.tus() != nullptr;
    wire(textured);
    if (textured)
        wire.array(*block.tus());
    wire.array(block.triangles());
}

inline void exchange(sandbox::WireReader& wire, scSurface& surface)
{
    surface.block = std::make_unique<giTriBlock>();
    giTriBlock& block = *surface.block;
    wire(surface.material_name);
    giBoxArrPoint3& nodes = gsTriUtils::check_out_nodes(block);
    wire.array<giPoint3>([&](giPoint3 const& node) { nodes.append(node); });
    giNormArr& normals = gsTriUtils::check_out_normals(block);
    wire.array<giVector3>([&](giVector3 const& normal) { normals.push_back(normal); });
    bool textured = false;
    wire(textured);
    if (textured) {
        giBoxArrPoint2& tus = gsTriUtils::check_out_tus(block);
        wire.array<giPoint2>([&](giPoint2 const& tu) { tus.append(tu); });
    }
    giTriArr& triangles = gsTriUtils::check_out_triangles(block);
    wire.array<giTri>([&](giTri const& triangle) { triangles.push_back(triangle); });
}
