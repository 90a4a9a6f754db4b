#include "objFile.h"

#include "sampleFile.h"

#include <unordered_map>

namespace {

/// The lines of one kind that an OBJ file holds. Equal lines are written once.
class Lines
{
public:
    /// @return the line's number, from 1
    std::string number(std::string const& line)
    {
        auto const [at, added] = m_numbers.try_emplace(line, m_numbers.size() + 1);
        if (added)
            m_text += line + '\n';
        return std::to_string(at->second);
    }

    std::string const& text() const { return m_text; }

private:
    std::unordered_map<std::string, std::size_t> m_numbers;
    std::string m_text;
};

class ObjWriter
{
public:
    void add(ObjPart const& part)
    {
        m_faces += "o " + part.name + "\nusemtl " + part.material + '\n';
        for (Mesh::Face const& face : part.mesh.faces) {
            m_faces += 'f';
            for (int corner : face)
                if (corner >= 0)
                    m_faces +=
                        ' ' + numbers(part.mesh.points[static_cast<std::size_t>(corner)], part.textured);
            m_faces += '\n';
        }
    }

    std::string text() const { return m_places.text() + m_tus.text() + m_normals.text() + m_faces; }

private:
    std::string numbers(MeshPoint const& point, bool textured)
    {
        std::string text =
            m_places.number("v " + numbers_text({point.place.x, point.place.y, point.place.z}, 2)) + '/';
        if (textured)
            text += m_tus.number("vt " + numbers_text({point.tu.x, point.tu.y}, 3));
        return text + '/' +
               m_normals.number("vn " + numbers_text({point.normal.x, point.normal.y, point.normal.z}, 2));
    }

    static std::string numbers_text(std::vector<double> const& numbers, int decimals)
    {
        std::string text;
        for (double number : numbers)
            text += (text.empty() ? "" : " ") + decimal(number, decimals);
        return text;
    }

    Lines m_places;
    Lines m_tus;
    Lines m_normals;
    std::string m_faces;
};

std::string colour_text(gsRGB const& colour)
{
    return decimal(colour.red() / 255.0, 4) + ' ' + decimal(colour.green() / 255.0, 4) + ' ' +
           decimal(colour.blue() / 255.0, 4) + '\n';
}

} // namespace

std::string obj_text(std::string const& material_file, std::vector<ObjPart> const& parts)
{
    ObjWriter writer;
    for (ObjPart const& part : parts)
        writer.add(part);
    return "mtllib " + material_file + '\n' + writer.text();
}

std::string mtl_text(std::vector<MtlMaterial> const& materials)
{
    std::string text;
    for (MtlMaterial const& material : materials) {
        text += "newmtl " + material.name + "\nKd " + colour_text(material.diffuse);
        if (!(material.emission == gsRGB()))
            text += "Ke " + colour_text(material.emission);
        if (material.roughness < 0)
            text += "Ns " + decimal(material.shininess, 1) + '\n';
        else
            text += "Pr " + decimal(material.roughness, 2) + "\nPm " + decimal(material.metalness, 2) + '\n';
        text += "Ni " + decimal(material.refractive_index, 3) + "\nd " + decimal(material.opacity, 3) + '\n';
        if (!material.texture.empty())
            text += "map_Kd " + material.texture + '\n';
        text += '\n';
    }
    return text;
}
