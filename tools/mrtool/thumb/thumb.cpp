// mrtool thumb: thumbnails of materials, meshes and images.
#include "commands.h"
#include "messages.h"
#include "pendingFile.h"
#include "thumbnailer.h"
#include "thumbPlan.h"
#include "workers.h"

namespace mrtool {

namespace {

/// @return whether all thumbnails were made
bool make_thumbnails(std::vector<ThumbJob> const& planned, ThumbOptions const& options)
{
    // Each worker has its own copy, and makes its own renderer in it.
    Thumbnailer thumbnailer(options);
    Progress progress(planned.size());
    bool all_made = true;
    Jobs jobs;
    jobs.count = planned.size();
    jobs.work = [&](std::size_t number) { return thumbnailer.make(planned[number]); };
    jobs.begun = [&](std::size_t number) { progress.begin(planned[number].input); };
    jobs.done = [&](std::size_t number, JobResult const& result) {
        for (std::string const& message : result.messages)
            say(planned[number].input, message);
        all_made = all_made && result.made;
    };
    jobs.lost = [&](std::size_t number, pid_t worker, std::string const& fate) {
        remove_left_over(planned[number].output, worker);
        say(planned[number].input, "drawing it " + fate);
        all_made = false;
    };
    run_in_workers(jobs);
    return all_made;
}

} // namespace

int run_thumb(ThumbOptions const& options)
{
    ThumbPlan const plan = plan_thumbs(options.inputs, options.output);
    if (!plan.wrong_usage.empty())
        throw WrongUsage{plan.wrong_usage};
    for (Failure const& failure : plan.failures)
        say(failure.path, failure.reason);
    if (plan.jobs.empty() && plan.failures.empty())
        say("thumb", "no material, mesh or image file is there");
    bool const all_made = make_thumbnails(plan.jobs, options);
    return all_made && plan.failures.empty() ? all_well : something_failed;
}

} // namespace mrtool
