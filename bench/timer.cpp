// Measuring without Google Benchmark, which Debian has for one word size only.
#include "bench.h"

#include <algorithm>
#include <random>

namespace bench {

void measure(const std::vector<Task>& tasks, int repetitions) {
    std::vector<const Task*> order;
    for (const Task& task : tasks)
        order.insert(order.end(), static_cast<std::size_t>(repetitions), &task);
    std::shuffle(order.begin(), order.end(), std::mt19937(std::random_device()()));
    for (const Task* const task : order)
        task->samples->nanoseconds.push_back(nanoseconds(*task->body, task->times) / static_cast<double>(task->times));
}

} // namespace bench
