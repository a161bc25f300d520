// Measuring by Google Benchmark, which calibrates, interleaves and times.
#include "bench.h"

#include <map>

#include <benchmark/benchmark.h>

namespace bench {

namespace {

// Prints nothing: the table comes when all is measured.
class Collector : public benchmark::BenchmarkReporter {
public:
    explicit Collector(const std::vector<Task>& tasks) {
        for (const Task& task : tasks)
            samples_[task.name + "/real_time"] = task.samples;
    }

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                samples_.at(run.run_name.function_name + "/real_time")
                    ->nanoseconds.push_back(run.GetAdjustedRealTime());
    }

private:
    std::map<std::string, Samples*> samples_;
};

} // namespace

void measure(const std::vector<Task>& tasks, const Plan& plan) {
    std::string arguments[] = {"bench", "--benchmark_enable_random_interleaving=true",
                               "--benchmark_repetitions=" + std::to_string(plan.repetitions),
                               "--benchmark_min_time=" + std::to_string(plan.seconds)};
    int argc = 0;
    char* argv[std::size(arguments)];
    for (std::string& argument : arguments)
        argv[argc++] = argument.data();
    benchmark::Initialize(&argc, argv);

    for (const Task& task : tasks)
        benchmark::RegisterBenchmark(task.name.c_str(), [&task](benchmark::State& state) {
            const auto times = state.max_iterations;
            while (state.KeepRunningBatch(times))
                (*task.body)(static_cast<std::size_t>(times));
        })->UseRealTime();
    Collector collector(tasks);
    benchmark::RunSpecifiedBenchmarks(&collector);
}

} // namespace bench
