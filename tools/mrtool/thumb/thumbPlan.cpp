#include "thumbPlan.h"

#include "overwriteGuard.h"
#include "pendingFile.h"
#include "utConcat.h"

#include "gxFileHints.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <unistd.h>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

/// The path by which two names of one file in one folder are the same. A link keeps its own name, since
/// writing in its place replaces the link.
fs::path place_of(fs::path const& path)
{
    std::error_code failed;
    fs::path const folder = fs::weakly_canonical(fs::absolute(path, failed).parent_path(), failed);
    return failed ? path : folder / path.filename();
}

fs::path target_of(fs::path const& path)
{
    std::error_code failed;
    fs::path const target = fs::weakly_canonical(path, failed);
    return failed ? path : target;
}

/// Whether a file found in a folder is none that anybody wants drawn. To look into it is not needed for that.
bool passed_over(fs::path const& path)
{
    std::string const name = path.filename().string();
    return name.ends_with(".thumb.png") || is_pending_name(name) || vague_extension(gx_extension(name));
}

class Planner
{
public:
    Planner(std::vector<std::string> const& inputs, std::optional<std::string> const& output)
        : m_inputs(inputs), m_output(output)
    {
        if (!output)
            return;
        std::error_code ignored;
        m_output_place = target_of(*output);
        m_into_folder = inputs.size() > 1 || output->ends_with('/') || fs::is_directory(*output, ignored) ||
                        fs::is_directory(inputs.front(), ignored);
    }

    ThumbPlan plan()
    {
        for (std::string const& input : m_inputs)
            add(input);
        find_collisions();
        if (!m_plan.wrong_usage.empty())
            m_plan.jobs.clear();
        return std::move(m_plan);
    }

private:
    void add(fs::path const& input)
    {
        std::error_code failed;
        fs::file_status const status = fs::status(input, failed);
        if (fs::is_directory(status)) {
            if (m_output && target_of(input) == m_output_place)
                refuse(ut_concat(*m_output,
                                 " is searched for inputs, among which the thumbnails would be; without -o "
                                 "each lies beside its input"));
            return walk(input, fs::path());
        }
        if (fs::is_regular_file(status)) {
            if (access(input.c_str(), R_OK) != 0)
                return fail(input, std::strerror(errno));
            KnownFile const file = file_kind(input.string());
            return file.kind == FileKind::none ? fail(input, "not a material, mesh or image file")
                                               : add(input, file, input.filename());
        }
        fail(input, failed ? failed.message() : "neither a file nor a folder");
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
            fail(folder, failed.message());
        std::sort(entries.begin(), entries.end());
        for (fs::directory_entry const& entry : entries)
            add_found(entry, below / entry.path().filename());
    }

    void add_found(fs::directory_entry const& entry, fs::path const& below)
    {
        std::error_code failed;
        fs::file_status const status = entry.status(failed);
        if (fs::is_directory(status)) {
            if (!entry.is_symlink(failed) && target_of(entry.path()) != m_output_place)
                walk(entry.path(), below);
            return;
        }
        if (passed_over(entry.path()))
            return;
        if (failed || !fs::exists(status))
            return fail(entry.path(), failed ? failed.message() : std::strerror(ENOENT));
        if (!fs::is_regular_file(status))
            return;
        if (access(entry.path().c_str(), R_OK) != 0)
            return fail(entry.path(), std::strerror(errno));
        if (KnownFile const file = file_kind(entry.path().string()); file.kind != FileKind::none)
            add(entry.path(), file, below);
    }

    void add(fs::path const& input, KnownFile file, fs::path const& below)
    {
        std::string output = input.string() + ".thumb.png";
        if (m_output)
            output = m_into_folder ? (fs::path(*m_output) / below).string() + ".png" : *m_output;
        m_plan.jobs.push_back({input.string(), file, std::move(output)});
    }

    void fail(fs::path const& path, std::string reason)
    {
        m_plan.failures.push_back({path.string(), std::move(reason)});
    }

    /// Finds outputs that would be written twice, over an input or something else of worth, or where there is
    /// no place for them. One input given twice is taken once.
    void find_collisions()
    {
        std::vector<ThumbJob> jobs = std::move(m_plan.jobs);
        m_plan.jobs.clear();
        check_folder();
        std::map<fs::path, std::string> inputs, targets;
        for (ThumbJob const& job : jobs) {
            inputs.emplace(place_of(job.input), job.input);
            targets.emplace(target_of(job.input), job.input);
        }
        std::map<fs::path, std::string> outputs;
        for (ThumbJob& job : jobs) {
            fs::path const place = place_of(job.output);
            if (auto const input = inputs.find(place); input != inputs.end())
                refuse(ut_concat("the thumbnail of ", job.input, " would replace the input ", input->second));
            if (auto const link = targets.find(place); link != targets.end())
                refuse(ut_concat("the thumbnail of ", job.input, " would replace ", job.output,
                                 ", to which the input ", link->second, " leads"));
            check_replaced(job);
            auto const [at, added] = outputs.emplace(place, job.input);
            if (!added && target_of(at->second) != target_of(job.input))
                refuse(ut_concat("the thumbnails of ", at->second, " and ", job.input, " would both be ",
                                 job.output));
            if (added)
                m_plan.jobs.push_back(std::move(job));
        }
        check_nesting(outputs);
    }

    void check_folder()
    {
        std::error_code ignored;
        if (m_into_folder && fs::exists(*m_output, ignored) && !fs::is_directory(*m_output, ignored))
            refuse(ut_concat("the thumbnails need a folder, and ", *m_output, " is none"));
    }

    void check_replaced(ThumbJob const& job)
    {
        if (std::string const objection = objection_to_picture(job.output); !objection.empty())
            refuse(ut_concat("the thumbnail of ", job.input, " would replace ", job.output, ", ", objection));
    }

    /// @param outputs  where they lie, and of which input they are
    void check_nesting(std::map<fs::path, std::string> const& outputs)
    {
        for (auto const& [place, input] : outputs)
            for (fs::path folder = place.parent_path(); folder != folder.parent_path();
                 folder = folder.parent_path())
                if (auto const file = outputs.find(folder); file != outputs.end())
                    refuse(ut_concat("the thumbnail of ", input, " would lie below that of ", file->second,
                                     ", ", folder.string()));
    }

    /// The first reason counts.
    void refuse(std::string reason)
    {
        if (m_plan.wrong_usage.empty())
            m_plan.wrong_usage = std::move(reason);
    }

    std::vector<std::string> const& m_inputs;
    std::optional<std::string> const& m_output;
    bool m_into_folder = false;
    fs::path m_output_place;
    ThumbPlan m_plan;
};

} // namespace

ThumbPlan plan_thumbs(std::vector<std::string> const& inputs, std::optional<std::string> const& output)
{
    return Planner(inputs, output).plan();
}

} // namespace mrtool
