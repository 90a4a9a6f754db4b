#include "table.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <map>

namespace {

char const* const none = "–";
char const* const kept = "kept";
char const* const missed = "**missed**";

/// Gathers each side's seconds, one number a repetition.
class Gatherer : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(Context const&) override { return true; }

    void ReportRuns(std::vector<Run> const& runs) override
    {
        for (Run const& run : runs)
            if (run.run_type == Run::RT_Iteration && run.iterations > 0)
                m_seconds[run.run_name.function_name].push_back(run.real_accumulated_time /
                                                                static_cast<double>(run.iterations));
    }

    /// Adds the median to @p medians, unless a filter left the side out.
    void append_median(std::string const& name, std::vector<double>& medians)
    {
        std::vector<double>& seconds = m_seconds[name];
        if (seconds.empty())
            return;
        std::sort(seconds.begin(), seconds.end());
        std::size_t const middle = seconds.size() / 2;
        bool const odd = seconds.size() % 2 == 1;
        medians.push_back(odd ? seconds[middle] : (seconds[middle - 1] + seconds[middle]) / 2.0);
    }

private:
    std::map<std::string, std::vector<double>> m_seconds;
};

[[gnu::format(printf, 1, 2)]] std::string text(char const* format, ...)
{
    char buffer[128];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    return buffer;
}

std::string milliseconds(double seconds)
{
    return text(seconds < 0.01 ? "%.3f ms" : "%.1f ms", seconds * 1e3);
}

std::string mebibytes(double bytes)
{
    return text("%.1f MiB", bytes / (1 << 20));
}

/// Freed memory stays with the process. Otherwise a side that takes more of it than was at hand pays each time
/// for zeroed pages, which the smaller side before it did not have to: that would measure the sides' turns.
void keep_freed_memory()
{
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
}

} // namespace

Table::Table(int argc, char** argv)
{
    keep_freed_memory();
    static char interleaved[] = "--benchmark_enable_random_interleaving=true";
    static char repetitions[] = "--benchmark_repetitions=15";
    static char shortest[] = "--benchmark_min_time=0.05";
    std::vector<char*> arguments{argv[0], interleaved, repetitions, shortest};
    arguments.insert(arguments.end(), argv + 1, argv + argc); // last, so that they win
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        std::exit(2);
}

void Table::compare(std::string const& work, std::function<void()> const& library, Side const& baseline,
                    double at_most, std::vector<Side> const& others)
{
    std::vector<Side> sides{{"library", library}, baseline};
    sides.insert(sides.end(), others.begin(), others.end());
    std::vector<double> const seconds = measure(work, sides);
    if (seconds.size() < sides.size())
        return;
    std::string beside = baseline.what + ": " + milliseconds(seconds[1]);
    for (std::size_t i = 2; i < sides.size(); ++i)
        beside += "; " + sides[i].what + ": " + milliseconds(seconds[i]);
    double const ratio = seconds[0] / seconds[1];
    row(work, milliseconds(seconds[0]), beside, text("%.2f", ratio), text("%.2f", at_most),
        ratio <= at_most ? kept : missed);
}

void Table::note(std::string const& work, std::function<void()> const& library, Side const& baseline)
{
    std::vector<double> const seconds = measure(work, {{"library", library}, baseline});
    if (seconds.size() == 2)
        row(work, milliseconds(seconds[0]), baseline.what + ": " + milliseconds(seconds[1]),
            text("%.2f", seconds[0] / seconds[1]), none, none);
}

void Table::limit(std::string const& work, std::function<void()> const& library, double at_most)
{
    for (double const seconds : measure(work, {{"library", library}}))
        row(work, milliseconds(seconds), none, none, milliseconds(at_most),
            seconds <= at_most ? kept : missed);
}

void Table::size(std::string const& work, double bytes, double at_most)
{
    row(work, mebibytes(bytes), none, none, mebibytes(at_most), bytes <= at_most ? kept : missed);
}

std::vector<double> Table::measure(std::string const& work, std::vector<Side> const& sides)
{
    auto const name = [&work](Side const& side) { return work + "/" + side.what; };
    for (Side const& side : sides) {
        auto const run = [&side](benchmark::State& state) {
            for ([[maybe_unused]] auto const& iteration : state)
                side.work();
        };
        benchmark::RegisterBenchmark(name(side).c_str(), run)->UseRealTime();
    }
    Gatherer gatherer;
    benchmark::RunSpecifiedBenchmarks(&gatherer);
    benchmark::ClearRegisteredBenchmarks();
    std::vector<double> seconds;
    for (Side const& side : sides)
        gatherer.append_median(name(side), seconds);
    return seconds;
}

void Table::row(std::string const& work, std::string const& library, std::string const& baseline,
                std::string const& ratio, std::string const& at_most, std::string const& outcome)
{
    if (!m_begun)
        std::printf("| Work | Library | Baseline | Ratio | At most | |\n|---|---|---|---|---|---|\n");
    m_begun = true;
    std::printf("| %s | %s | %s | %s | %s | %s |\n", work.c_str(), library.c_str(), baseline.c_str(),
                ratio.c_str(), at_most.c_str(), outcome.c_str());
    std::fflush(stdout);
}

void require(bool condition, char const* message)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", message);
    std::exit(1);
}
