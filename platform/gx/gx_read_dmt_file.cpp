#include "gx_read_dmt_file.h"

#include "gxMeshFiles.h"
#include "gxOpenFile.h"
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
#include <numbers>
#include <numeric>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using Transform = aiMatrix4x4t<double>;

/// A mesh in its own coordinates: what giTriBlock holds, while it is put together.
struct Mesh
{
    std::vector<giPoint3> points;
    std::vector<giVector3> normals; ///< one for each point, or none
    std::vector<giPoint2> tus;      ///< one for each point, or none
    std::vector<giTri> triangles;
};

template <class Point>
bool is_finite(Point const& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Leaves out triangles that use a point which is no finite number, and points that no triangle uses.
Mesh without_waste(Mesh const& mesh)
{
    Mesh kept;
    std::vector<int> place(mesh.points.size(), -1);
    auto const keep = [&](int point) {
        int& index = place[at(point)];
        if (index < 0) {
            index = static_cast<int>(kept.points.size());
            kept.points.push_back(mesh.points[at(point)]);
            if (!mesh.normals.empty())
                kept.normals.push_back(mesh.normals[at(point)]);
            if (!mesh.tus.empty())
                kept.tus.push_back(mesh.tus[at(point)]);
        }
        return index;
    };
    for (giTri const& tri : mesh.triangles)
        if (is_finite(mesh.points[at(tri.a)]) && is_finite(mesh.points[at(tri.b)]) &&
            is_finite(mesh.points[at(tri.c)]))
            kept.triangles.push_back({keep(tri.a), keep(tri.b), keep(tri.c)});
    return kept;
}

giVector3 difference(giPoint3 const& to, giPoint3 const& from)
{
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

/// A corner of a triangle, on its way to a node of its own.
struct Corner
{
    int position; ///< points at one place have one number
    int point;
    int triangle;
    int which; ///< 0 to 2
    int group; ///< of triangles that form one smooth surface around the position
};

/// Makes normals for a mesh without, and a node for each smooth surface at a point in place of the point.
class NormalMaker
{
public:
    explicit NormalMaker(Mesh const& flat) : m_flat(flat) { m_smooth.triangles = flat.triangles; }

    Mesh make();

private:
    std::vector<int> positions() const;
    std::vector<Corner> corners() const;
    giVector3 face_normal(giTri const& tri) const;
    double angle(Corner const& corner) const;
    int group_of(giVector3 const& normal);
    void make_nodes(Corner* begin, Corner* end);

    Mesh const& m_flat;
    Mesh m_smooth;
    std::vector<giVector3> m_leaders; ///< for each group, the normal of the triangle that opened it
    std::vector<giVector3> m_sums;    ///< for each group, of its normals
};

std::vector<int> NormalMaker::positions() const
{
    auto const key = [this](int point) {
        giPoint3 const& p = m_flat.points[at(point)];
        return std::tuple(p.x, p.y, p.z);
    };
    std::vector<int> order(m_flat.points.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return key(a) < key(b); });

    std::vector<int> position(order.size());
    for (std::size_t i = 1; i < order.size(); ++i) {
        bool const same = key(order[i]) == key(order[i - 1]);
        position[at(order[i])] = position[at(order[i - 1])] + (same ? 0 : 1);
    }
    return position;
}

std::vector<Corner> NormalMaker::corners() const
{
    std::vector<int> const position = positions();
    std::vector<Corner> all;
    all.reserve(m_flat.triangles.size() * 3);
    for (std::size_t i = 0; i < m_flat.triangles.size(); ++i) {
        giTri const& tri = m_flat.triangles[i];
        int which = 0;
        for (int const point : {tri.a, tri.b, tri.c})
            all.push_back({position[at(point)], point, static_cast<int>(i), which++, 0});
    }
    std::sort(all.begin(), all.end(), [](Corner const& a, Corner const& b) {
        return std::tie(a.position, a.triangle, a.which) < std::tie(b.position, b.triangle, b.which);
    });
    return all;
}

/// Of length 1, or 0 for a triangle without area.
giVector3 NormalMaker::face_normal(giTri const& tri) const
{
    giPoint3 const& a = m_flat.points[at(tri.a)];
    giVector3 normal = difference(m_flat.points[at(tri.b)], a).cross(difference(m_flat.points[at(tri.c)], a));
    return normal.unitize() ? normal : giVector3(0.0, 0.0, 0.0);
}

/// By which a triangle's normal counts at a corner: how a polygon was cut into triangles then changes nothing.
double NormalMaker::angle(Corner const& corner) const
{
    giTri const& tri = m_flat.triangles[at(corner.triangle)];
    int const points[] = {tri.a, tri.b, tri.c};
    giPoint3 const& here = m_flat.points[at(points[corner.which])];
    giVector3 const next = difference(m_flat.points[at(points[(corner.which + 1) % 3])], here);
    giVector3 const previous = difference(m_flat.points[at(points[(corner.which + 2) % 3])], here);
    return std::atan2(next.cross(previous).length(), next.dot(previous));
}

/// The directions of leaders are all further from each other than the crease angle, so that there are never
/// more than some twenty to compare with, however many triangles meet.
int NormalMaker::group_of(giVector3 const& normal)
{
    static double const limit = std::cos(gx_dmt_crease_angle * std::numbers::pi / 180.0);
    bool const without_area = normal.dot(normal) == 0.0;
    for (std::size_t i = 0; i < m_leaders.size(); ++i)
        if (without_area || m_leaders[i].dot(normal) >= limit)
            return static_cast<int>(i);
    m_leaders.push_back(normal);
    m_sums.emplace_back(0.0, 0.0, 0.0);
    return static_cast<int>(m_leaders.size() - 1);
}

/// @param begin, end  all corners at one position
void NormalMaker::make_nodes(Corner* begin, Corner* end)
{
    m_leaders.clear();
    m_sums.clear();
    for (Corner* corner = begin; corner != end; ++corner) {
        giVector3 const normal = face_normal(m_flat.triangles[at(corner->triangle)]);
        corner->group = group_of(normal);
        giVector3& sum = m_sums[at(corner->group)];
        sum = sum + normal * angle(*corner);
    }
    for (giVector3& sum : m_sums)
        if (!sum.unitize())
            sum = giVector3(0.0, 0.0, 1.0);

    auto const node = [](Corner const& corner) { return std::tie(corner.point, corner.group); };
    std::sort(begin, end, [&](Corner const& a, Corner const& b) { return node(a) < node(b); });
    for (Corner const* corner = begin; corner != end; ++corner) {
        if (corner == begin || node(*corner) != node(corner[-1])) {
            m_smooth.points.push_back(m_flat.points[at(corner->point)]);
            m_smooth.normals.push_back(m_sums[at(corner->group)]);
            if (!m_flat.tus.empty())
                m_smooth.tus.push_back(m_flat.tus[at(corner->point)]);
        }
        giTri& tri = m_smooth.triangles[at(corner->triangle)];
        (corner->which == 0   ? tri.a
         : corner->which == 1 ? tri.b
                              : tri.c) = static_cast<int>(m_smooth.points.size() - 1);
    }
}

Mesh NormalMaker::make()
{
    std::vector<Corner> all = corners();
    Corner* const past = all.data() + all.size();
    for (Corner* begin = all.data(); begin != past;) {
        Corner* const end =
            std::find_if(begin, past, [begin](Corner const& c) { return c.position != begin->position; });
        make_nodes(begin, end);
        begin = end;
    }
    return std::move(m_smooth);
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
    for (unsigned i = 0; i < from.mNumVertices; ++i)
        mesh.points.push_back({from.mVertices[i].x, from.mVertices[i].y, from.mVertices[i].z});
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
        return NormalMaker(mesh).make();
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

std::unique_ptr<giTriBlock> block_of(Mesh&& mesh)
{
    auto block = std::make_unique<giTriBlock>();
    giBoxArrPoint3& nodes = gsTriUtils::check_out_nodes(*block);
    nodes.reserve(mesh.points.size());
    for (giPoint3 const& point : mesh.points)
        nodes.append(point);
    nodes.compute_box();
    if (!mesh.tus.empty()) {
        giBoxArrPoint2& tus = gsTriUtils::check_out_tus(*block);
        tus.reserve(mesh.tus.size());
        for (giPoint2 const& tu : mesh.tus)
            tus.append(tu);
        tus.compute_box();
    }
    gsTriUtils::check_out_normals(*block) = std::move(mesh.normals);
    gsTriUtils::check_out_triangles(*block) = std::move(mesh.triangles);
    gsTriUtils::repage(*block, nullptr, nullptr);
    return block;
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
        read.blocks.push_back(block_of(std::move(mesh)));
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

Blocks read_blocks(utString const& path, utString& reason)
{
    // For the reason alone; what is read is opened again, as carefully.
    if (!gx_open_file(path, reason)) {
        reason = utString(ut_concat("the file cannot be opened: ", reason));
        return {};
    }
    gxPointLocale const point;
    Assimp::Importer importer;
    importer.SetIOHandler(gx_new_mesh_files()); // the importer's
    importer.SetPropertyInteger(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, 1);
    aiScene const* scene = importer.ReadFile(path.c_str(), 0);
    if (scene) {
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
    Blocks read = blocks_of(*scene);
    if (read.blocks.empty())
        reason = "the file holds no triangles";
    return read;
}

} // namespace

int gx_read_dmt_file(utString path, giTriBlockcoDListPtrcoPtrcoDList& blocks, utString* reason,
                     std::vector<utString>* materials)
{
    utString why_not;
    Blocks read;
    try {
        read = read_blocks(path, why_not);
    } catch (std::bad_alloc const&) {
        why_not = "there is not enough memory for the meshes";
    } catch (std::exception const& error) {
        why_not = one_line(error.what());
    }
    if (read.blocks.empty()) {
        if (reason)
            *reason = why_not;
        return 0;
    }
    for (auto& block : read.blocks)
        blocks.append(block.release());
    if (materials)
        materials->insert(materials->end(), read.materials.begin(), read.materials.end());
    return 1;
}
