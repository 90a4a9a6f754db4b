#include "gx_read_dmt_file.h"

#include "gxFileHints.h"
#include "gxMeshFiles.h"
#include "gxMeshNormals.h"
#include "gxOpenFile.h"
#include "gxSTL.h"
#include "utConcat.h"

#include <assimp/config.h>
#include <assimp/Importer.hpp>
#include <assimp/material.h>
#include <assimp/mesh.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

using Mesh = gxMesh;
using Transform = aiMatrix4x4t<double>;

template <class Point>
bool is_finite(Point const& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

/// Leaves out triangles that use a point which is no finite number, and points that no triangle uses.
Mesh without_waste(Mesh const& mesh)
{
    Mesh kept;
    std::vector<int> place(mesh.points.size(), -1);
    auto const keep = [&](int point) {
        int& index = place[gx_at(point)];
        if (index < 0) {
            index = static_cast<int>(kept.points.size());
            kept.points.push_back(mesh.points[gx_at(point)]);
            if (!mesh.normals.empty())
                kept.normals.push_back(mesh.normals[gx_at(point)]);
            if (!mesh.tus.empty())
                kept.tus.push_back(mesh.tus[gx_at(point)]);
        }
        return index;
    };
    for (giTri const& tri : mesh.triangles)
        if (is_finite(mesh.points[gx_at(tri.a)]) && is_finite(mesh.points[gx_at(tri.b)]) &&
            is_finite(mesh.points[gx_at(tri.c)]))
            kept.triangles.push_back({keep(tri.a), keep(tri.b), keep(tri.c)});
    return kept;
}

/// Takes points, lines, and the faces that cutting polygons up would read the wrong memory for, or find no end
/// with, out of a mesh as it was read.
void drop_bad_faces(aiMesh& mesh)
{
    auto const is_bad_index = [&mesh](unsigned index) {
        return index >= mesh.mNumVertices || !is_finite(mesh.mVertices[index]);
    };
    auto const is_bad = [is_bad_index](aiFace const& face) {
        return face.mNumIndices < 3 ||
               std::any_of(face.mIndices, face.mIndices + face.mNumIndices, is_bad_index);
    };
    bool const has_any = mesh.HasPositions() && mesh.HasFaces();
    aiFace* const end =
        has_any ? std::remove_if(mesh.mFaces, mesh.mFaces + mesh.mNumFaces, is_bad) : mesh.mFaces;
    mesh.mNumFaces = static_cast<unsigned>(end - mesh.mFaces);

    // That step ends the process where a mesh that says it has polygons has none.
    bool const polygons =
        std::any_of(mesh.mFaces, end, [](aiFace const& face) { return face.mNumIndices > 3; });
    mesh.mPrimitiveTypes = polygons ? aiPrimitiveType_POLYGON : aiPrimitiveType_TRIANGLE;
}

/// @return false when one is no direction
bool unitize(std::vector<giVector3>& normals)
{
    return std::all_of(normals.begin(), normals.end(), [](giVector3& normal) { return normal.unitize(); });
}

Mesh mesh_of(aiMesh const& from)
{
    Mesh mesh;
    mesh.points.reserve(from.mNumVertices);
    for (unsigned i = 0; i < from.mNumVertices; ++i)
        mesh.points.push_back({from.mVertices[i].x, from.mVertices[i].y, from.mVertices[i].z});
    mesh.triangles.reserve(from.mNumFaces);
    for (unsigned i = 0; i < from.mNumFaces; ++i) {
        aiFace const& face = from.mFaces[i];
        if (face.mNumIndices == 3)
            mesh.triangles.push_back({static_cast<int>(face.mIndices[0]), static_cast<int>(face.mIndices[1]),
                                      static_cast<int>(face.mIndices[2])});
    }
    bool const has_tus = from.HasTextureCoords(0) && from.mNumUVComponents[0] >= 2;
    for (unsigned i = 0; has_tus && i < from.mNumVertices; ++i) {
        aiVector3D const& tu = from.mTextureCoords[0][i];
        mesh.tus.push_back(is_finite(tu) ? giPoint2{tu.x, tu.y} : giPoint2{});
    }
    for (unsigned i = 0; from.HasNormals() && i < from.mNumVertices; ++i)
        mesh.normals.emplace_back(from.mNormals[i].x, from.mNormals[i].y, from.mNormals[i].z);
    mesh = without_waste(mesh);
    if (mesh.normals.empty() || !unitize(mesh.normals))
        return gx_with_normals(std::move(mesh));
    return mesh;
}

/// Turns directions of a mesh into those of the scene: by the inverse transposed, up to a positive factor, so
/// that a transform without inverse does as far as it can.
class NormalTransform
{
public:
    explicit NormalTransform(Transform const& m)
        : m_rows{giVector3(m.a1, m.a2, m.a3), giVector3(m.b1, m.b2, m.b3), giVector3(m.c1, m.c2, m.c3)}
    {
        m_mirrors = m_rows[0].dot(m_rows[1].cross(m_rows[2])) < 0.0;
        giVector3 const cofactors[] = {m_rows[1].cross(m_rows[2]), m_rows[2].cross(m_rows[0]),
                                       m_rows[0].cross(m_rows[1])};
        for (std::size_t i = 0; i < 3; ++i)
            m_rows[i] = cofactors[i] * (m_mirrors ? -1.0 : 1.0);
    }

    bool mirrors() const { return m_mirrors; }

    giVector3 operator()(giVector3 const& normal) const
    {
        giVector3 turned(m_rows[0].dot(normal), m_rows[1].dot(normal), m_rows[2].dot(normal));
        return turned.unitize() ? turned : giVector3(0.0, 0.0, 1.0);
    }

private:
    giVector3 m_rows[3];
    bool m_mirrors;
};

Mesh placed(Mesh mesh, Transform const& transform)
{
    NormalTransform const turn(transform);
    for (giPoint3& point : mesh.points) {
        aiVector3t<double> const to = transform * aiVector3t<double>(point.x, point.y, point.z);
        point = {to.x, to.y, to.z};
    }
    for (giVector3& normal : mesh.normals)
        normal = turn(normal);
    if (turn.mirrors())
        for (giTri& tri : mesh.triangles)
            std::swap(tri.b, tri.c);
    if (!std::all_of(mesh.points.begin(), mesh.points.end(), is_finite<giPoint3>))
        return without_waste(mesh);
    return mesh;
}

/// The blocks of a file, and for each the name of its material.
struct Blocks
{
    std::vector<std::unique_ptr<giTriBlock>> blocks;
    std::vector<utString> materials;
};

/// Calls @p visit with each mesh that the scene shows, as often as it does, in the order of its tree.
template <class Visit>
void walk(aiScene const& scene, Visit const& visit)
{
    // A stack of its own: the tree may be deeper than the program's is.
    std::vector<std::pair<aiNode const*, Transform>> left;
    if (scene.mRootNode)
        left.emplace_back(scene.mRootNode, Transform());
    while (!left.empty()) {
        auto const [node, above] = left.back();
        left.pop_back();
        Transform const transform = above * Transform(node->mTransformation);
        for (unsigned i = 0; i < node->mNumMeshes; ++i)
            if (node->mMeshes[i] < scene.mNumMeshes)
                visit(*scene.mMeshes[node->mMeshes[i]], transform);
        for (unsigned i = node->mNumChildren; i-- > 0;)
            left.emplace_back(node->mChildren[i], transform);
    }
}

std::string count(std::size_t number, char const* word)
{
    return number == 0 ? "" : ut_concat(number, " ", word, number == 1 ? "" : "s");
}

/// Counts the points and lines of meshes that have nothing else: "3 points and 1 line". Points need not be faces of
/// their own.
std::string count_points_and_lines(aiScene const& scene)
{
    std::size_t points = 0;
    std::size_t lines = 0;
    for (unsigned i = 0; i < scene.mNumMeshes; ++i) {
        aiMesh const& mesh = *scene.mMeshes[i];
        if ((mesh.mPrimitiveTypes & (aiPrimitiveType_TRIANGLE | aiPrimitiveType_POLYGON)) != 0)
            continue;
        auto const of_size = [&mesh](unsigned size) {
            if (!mesh.HasFaces())
                return std::size_t{0};
            return static_cast<std::size_t>(
                std::count_if(mesh.mFaces, mesh.mFaces + mesh.mNumFaces,
                              [size](aiFace const& face) { return face.mNumIndices == size; }));
        };
        points += mesh.HasFaces() ? of_size(1) : mesh.mNumVertices;
        lines += of_size(2);
    }
    return ut_concat(count(points, "point"), points > 0 && lines > 0 ? " and " : "", count(lines, "line"));
}

bool is_too_large(aiScene const& scene)
{
    std::int64_t triangles = 0;
    std::int64_t points = 0;
    walk(scene, [&](aiMesh const& mesh, Transform const&) {
        triangles += mesh.mNumFaces;
        points += mesh.mNumVertices;
    });
    return triangles > gx_max_dmt_triangles || points > 3 * gx_max_dmt_triangles;
}

utString name_material(aiScene const& scene, unsigned material)
{
    return material < scene.mNumMaterials ? utString(scene.mMaterials[material]->GetName().C_Str()) : "";
}

Blocks blocks_of(aiScene const& scene)
{
    Blocks read;
    walk(scene, [&](aiMesh const& from, Transform const& transform) {
        Mesh mesh = placed(mesh_of(from), transform);
        if (mesh.triangles.empty())
            return;
        read.blocks.push_back(gx_new_block(std::move(mesh)));
        read.materials.push_back(name_material(scene, from.mMaterialIndex));
    });
    return read;
}

/// An error message, which may quote the file, as one line of text.
utString one_line(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    return text.empty() ? utString("it is no mesh file that can be read") : utString(text);
}

/// What the library's own reader makes of an STL file.
Blocks blocks_of(std::vector<gxMesh>&& solids)
{
    Blocks read;
    for (gxMesh& solid : solids) {
        read.blocks.push_back(gx_new_block(std::move(solid)));
        read.materials.emplace_back(AI_DEFAULT_MATERIAL_NAME); // as Assimp calls what a file says nothing of
    }
    return read;
}

constexpr char no_triangles[] = "the file holds no triangles";

Blocks read_with_assimp(utString const& path, utString& reason)
{
    gxPointLocale const point;
    Assimp::Importer importer;
    importer.SetIOHandler(gx_new_mesh_files()); // the importer's
    importer.SetPropertyInteger(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, 1);
    aiScene const* scene = importer.ReadFile(path.c_str(), 0);
    std::string others;
    if (scene) {
        others = count_points_and_lines(*scene);
        // The importer hands its scene out as const, and takes it back for the next step.
        for (unsigned i = 0; i < scene->mNumMeshes; ++i)
            drop_bad_faces(*scene->mMeshes[i]);
        scene = importer.ApplyPostProcessing(aiProcess_Triangulate);
    }
    if (!scene) {
        reason = one_line(importer.GetErrorString());
        return {};
    }
    if (is_too_large(*scene)) {
        reason = "the scene has more triangles than are allowed";
        return {};
    }
    if (!others.empty())
        reason = utString(ut_concat(no_triangles, ", only ", others));
    return blocks_of(*scene);
}

Blocks read_blocks(utString const& path, utString& reason)
{
    gxFile const file = gx_open_file(path, reason);
    if (!file) {
        reason = utString(ut_concat("the file cannot be opened: ", reason));
        return {};
    }
    reason = no_triangles;
    std::vector<gxMesh> solids;
    if (gx_extension(path.c_str()) == "stl" && gx_read_stl(file.get(), solids, reason))
        return blocks_of(std::move(solids));
    // Opens the file again, as carefully.
    return read_with_assimp(path, reason);
}

/// Appends the blocks and the names of their materials, all or none.
void hand_over(Blocks& read, giTriBlockcoDListPtrcoPtrcoDList& blocks, std::vector<utString>* materials)
{
    std::vector<utString> names = materials ? *materials : std::vector<utString>();
    names.insert(names.end(), read.materials.begin(), read.materials.end());
    auto const before = blocks;
    try {
        for (auto const& block : read.blocks)
            blocks.append(block.get());
    } catch (...) {
        blocks = before; // needs no memory for fewer than there are
        throw;
    }
    for (auto& block : read.blocks)
        block.release();
    if (materials)
        materials->swap(names);
}

} // namespace

int gx_read_dmt_file(utString path, giTriBlockcoDListPtrcoPtrcoDList& blocks, utString* reason,
                     std::vector<utString>* materials)
{
    utString why_not;
    Blocks read;
    try {
        read = read_blocks(path, why_not);
        hand_over(read, blocks, materials);
        if (!read.blocks.empty())
            return 1;
    } catch (std::bad_alloc const&) {
        ut_say(why_not, "there is not enough memory for the meshes");
    } catch (std::exception const& error) {
        ut_say(why_not, error.what());
        why_not.convert([](int character) { return character < ' ' ? ' ' : character; });
    }
    if (reason)
        *reason = std::move(why_not);
    return 0;
}
