// mrtool import: a material file for each material of a scene.
#include "commandLine.h"
#include "fileName.h"
#include "outputFile.h"
#include "progress.h"
#include "reports.h"
#include "sceneTexture.h"
#include "siblingFile.h"
#include "surface.h"
#include "untrustedReader.h"
#include "utConcat.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include "xmlUtils.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

struct ImportOptions
{
    std::vector<std::string> scenes;
    std::string folder;
    bool force = false; ///< whether to replace existing files
};

using Notes = std::vector<std::string>;

/// The text as it will be read back.
utString carried(std::string const& text)
{
    return xmlUtils::carried(utString(text));
}

/// The like, and another where nothing is left of it.
utString carried_or(std::string const& text, char const* other)
{
    utString const left = carried(text);
    return left.empty() ? utString(other) : left;
}

bool has_transparent_pixels(dgDuctImage const& image)
{
    unsigned char const* const pixels = image.pixels();
    for (std::size_t at = 3; at < image.byte_count(); at += 4)
        if (pixels[at] != 255)
            return true;
    return false;
}

bool same_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& first,
                 utStringdgDuctImagecoTablePtrcoPtrcoTable const& second)
{
    return first.size() == second.size() && std::all_of(first.begin(), first.end(), [&](auto const& entry) {
               dgDuctImage const* const other = second.read(entry.key);
               return other && entry.value->equal(other);
           });
}

bool same_material(mrFileMat const& first, mrFileMat const& second)
{
    return first.file_props() == second.file_props() &&
           std::equal(first.facets().begin(), first.facets().end(), second.facets().begin(),
                      second.facets().end(),
                      [](auto const* one, auto const* other) { return *one == *other; }) &&
           same_images(first.images(), second.images());
}

/// Writes a material file and checks that it reads back the same.
Result<> write_material(mrFileMat const& material, std::string const& path)
{
    return write_whole(path, [&](std::string const& name) -> Result<> {
        utString const temporary(name);
        mrFileMat read_back;
        errno = 0;
        if (!material.write(temporary))
            return fail(ut_concat(path, " cannot be written",
                                  errno != 0 ? ut_concat(": ", std::strerror(errno)) : ""));
        if (read_back.read(temporary) != mrFileMatReadOK || !same_material(material, read_back))
            return fail(path + " does not read back as it was written");
        return {};
    });
}

/// Imports the materials of one scene after the other into one folder.
class Importer
{
public:
    explicit Importer(ImportOptions const& options) : m_options(options) {}

    /// @return whether all went well
    bool import(std::string const& path)
    {
        std::error_code failed;
        fs::file_status const status = fs::status(path, failed);
        if (!fs::is_regular_file(status)) {
            say(path, fs::is_directory(status) ? "a folder, not a scene file"
                                               : (failed ? failed.message() : "not a file"));
            return false;
        }
        Scene scene;
        std::string reason;
        if (!m_reader.scene(path, scene, reason)) {
            say(path, reason);
            return false;
        }
        for (std::string const& warning : scene.warnings)
            say(path, warning);
        for (std::string const& failure : scene.failures)
            say(path, failure);
        if (scene.materials.empty() && scene.failures.empty())
            say(path, "no material in it");

        SceneTextures textures(path, scene, m_reader);
        bool well = scene.failures.empty();
        for (std::size_t at = 0; at < scene.materials.size(); ++at)
            well = import(path, scene.materials[at], at + 1, textures) && well;
        return well;
    }

private:
    bool import(std::string const& scene_path, SceneMaterial const& material, std::size_t number,
                SceneTextures& textures)
    {
        std::string const name = material.name.empty() ? ut_concat("material ", number) : material.name;
        std::string const subject = ut_concat(scene_path, ": material \"", name, "\"");
        std::string const path =
            (fs::path(m_options.folder) / (m_names.take(safe_file_name(name)) + ".multimat")).string();
        std::error_code ignored;
        if (!m_options.force && fs::exists(fs::symlink_status(path, ignored))) {
            say(subject, path + " is there already; --force replaces it");
            return false;
        }
        bool complete = material.failures.empty();
        Notes notes = material.failures;
        notes.insert(notes.end(), material.notes.begin(), material.notes.end());
        auto const file = material_file(scene_path, name, material, textures, notes, complete);
        Result<> const written = write_material(*file, path);
        if (!written)
            notes = {written.error().words};
        for (std::string const& note : notes)
            say(subject, note);
        return written && complete;
    }

    /// @param complete  set to false when the texture could not be read
    std::unique_ptr<mrFileMat> material_file(std::string const& scene_path, std::string const& name,
                                             SceneMaterial const& material, SceneTextures& textures,
                                             Notes& notes, bool& complete)
    {
        Surface const surface = surface_of(material, notes);
        mrMatPropcoSet const none(mrInitialSize, mrFillLimit);
        auto plain = std::make_unique<mrFMPlainMat>(carried_or(name, "material"), none, 0, surface.colour,
                                                    surface.polish, surface.reflect, surface.transparency,
                                                    surface.emission, surface.refractive_index, utString());
        mrFMTexturecoDList layers;
        utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
        dgCounted<dgDuctImage> const texture = texture_of(material, textures, notes, complete);
        if (texture) {
            utString const title = carried_or(textures.name(material), "texture");
            texture->new_name(title.c_str());
            layers.append(mrFMTexture(title, mrTexLayerColour, 0, giColour()));
            images[title] = texture.get();
        }
        if (!material.left_out.empty())
            notes.push_back("not carried over, a material file has no place for it: " +
                            joined(material.left_out));
        mrFMFacetcoDListPtrcoPtrcoDList facets;
        facets.append(new mrFMFacet(plain.release(), layers));
        return std::make_unique<mrFileMat>(properties(scene_path, material), facets, images);
    }

    /// The image of the material's texture, or null when it has none or it cannot be read.
    static dgCounted<dgDuctImage> texture_of(SceneMaterial const& material, SceneTextures& textures,
                                             Notes& notes, bool& complete)
    {
        if (material.texture.empty() && !material.embedded)
            return nullptr;
        std::string reason;
        dgCounted<dgDuctImage> image = textures.image(material, reason);
        std::string const name = material.embedded ? textures.name(material) : material.texture;
        if (!image) {
            notes.push_back(ut_concat("written without its texture \"", name, "\": ", reason));
            complete = false;
            return nullptr;
        }
        if (textures.lies_outside(material))
            notes.push_back(ut_concat("its texture \"", name, "\" ", taken_from_outside));
        if (has_transparent_pixels(*image)) {
            notes.push_back("the transparency of the texture \"" + name +
                            "\" stays in its image, where a texture layer makes no use of it");
        }
        return image;
    }

    static mrMatPropcoSet properties(std::string const& scene_path, SceneMaterial const& material)
    {
        mrMatPropcoSet properties(mrInitialSize, mrFillLimit);
        auto const add = [&](char const* name, std::string const& value) {
            if (utString const left = carried(value); !left.empty())
                properties.add(mrMatProp(mrMatPropTypeStringTag, name, left, 0));
        };
        add("scene", fs::path(scene_path).filename().string());
        add("material", material.name);
        return properties;
    }

    static std::string joined(std::vector<std::string> const& words)
    {
        std::string list;
        for (std::string const& each : words)
            list += (list.empty() ? "" : ", ") + each;
        return list;
    }

    ImportOptions const& m_options;
    UntrustedReader m_reader;
    UniqueNames m_names;
};

/// @throws WrongUsage when a scene lies where a material file may come to lie, itself or what it links to
void spare_scenes(ImportOptions const& options)
{
    std::error_code failed;
    fs::path const folder = fs::canonical(options.folder, failed);
    for (std::string const& scene : options.scenes)
        for (fs::path const& path : {fs::weakly_canonical(fs::absolute(scene, failed).parent_path(), failed) /
                                         fs::path(scene).filename(),
                                     fs::weakly_canonical(fs::absolute(scene, failed), failed)})
            if (path.extension() == ".multimat" && path.parent_path() == folder)
                throw WrongUsage{
                    ut_concat("the scene ", scene, " lies where its material files would: ", path.string())};
}

int run_import(ImportOptions const& options)
{
    spare_scenes(options);
    Reports reports;
    Importer importer(options);
    Progress progress(options.scenes.size());
    int status = all_well;
    for (std::string const& scene : options.scenes) {
        progress.begin(scene);
        bool well = false;
        try {
            well = importer.import(scene);
        } catch (std::bad_alloc const&) {
            say(scene, "not enough memory");
        }
        for (std::string const& report : reports.pop())
            say(scene, "warning: " + report);
        if (!well)
            status = something_failed;
    }
    return status;
}

} // namespace

Subcommand add_import(CLI::App& program)
{
    auto const options = std::make_shared<ImportOptions>();
    CLI::App* const import =
        program.add_subcommand("import", "Make a material file of each material of a scene");
    import->add_option("SCENE", options->scenes, "Scene files: OBJ, glTF, GLB, 3DS, PLY and more")
        ->type_name("")
        ->required();
    import->add_option("-o,--output", options->folder, "The folder for the material files; made when missing")
        ->type_name("DIR")
        ->check(check_not_empty, "")
        ->required();
    import->add_flag("--force", options->force, "Replace files that are there already");
    import->footer("Example: mrtool import kitchen.obj -o materials");
    return {import, [options] { return run_import(*options); }};
}

} // namespace mrtool
