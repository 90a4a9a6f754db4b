// mrtool import: a material file for each material of a scene.
#include "commands.h"
#include "messages.h"
#include "pendingFile.h"
#include "utConcat.h"

#include "scFileNames.h"
#include "scMaterialMaker.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrMatProp.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

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

/// Writes a material file and believes in it when it reads back the same.
/// @param reason  receives in words what went wrong
bool write_material(mrFileMat const& material, std::string const& path, std::string& reason)
{
    return write_whole(path, reason, [&](std::string const& name) {
        utString const temporary(name);
        mrFileMat read_back;
        errno = 0;
        if (!material.write(temporary))
            reason = ut_concat(path, " cannot be written",
                               errno != 0 ? ut_concat(": ", std::strerror(errno)) : "");
        else if (read_back.read(temporary) != mrFileMatReadOK || !same_material(material, read_back))
            reason = path + " does not read back as it was written";
        return reason.empty();
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
        std::vector<scNote> notes;
        std::string reason;
        if (!write_material(*maker.make(at, notes), path, reason)) {
            say(subject, reason);
            return false;
        }
        for (std::string const& line : scNote::lines(notes))
            say(subject, line);
        return !scNote::any_failed(notes);
    }

    ImportOptions const& m_options;
    scReader m_reader;
    scFileNames m_names;
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

} // namespace

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
        for (std::string const& report : reports.take())
            say(scene, "warning: " + report);
        if (!well)
            status = something_failed;
    }
    return status;
}

} // namespace mrtool
