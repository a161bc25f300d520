// Measuring without Google Benchmark, which Debian has for one word size only.
#include "bench.h"

#include <algorithm>
#include <chrono>
#include <random>

namespace bench {

namespace {

double nanoseconds(const Body& body, std::size_t times) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    body(times);
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

// How often a body has to run to take that long.
std::size_t calibrate(const Body& body, double wanted) {
    std::size_t times = 1;
    for (;;) {
        const double taken = nanoseconds(body, times);
        if (taken >= wanted)
            return times;
        const double factor = taken > wanted / 10 ? 1.2 * wanted / taken : 10;
        times = static_cast<std::size_t>(static_cast<double>(times) * factor) + 1;
    }
}

} // namespace

void measure(const std::vector<Task>& tasks, const Plan& plan) {
    std::vector<std::size_t> times;
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        times.push_back(calibrate(*tasks[i].body, plan.seconds * 1e9));
        order.insert(order.end(), static_cast<std::size_t>(plan.repetitions), i);
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(std::random_device()()));
    for (const std::size_t i : order)
        tasks[i].samples->nanoseconds.push_back(nanoseconds(*tasks[i].body, times[i]) / static_cast<double>(times[i]));
}

} // namespace bench
