// mrtool import: a material file for each material of a scene.
#include "commandLine.h"
#include "outputFile.h"
#include "progress.h"
#include "reports.h"
#include "utConcat.h"

#include "scFileNames.h"
#include "scMaterialMaker.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrMatProp.h"
#include "mrSource.h"
#include "mrTarget.h"

#include "gxReplacement.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

struct ImportOptions
{
    std::vector<std::string> scenes;
    std::string folder;
    scReadOptions reading;
    bool force = false; ///< whether to replace existing files
};

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

/// Writes a material file that reads back the same.
Result<> write_material(mrFileMat const& material, std::string const& path)
{
    std::string bytes;
    mrFileMat read_back;
    mrFault fault;
    if (!material.write(mrTarget::to_memory(bytes), fault))
        return fail(ut_concat(path, " cannot be written: ", fault.reason));
    if (read_back.read(mrSource::from_memory(bytes), {}, fault) != mrFileMatReadOK ||
        !same_material(material, read_back))
        return fail(path + " would not read back as it is written");
    return write_bytes(path, bytes);
}

/// The file to which a path leads, under one name.
fs::path resolve(fs::path const& path)
{
    std::error_code failed;
    return fs::weakly_canonical(gxReplacement::follow_links(fs::absolute(path, failed).string()), failed);
}

/// Imports the materials of one scene after the other into one folder.
class Importer
{
public:
    explicit Importer(ImportOptions const& options) : m_options(options), m_reader(options.reading)
    {
        for (std::string const& scene : options.scenes)
            m_taken.emplace(resolve(scene), "the scene " + scene);
    }

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
        scScene scene;
        std::string reason;
        if (!m_reader.read_materials(path, scene, reason)) {
            say(path, reason);
            return false;
        }
        for (scNote const& note : scene.notes)
            say(path, note.words());
        bool well = !scNote::any_failed(scene.notes);
        if (scene.materials.empty() && well)
            say(path, "no material in it");
        scMaterialMaker maker(scene, m_reader);
        for (std::size_t at = 0; at < scene.materials.size(); ++at)
            well = import(scene, at, maker) && well;
        return well;
    }

private:
    bool import(scScene const& scene, std::size_t at, scMaterialMaker& maker)
    {
        std::string const name = scene.material_name(at);
        std::string const subject = ut_concat(scene.path, ": material \"", name, "\"");
        std::string const path =
            (fs::path(m_options.folder) / (m_names.make_unique(name) + ".multimat")).string();
        std::error_code ignored;
        if (!m_options.force && fs::exists(fs::symlink_status(path, ignored))) {
            say(subject, path + " is there already; --force replaces it");
            return false;
        }
        if (auto const [place, free] = m_taken.emplace(resolve(path), path); !free) {
            say(subject, ut_concat(path, " leads to ", place->second));
            return false;
        }
        std::vector<scNote> notes;
        auto const made = maker.make(at, notes);
        if (!check_result(subject, made ? write_material(*made, path) : Result<>(fail("not enough memory"))))
            return false;
        for (std::string const& line : scNote::lines(notes))
            say(subject, line);
        return !scNote::any_failed(notes);
    }

    ImportOptions const& m_options;
    scReader m_reader;
    scFileNames m_names;
    /// What may not be replaced any more, each with words for it.
    std::map<fs::path, std::string> m_taken;
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
        bool const well = try_work(scene, [&] { return importer.import(scene); });
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
    import
        ->add_option("--textures", options->reading.texture_folders,
                     "A further folder in which textures are looked for; may be given several times")
        ->type_name("DIR")
        ->allow_extra_args(false)
        ->check(CLI::Validator(CLI::ExistingDirectory).description(""));
    import->add_flag("--force", options->force, "Replace files that are there already");
    import->footer("Example: mrtool import kitchen.obj -o materials");
    return {import, [options] { return run_import(*options); }};
}

} // namespace mrtool
