// Measuring by Google Benchmark, which interleaves and times.
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
            samples_[task.name] = task.samples;
    }

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                samples_.at(run.run_name.function_name)->nanoseconds.push_back(run.GetAdjustedRealTime());
    }

private:
    std::map<std::string, Samples*> samples_;
};

} // namespace

void measure(const std::vector<Task>& tasks, int repetitions) {
    std::string arguments[] = {"bench", "--benchmark_enable_random_interleaving=true",
                               "--benchmark_repetitions=" + std::to_string(repetitions)};
    int argc = 0;
    char* argv[std::size(arguments)];
    for (std::string& argument : arguments)
        argv[argc++] = argument.data();
    benchmark::Initialize(&argc, argv);

    for (const Task& task : tasks)
        benchmark::RegisterBenchmark(task.name.c_str(),
                                     [&task](benchmark::State& state) {
                                         settleHeap();
                                         while (state.KeepRunningBatch(state.max_iterations))
                                             (*task.body)(task.times);
                                     })
            ->Iterations(static_cast<std::int64_t>(task.times))
            ->UseRealTime();
    Collector collector(tasks);
    benchmark::RunSpecifiedBenchmarks(&collector);
}

} // namespace bench
