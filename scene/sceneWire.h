// How scenes, surfaces and images go from the child to the parent.
#pragma once

#include "notes.h"
#include "wire.h"

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "giTriBlock.h"
#include "gsTriUtils.h"
#include "gxImageFileUtils.h"

template <class Wire>
void exchange(Wire& wire, scNote& note)
{
    wire(note.kind, note.pattern, note.arguments);
}

template <class Wire>
void exchange(Wire& wire, scImage& image)
{
    wire(image.name, image.extension, image.width, image.height, image.bytes);
}

template <class Wire>
void exchange(Wire& wire, scMaterial& material)
{
    wire(material.name, material.colour, material.opacity, material.transparency, material.roughness,
         material.shininess, material.metalness, material.reflectivity, material.refractive_index,
         material.emission, material.linear, material.texture, material.embedded, material.notes);
}

/// The scene without its surfaces.
template <class Wire>
void exchange(Wire& wire, scScene& scene)
{
    wire(scene.materials, scene.images, scene.notes);
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
    gsTriUtils::check_out_nodes(block).adopt(wire.array<giPoint3>());
    gsTriUtils::check_out_normals(block) = wire.array<giVector3>();
    bool textured = false;
    wire(textured);
    if (textured)
        gsTriUtils::check_out_tus(block).adopt(wire.array<giPoint2>());
    gsTriUtils::check_out_triangles(block) = wire.array<giTri>();
}

/// @return null when the size and the pixels do not fit each other
inline dgCounted<dgDuctImage> make_image(int width, int height, std::string_view pixels)
{
    bool const sensible =
        width > 0 && height > 0 && std::int64_t{width} * height <= gxImageFileUtils::max_pixels;
    if (!sensible ||
        pixels.size() != std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
        return nullptr;
    auto image = dg_hold(new dgDuctImage("", width, height));
    std::memcpy(image->pixels(), pixels.data(), pixels.size());
    return image;
}

inline void exchange(sandbox::WireWriter& wire, dgCounted<dgDuctImage>& image)
{
    int width = image->width();
    int height = image->height();
    wire(width, height);
    wire.array(std::string_view(reinterpret_cast<char const*>(image->pixels()), image->byte_count()));
}

/// Leaves null where the size and the pixels do not fit each other.
inline void exchange(sandbox::WireReader& wire, dgCounted<dgDuctImage>& image)
{
    int width = 0;
    int height = 0;
    std::string_view pixels;
    wire(width, height, pixels);
    image = make_image(width, height, pixels);
}

// Found through the wire, whatever the value is.
namespace sandbox {

/// An answer: a value, or the reason for a failure.
template <class Wire, class T>
void exchange(Wire& wire, sc::Expected<T>& answer)
{
    bool there = answer.has_value();
    wire(there);
    if (!there && answer)
        answer = sc::because(""); // a reader's, to be filled in
    if (there)
        wire(*answer);
    else
        wire(answer.error());
}

} // namespace sandbox
