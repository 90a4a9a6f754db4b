#include "thumbPlan.h"

#include "commandLine.h"
#include "outputFile.h"
#include "utConcat.h"

#include "gxFileHints.h"
#include "gxReplacement.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <unistd.h>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

/// The path with its folder resolved, the same for all names of one file. A link keeps its own name.
fs::path resolve_folder(fs::path const& path)
{
    std::error_code failed;
    fs::path const folder = fs::weakly_canonical(fs::absolute(path, failed).parent_path(), failed);
    return failed ? path : folder / path.filename();
}

/// The path with all its links resolved; it need not exist.
fs::path resolve(fs::path const& path)
{
    std::error_code failed;
    std::string const whole = fs::absolute(path, failed).string();
    fs::path const target = fs::weakly_canonical(gxReplacement::follow_links(whole), failed);
    return failed ? path : target;
}

/// Whether a file found in a folder is passed over for its name alone.
bool is_passed_over(fs::path const& path)
{
    // Assimp reads these formats, but such files are often no meshes.
    constexpr std::string_view vague[] = {"xml", "raw", "prj", "uc"};
    std::string const name = path.filename().string();
    return name.ends_with(".thumb.png") || gxReplacement::is_temporary_name(name) ||
           std::find(std::begin(vague), std::end(vague), gx_extension(name)) != std::end(vague);
}

/// Finds the inputs, and gives each its output.
class Finder
{
public:
    Finder(std::vector<std::string> const& inputs, std::optional<std::string> const& output)
        : m_inputs(inputs), m_output(output)
    {
        if (!output)
            return;
        std::error_code ignored;
        if (*output == standard_output && (inputs.size() > 1 || fs::is_directory(inputs.front(), ignored)))
            throw WrongUsage{"standard output takes one thumbnail, of one input that is no folder"};
        m_output_folder = resolve(*output);
        m_into_folder = *output != standard_output &&
                        (inputs.size() > 1 || output->ends_with('/') || fs::is_directory(*output, ignored) ||
                         fs::is_directory(inputs.front(), ignored));
    }

    /// @throws WrongUsage when the output is an input, or no folder although one is needed
    ThumbPlan find()
    {
        for (std::string const& input : m_inputs)
            add_given(input);
        std::error_code ignored;
        if (m_into_folder && fs::exists(*m_output, ignored) && !fs::is_directory(*m_output, ignored))
            throw WrongUsage{ut_concat("the thumbnails need a folder, and ", *m_output, " is none")};
        return std::move(m_plan);
    }

private:
    void add_given(std::string const& input)
    {
        if (named_descriptor(input))
            add_open_file(input);
        else
            add_path(input);
    }

    void add_open_file(std::string const& input)
    {
        if (m_inputs.size() > 1)
            throw WrongUsage{ut_concat(input, " has to be the only input")};
        if (!m_output || m_into_folder)
            throw WrongUsage{
                ut_concat("the thumbnail of ", input, " has no name; -o FILE gives it one, and the file")};
        Result<InputFile> file = find_input(input);
        if (!file)
            return reject(input, file.error().words);
        m_plan.piped = std::move(file->piped);
        bool const known = add_file(file->path, {}, input);
        if (known && (m_plan.jobs.empty() || m_plan.jobs.back().file.kind != FileKind::mesh))
            return;
        m_plan.jobs.clear();
        reject(input, known ? "a mesh, whose format only a name can tell" : not_known);
    }

    void add_path(fs::path const& input)
    {
        std::error_code failed;
        fs::file_status const status = fs::status(input, failed);
        if (fs::is_directory(status)) {
            if (m_output && resolve(input) == m_output_folder)
                throw WrongUsage{ut_concat(
                    *m_output, " is searched for inputs, among which the thumbnails would be; without -o "
                               "each lies beside its input")};
            return walk(input, fs::path());
        }
        if (!fs::is_regular_file(status))
            return reject(input, failed ? failed.message() : "neither a file nor a folder");
        if (!add_file(input, input.filename(), input.string()))
            reject(input, not_known);
    }

    /// @param below  the folder's path below the one that was given
    void walk(fs::path const& folder, fs::path const& below)
    {
        std::error_code failed;
        std::vector<fs::directory_entry> entries;
        for (fs::directory_iterator at(folder, failed); !failed && at != fs::directory_iterator();
             at.increment(failed))
            entries.push_back(*at);
        if (failed)
            reject(folder, failed.message());
        std::sort(entries.begin(), entries.end());
        for (fs::directory_entry const& entry : entries)
            add_found(entry, below / entry.path().filename());
    }

    void add_found(fs::directory_entry const& entry, fs::path const& below)
    {
        std::error_code failed;
        fs::file_status const status = entry.status(failed);
        if (fs::is_directory(status)) {
            if (!entry.is_symlink(failed) && resolve(entry.path()) != m_output_folder)
                walk(entry.path(), below);
            return;
        }
        if (is_passed_over(entry.path()))
            return;
        if (failed || !fs::exists(status))
            return reject(entry.path(), failed ? failed.message() : std::strerror(ENOENT));
        if (fs::is_regular_file(status))
            add_file(entry.path(), below, entry.path().string());
    }

    /// @param name  of the input for the user
    /// @return false when no thumbnail can be made of it
    bool add_file(fs::path const& path, fs::path const& below, std::string const& name)
    {
        if (access(path.c_str(), R_OK) != 0) {
            reject(name, std::strerror(errno));
            return true;
        }
        KnownFile const file = detect_kind(path.string());
        if (file.kind == FileKind::none)
            return false;
        std::string output = name + ".thumb.png";
        if (m_output)
            output = m_into_folder ? (fs::path(*m_output) / below).string() + ".png" : *m_output;
        m_plan.jobs.push_back({name, file, std::move(output), path.string()});
        return true;
    }

    void reject(fs::path const& path, std::string reason)
    {
        m_plan.rejected.push_back({path.string(), std::move(reason)});
    }

    static constexpr char not_known[] = "not a material, mesh or image file";

    std::vector<std::string> const& m_inputs;
    std::optional<std::string> const& m_output;
    bool m_into_folder = false;
    fs::path m_output_folder;
    ThumbPlan m_plan;
};

/// From where a file lies to the input that it is or belongs to.
using Places = std::map<fs::path, std::string>;

/// @throws WrongUsage when the thumbnail would replace an input, or a file other than a picture
void check_replaced(ThumbJob const& job, fs::path const& place, Places const& inputs, Places const& targets)
{
    std::string const would_replace = ut_concat("the thumbnail of ", job.input, " would replace ");
    if (auto const input = inputs.find(place); input != inputs.end())
        throw WrongUsage{ut_concat(would_replace, "the input ", input->second)};
    if (auto const link = targets.find(place); link != targets.end())
        throw WrongUsage{
            ut_concat(would_replace, place.string(), ", to which the input ", link->second, " leads")};
    if (Result<> const checked = check_picture_path(job.output); !checked)
        throw WrongUsage{ut_concat(would_replace, job.output, ", ", checked.error().words)};
}

/// @throws WrongUsage when a thumbnail would lie below another
void check_nesting(Places const& outputs)
{
    for (auto const& [place, input] : outputs)
        for (fs::path folder = place.parent_path(); folder != folder.parent_path();
             folder = folder.parent_path())
            if (auto const file = outputs.find(folder); file != outputs.end())
                throw WrongUsage{ut_concat("the thumbnail of ", input, " would lie below that of ",
                                           file->second, ", ", folder.string())};
}

/// Checks where all outputs lie.
/// @return the jobs, with an input that was given twice only once
std::vector<ThumbJob> check_outputs(std::vector<ThumbJob> jobs)
{
    Places inputs, targets, outputs;
    for (ThumbJob const& job : jobs) {
        inputs.emplace(resolve_folder(job.path), job.input);
        targets.emplace(resolve(job.path), job.input);
    }
    std::vector<ThumbJob> checked;
    for (ThumbJob& job : jobs) {
        if (job.output == standard_output) {
            checked.push_back(std::move(job));
            continue;
        }
        fs::path const place = resolve(job.output);
        check_replaced(job, place, inputs, targets);
        auto const [at, added] = outputs.emplace(place, job.input);
        if (!added && resolve(at->second) != resolve(job.input))
            throw WrongUsage{ut_concat("the thumbnails of ", at->second, " and ", job.input,
                                       " would both be ", job.output)};
        if (added)
            checked.push_back(std::move(job));
    }
    check_nesting(outputs);
    return checked;
}

} // namespace

ThumbPlan plan_thumbs(std::vector<std::string> const& inputs, std::optional<std::string> const& output)
{
    ThumbPlan plan = Finder(inputs, output).find();
    plan.jobs = check_outputs(std::move(plan.jobs));
    return plan;
}

} // namespace mrtool
