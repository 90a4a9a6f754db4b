#include "gxSTL.h"

#include "gx_read_dmt_file.h"
#include "gxMerger.h"
#include "gxMeshNormals.h"
#include "utConcat.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Triple = std::array<float, 3>;

struct Facet
{
    Triple normal; ///< as it is stated
    Triple points[3];
};

giVector3 vector_of(Triple const& triple)
{
    return {static_cast<double>(triple[0]), static_cast<double>(triple[1]), static_cast<double>(triple[2])};
}

giPoint3 point_of(Triple const& triple)
{
    return {static_cast<double>(triple[0]), static_cast<double>(triple[1]), static_cast<double>(triple[2])};
}

bool is_finite(Facet const& facet)
{
    for (Triple const& point : facet.points)
        for (float const number : point)
            if (!std::isfinite(number))
                return false;
    return true;
}

// ---- Binary files

constexpr std::size_t name_size = 80;
constexpr std::size_t head_size = name_size + 4;
constexpr std::size_t facet_size = 50; // twelve numbers and two bytes that nobody agrees on

/// A number, least significant byte first.
std::uint32_t number_at(char const* bytes)
{
    std::uint32_t number = 0;
    for (int i = 3; i >= 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
}

Facet facet_at(char const* bytes)
{
    Facet facet{};
    for (Triple* triple : {&facet.normal, &facet.points[0], &facet.points[1], &facet.points[2]})
        for (float& number : *triple) {
            number = std::bit_cast<float>(number_at(bytes));
            bytes += sizeof number;
        }
    return facet;
}

/// The facets of a binary file, which is read each time that they are walked through: that takes less time than to
/// keep them.
class BinarySolid
{
public:
    /// @param file  borrowed
    BinarySolid(std::FILE* file, std::size_t count) : m_file(file), m_count(count) {}

    std::size_t size() const { return m_count; }

    template <class Visit>
    void walk(Visit const& visit) const
    {
        constexpr std::size_t at_once = 1024;
        char bytes[at_once * facet_size];
        std::fseek(m_file, head_size, SEEK_SET);
        for (std::size_t left = m_count; left > 0;) {
            std::size_t const read = std::fread(bytes, facet_size, std::min(left, at_once), m_file);
            if (read == 0)
                return;
            left -= read;
            for (std::size_t i = 0; i < read; ++i)
                if (Facet const facet = facet_at(bytes + i * facet_size); is_finite(facet))
                    visit(facet);
        }
    }

private:
    std::FILE* m_file;
    std::size_t m_count;
};

// ---- Text files

bool same_word(std::string_view word, std::string_view expected)
{
    return word.size() == expected.size() &&
           std::equal(word.begin(), word.end(), expected.begin(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

/// The facets of a text.
class TextSolid
{
public:
    void append(Facet const& facet) { m_facets.push_back(facet); }
    std::size_t size() const { return m_facets.size(); }

    template <class Visit>
    void walk(Visit const& visit) const
    {
        std::for_each(m_facets.begin(), m_facets.end(), visit);
    }

private:
    std::vector<Facet> m_facets;
};

class Text
{
public:
    explicit Text(std::string_view text) : m_left(text) {}

    /// The next word; empty at the end.
    std::string_view word()
    {
        std::size_t begin = 0;
        while (begin < m_left.size() && is_blank(m_left[begin]))
            m_line += m_left[begin++] == '\n' ? 1 : 0;
        std::size_t end = begin;
        while (end < m_left.size() && !is_blank(m_left[end]))
            ++end;
        std::string_view const found = m_left.substr(begin, end - begin);
        m_left.remove_prefix(end);
        return found;
    }

    /// @return false when there are no three numbers; those too large are infinite
    bool numbers(Triple& triple)
    {
        for (float& number : triple) {
            std::string_view text = word();
            if (text.starts_with('+'))
                text.remove_prefix(1);
            double value = 0.0;
            auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
            if (error == std::errc::invalid_argument || end != text.data() + text.size())
                return false;
            // One too small is 0.
            bool const too_large = error != std::errc() && !utString(text).parse(value);
            number = too_large ? INFINITY : static_cast<float>(value);
        }
        return true;
    }

    void skip_line() { m_left.remove_prefix(std::min(m_left.find('\n'), m_left.size())); }
    int line() const { return m_line; }

private:
    static bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    std::string_view m_left;
    int m_line = 1;
};

/// Reads the solids of a text.
class TextReader
{
public:
    explicit TextReader(std::string_view text) : m_text(text) {}

    std::vector<TextSolid> read(utString& reason)
    {
        for (std::string_view word = m_text.word(); !word.empty(); word = m_text.word())
            if (!take(word)) {
                reason = utString(ut_concat("line ", m_text.line(), ": there are no three numbers"));
                return {};
            }
        close_loop();
        return std::move(m_solids);
    }

private:
    bool take(std::string_view word)
    {
        if (same_word(word, "vertex"))
            return m_text.numbers(m_loop.emplace_back());
        if (same_word(word, "facet")) {
            close_loop();
            m_normal = {};
            return !same_word(m_text.word(), "normal") || m_text.numbers(m_normal);
        }
        if (same_word(word, "endloop"))
            close_loop();
        if (same_word(word, "solid"))
            m_solids.emplace_back();
        if (same_word(word, "solid") || same_word(word, "endsolid"))
            m_text.skip_line(); // a name, of any words
        return true;
    }

    void close_loop()
    {
        for (std::size_t i = 2; i < m_loop.size(); ++i)
            if (Facet const facet{m_normal, {m_loop[0], m_loop[i - 1], m_loop[i]}}; is_finite(facet))
                m_solids.back().append(facet);
        m_loop.clear();
    }

    Text m_text;
    std::vector<TextSolid> m_solids{1};
    Triple m_normal{};
    std::vector<Triple> m_loop;
};

// ---- Meshes

/// The normal of a facet by its winding; its length is twice the area.
giVector3 winding(Facet const& facet)
{
    giVector3 const a = vector_of(facet.points[0]);
    return (vector_of(facet.points[1]) - a).cross(vector_of(facet.points[2]) - a);
}

bool agrees(giVector3 const& stated, giVector3 const& upright)
{
    static double const limit = std::cos(gx_stl_agreement_angle * std::numbers::pi / 180.0);
    double const cosine = stated.dot(upright);
    return cosine > 0.0 && cosine * cosine >= limit * limit * stated.dot(stated) * upright.dot(upright);
}

template <class Solid>
bool states_normals(Solid const& solid)
{
    std::size_t with_area = 0;
    std::size_t agreeing = 0;
    bool all_directions = true;
    solid.walk([&](Facet const& facet) {
        giVector3 const stated = vector_of(facet.normal);
        giVector3 const upright = winding(facet);
        double const square = stated.dot(stated);
        all_directions = all_directions && square > 0.0 && std::isfinite(square);
        with_area += upright.dot(upright) > 0.0 ? 1 : 0;
        agreeing += agrees(stated, upright) ? 1 : 0;
    });
    return all_directions && agreeing > with_area / 2;
}

template <class Solid>
gxMesh flat_mesh(Solid const& solid)
{
    gxMesh mesh;
    mesh.points.reserve(3 * solid.size());
    mesh.normals.reserve(3 * solid.size());
    mesh.triangles.reserve(solid.size());
    solid.walk([&](Facet const& facet) {
        giVector3 normal = vector_of(facet.normal);
        if (giVector3 const upright = winding(facet); !agrees(normal, upright))
            normal = upright;
        if (!normal.unitize())
            normal = giVector3(0.0, 0.0, 1.0);
        int const first = static_cast<int>(mesh.points.size());
        for (Triple const& point : facet.points)
            mesh.points.push_back(point_of(point));
        mesh.normals.insert(mesh.normals.end(), 3, normal);
        mesh.triangles.push_back({first, first + 1, first + 2});
    });
    return mesh;
}

/// Collects triangles between points no two of which are at one place.
class MergedMesh
{
public:
    explicit MergedMesh(std::size_t triangles) : m_merger(triangles / 2) { m_triangles.reserve(triangles); }

    void append(Facet const& facet)
    {
        m_waiting.insert(m_waiting.end(), std::begin(facet.points), std::end(facet.points));
        if (m_waiting.size() >= at_once)
            add_waiting();
    }

    gxMesh finish()
    {
        add_waiting();
        gxMesh mesh;
        mesh.triangles = std::move(m_triangles);
        mesh.points.reserve(m_merger.keys().size());
        for (Triple const& point : m_merger.keys())
            mesh.points.push_back(point_of(point));
        return mesh;
    }

private:
    static constexpr std::size_t at_once = 3 * 256;

    void add_waiting()
    {
        m_numbers.resize(m_waiting.size());
        m_merger.add(m_waiting, m_numbers.data());
        for (std::size_t i = 0; i < m_numbers.size(); i += 3)
            m_triangles.push_back({m_numbers[i], m_numbers[i + 1], m_numbers[i + 2]});
        m_waiting.clear();
    }

    gxMerger<float, 3> m_merger;
    std::vector<Triple> m_waiting;
    std::vector<int> m_numbers;
    std::vector<giTri> m_triangles;
};

template <class Solid>
gxMesh mesh_of(Solid const& solid)
{
    if (states_normals(solid))
        return flat_mesh(solid);
    MergedMesh merged(solid.size());
    solid.walk([&merged](Facet const& facet) { merged.append(facet); });
    return gx_with_normals_of_distinct(merged.finish());
}

std::size_t size_of(std::FILE* file)
{
    std::fseek(file, 0, SEEK_END);
    long const size = std::ftell(file);
    std::rewind(file);
    return static_cast<std::size_t>(std::max(size, 0L));
}

/// Appends the meshes of solids that have triangles, unless there are too many of these.
template <class Solid>
void append_meshes(std::vector<Solid> const& solids, std::vector<gxMesh>& meshes, utString& reason)
{
    std::size_t triangles = 0;
    for (Solid const& solid : solids)
        triangles += solid.size();
    if (triangles > static_cast<std::size_t>(gx_max_dmt_triangles)) {
        reason = "the scene has more triangles than are allowed";
        return;
    }
    for (Solid const& solid : solids)
        if (gxMesh mesh = mesh_of(solid); !mesh.triangles.empty())
            meshes.push_back(std::move(mesh));
}

} // namespace

bool gx_read_stl(std::FILE* file, std::vector<gxMesh>& solids, utString& reason)
{
    std::size_t const size = size_of(file);
    char head[head_size];
    std::size_t const read = std::fread(head, 1, head_size, file);
    std::size_t const count = read == head_size ? number_at(head + name_size) : 0;
    if (count > 0 && size == head_size + count * facet_size) {
        append_meshes(std::vector{BinarySolid(file, count)}, solids, reason);
        return true;
    }
    if (!same_word(Text({head, read}).word(), "solid"))
        return false;
    std::rewind(file);
    std::string text(size, '\0');
    text.resize(std::fread(text.data(), 1, size, file));
    append_meshes(TextReader(text).read(reason), solids, reason);
    return true;
}
