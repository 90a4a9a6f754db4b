#include "readers.h"

#include "objStatements.h"
#include "siblingFile.h"

#include "gsColour.h"

#include <cmath>

namespace sc {

namespace {

struct NumberStatement
{
    std::string_view key;
    std::optional<double> scMaterial::*value;
};

constexpr NumberStatement number_statements[] = {
    {"ns", &scMaterial::shininess}, {"d", &scMaterial::opacity},           {"tr", &scMaterial::transparency},
    {"pr", &scMaterial::roughness}, {"ni", &scMaterial::refractive_index}, {"pm", &scMaterial::metalness},
};

constexpr LeftOutValue left_out_statements[] = {
    {"ka", "the ambient colour", 0, 0},
    {"ks", "the specular colour", 0, 0},
    {"tf", "the colour of transparency", 0, 1},
    {"illum", "the illumination model", 1, 2},
    {"sharpness", "the sharpness of reflections", 60, 60},
    {"ps", "the sheen", 0, 0},
    {"pc", "the clear coat", 0, 0},
    {"pcr", "the roughness of the clear coat", 0, 0},
    {"aniso", "the anisotropy", 0, 0},
    {"anisor", "the turn of the anisotropy", 0, 0},
};

constexpr LeftOutMap<std::string_view> map_statements[] = {
    {"map_ka", "the ambient map"},   {"map_ks", "the specular map"},   {"map_ke", "the emission map"},
    {"map_ns", "the shininess map"}, {"map_d", "the opacity map"},     {"map_tr", "the transparency map"},
    {"map_bump", "the bump map"},    {"bump", "the bump map"},         {"norm", "the normal map"},
    {"map_kn", "the normal map"},    {"disp", "the displacement map"}, {"map_disp", "the displacement map"},
    {"decal", "the decal map"},      {"refl", "the reflection map"},   {"map_refl", "the reflection map"},
    {"map_pr", "the roughness map"}, {"map_pm", "the metalness map"},  {"map_ps", "the sheen map"},
};

/// An option before the file's name of a map: so many numbers at most follow it, or else one word.
struct MapOption
{
    std::string_view key;
    int most_numbers;
    double plain[3];             ///< the numbers at which it makes no difference
    std::string_view plain_word; ///< the word at which it makes no difference
};

constexpr MapOption map_options[] = {
    {"-s", 3, {1, 1, 1}, {}},      {"-o", 3, {0, 0, 0}, {}},  {"-t", 3, {0, 0, 0}, {}},
    {"-mm", 2, {0, 1, 0}, {}},     {"-bm", 1, {1, 0, 0}, {}}, {"-boost", 1, {0, 0, 0}, {}},
    {"-texres", 1, {0, 0, 0}, {}}, {"-blendu", 0, {}, "on"},  {"-blendv", 0, {}, "on"},
    {"-cc", 0, {}, "off"},         {"-clamp", 0, {}, "off"},  {"-imfchan", 0, {}, "rgb"},
    {"-type", 0, {}, {}},
};

/// Whether the first word is the one; takes it off the front then.
bool take_if(std::string_view word, std::string_view& rest)
{
    std::string_view left = rest;
    if (take_word(left) != word)
        return false;
    rest = left;
    return true;
}

/// Red, green and blue of sRGB, which may lie outside of 0 to 1, of a colour in CIE XYZ where white is that of D65 and
/// has a Y of 1; by the matrix and the curve of IEC 61966-2-1.
scColour convert_xyz(scColour const& xyz)
{
    constexpr double matrix[3][3] = {
        {3.2406, -1.5372, -0.4986}, {-0.9689, 1.8758, 0.0415}, {0.0557, -0.2040, 1.0570}};
    scColour colour{};
    for (std::size_t at = 0; at < colour.size(); ++at)
        colour[at] = gsColour::linear_to_srgb(matrix[at][0] * xyz[0] + matrix[at][1] * xyz[1] +
                                              matrix[at][2] * xyz[2]);
    return colour;
}

/// One or three numbers, perhaps behind "xyz", and nothing but a comment behind them. One stands for all three.
std::optional<scColour> parse_colour(std::string_view rest)
{
    bool const xyz = take_if("xyz", rest);
    scColour colour{};
    std::size_t count = 0;
    while (count < colour.size()) {
        std::optional<double> const number = take_number(rest);
        if (!number)
            break;
        colour[count++] = *number;
    }
    if ((!rest.empty() && !rest.starts_with('#')) || (count != 1 && count != 3))
        return std::nullopt;
    if (count == 1)
        colour[1] = colour[2] = colour[0];
    return xyz ? convert_xyz(colour) : colour;
}

std::optional<double> parse_number(std::string_view rest)
{
    std::optional<double> const number = take_number(rest);
    return rest.empty() || rest.starts_with('#') ? number : std::nullopt;
}

struct Map
{
    std::string file;
    std::vector<std::string_view> options; ///< those that make a difference, in the statement's own words
};

/// Takes the option's values off the front.
/// @return whether they make a difference
bool take_values(MapOption const& option, std::string_view& rest)
{
    if (option.most_numbers == 0)
        return take_word(rest) != option.plain_word;
    bool plain = true;
    for (int at = 0; at < option.most_numbers; ++at)
        if (std::optional<double> const number = take_number(rest))
            plain = plain && *number == option.plain[at];
    return !plain;
}

Map parse_map(std::string_view rest)
{
    Map map;
    for (;;) {
        std::string_view left = rest;
        MapOption const* const option = find_row(map_options, take_word(left));
        if (!option)
            break;
        bool const matters = take_values(*option, left);
        std::string_view taken = rest.substr(0, rest.size() - left.size());
        taken.remove_suffix(taken.size() - (taken.find_last_not_of(" \t") + 1));
        if (matters)
            map.options.push_back(taken);
        rest = left;
    }
    bool const quoted = rest.size() > 1 && rest.front() == '"' && rest.back() == '"';
    map.file = quoted ? rest.substr(1, rest.size() - 2) : rest;
    return map;
}

class MtlReader
{
public:
    MtlReader(std::string const& path, scScene& scene)
        : m_statements(path), m_name(strip_folders(path)), m_scene(scene)
    {}

    bool read()
    {
        ObjStatement statement;
        while (m_statements.next(statement))
            read(statement);
        finish();
        return m_statements.good();
    }

private:
    static constexpr char replaces[] = "takes the place of an earlier one";

    void read(ObjStatement const& statement)
    {
        if (statement.word == "newmtl") {
            finish();
            m_scene.materials.emplace_back().name = statement.rest;
            m_open = true;
            return;
        }
        if (m_open && !understand(statement))
            note(scNoteFailed, statement, "makes no sense");
        if (!m_open && !m_said_early)
            m_scene.notes.push_back(make_note(
                scNoteChanged, "\"%1\" in line %2 of %3 and all else before \"newmtl\" is passed over",
                statement.written, statement.line, m_name));
        m_said_early = true;
    }

    void finish()
    {
        if (!m_open)
            return;
        settle_transparency();
        material().notes = m_notes.finish();
    }

    /// Of the two ways to say how much light passes, "d" is the one that all programs agree on.
    void settle_transparency()
    {
        if (!material().opacity || !material().transparency)
            return;
        // Programs round what they write.
        if (std::abs(*material().opacity + *material().transparency - 1.0) > 1e-3)
            m_notes.add(scNoteChanged, "its \"Tr\" of %1 is passed over, since its \"d\" says %2",
                        *material().transparency, *material().opacity);
        material().transparency.reset();
    }

    /// @return whether it makes sense
    bool understand(ObjStatement const& statement)
    {
        if (statement.word == "d" && statement.rest.starts_with("-halo"))
            return leave_out("the halo (\"d -halo\")");
        if (auto const* number = find_row(number_statements, statement.word))
            return set(statement, material().*number->value, parse_number(statement.rest));
        if (statement.word == "kd")
            return set_colour(statement, material().colour);
        if (statement.word == "ke")
            return set_colour(statement, material().emission);
        if (statement.word == "map_kd")
            return set_texture(statement);
        if (auto const* map = find_row(map_statements, statement.word))
            return leave_out(ut_concat(map->words, " \"%1\""), parse_map(statement.rest).file);
        if (auto const* left_out = find_row(left_out_statements, statement.word)) {
            std::optional<scColour> const value = parse_colour(statement.rest);
            return (value && left_out->makes_no_difference(value->data(), value->size())) ||
                   leave_out(left_out->words);
        }
        return leave_out("the statement \"%1\"", statement.written);
    }

    template <class T>
    bool set(ObjStatement const& statement, std::optional<T>& value, std::optional<T> const& said)
    {
        if (!said)
            return false;
        if (value)
            note(scNoteChanged, statement, replaces);
        value = said;
        return true;
    }

    bool set_colour(ObjStatement const& statement, std::optional<scColour>& value)
    {
        std::string_view file = statement.rest;
        if (take_if("spectral", file))
            return leave_out("the spectral colour \"%1\" (\"%2 spectral\")", take_word(file),
                             statement.written);
        return set(statement, value, parse_colour(statement.rest));
    }

    template <class... Arguments>
    bool leave_out(std::string pattern, Arguments const&... arguments)
    {
        m_notes.add(scNoteLeftOut, std::move(pattern), arguments...);
        return true;
    }

    bool set_texture(ObjStatement const& statement)
    {
        Map map = parse_map(statement.rest);
        if (map.file.empty())
            return false;
        if (!material().texture.empty())
            note(scNoteChanged, statement, replaces);
        material().texture = std::move(map.file);
        for (std::string_view const option : map.options)
            leave_out("the texture's option \"%1\"", option);
        return true;
    }

    void note(scNoteKind kind, ObjStatement const& statement, char const* words)
    {
        m_notes.add(kind, ut_concat("\"%1\" in line %2 of %3 ", words), statement.written, statement.line,
                    m_name);
    }

    scMaterial& material() { return m_scene.materials.back(); }

    ObjStatements m_statements;
    std::string m_name;
    scScene& m_scene;
    NoteList m_notes;    ///< of the material that is open
    bool m_open = false; ///< whether the scene's last material is this file's
    bool m_said_early = false;
};

} // namespace

bool read_mtl_file(std::string const& path, scScene& scene)
{
    return MtlReader(path, scene).read();
}

} // namespace sc
