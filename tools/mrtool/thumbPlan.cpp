#include "thumbPlan.h"

#include "text.h"

#include <algorithm>
#include <filesystem>
#include <map>

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
        return std::move(m_plan);
    }

private:
    void add(fs::path const& input)
    {
        std::error_code failed;
        fs::file_status const status = fs::status(input, failed);
        if (fs::is_directory(status))
            return walk(input, fs::path());
        if (fs::is_regular_file(status)) {
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
        std::error_code ignored;
        if (entry.is_directory(ignored)) {
            if (!entry.is_symlink(ignored) && target_of(entry.path()) != m_output_place)
                walk(entry.path(), below);
            return;
        }
        std::string const path = entry.path().string();
        if (!entry.is_regular_file(ignored) || path.ends_with(".thumb.png") ||
            vague_extension(extension_of(path)))
            return;
        if (KnownFile const file = file_kind(path); file.kind != FileKind::none)
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

    /// Finds outputs that would be written twice, or over an input. One input given twice is taken once.
    void find_collisions()
    {
        std::vector<ThumbJob> jobs = std::move(m_plan.jobs);
        m_plan.jobs.clear();
        std::map<fs::path, std::string> inputs;
        for (ThumbJob const& job : jobs) {
            inputs.emplace(place_of(job.input), job.input);
            inputs.emplace(target_of(job.input), job.input);
        }
        std::map<fs::path, std::string> outputs;
        for (ThumbJob& job : jobs) {
            fs::path const place = place_of(job.output);
            if (auto const input = inputs.find(place); input != inputs.end())
                return refuse(
                    text("the thumbnail of ", job.input, " would replace the input ", input->second));
            auto const [at, added] = outputs.emplace(place, job.input);
            if (added)
                m_plan.jobs.push_back(std::move(job));
            else if (target_of(at->second) != target_of(job.input))
                return refuse(text("the thumbnails of ", at->second, " and ", job.input, " would both be ",
                                   job.output));
        }
    }

    void refuse(std::string reason)
    {
        m_plan.jobs.clear();
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
