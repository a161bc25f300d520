// Measures the rows that were asked for and prints them with their goals.
#include "bench.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <mutex>
#include <regex>
#include <thread>

#include <malloc.h>

namespace bench {

namespace {

using Adders = std::vector<void (*)()>;

Adders& rowAdders() {
    static Adders adders;
    return adders;
}

Adders& peerAdders() {
    static Adders adders;
    return adders;
}

std::deque<Row>& table() {
    static std::deque<Row> rows;
    return rows;
}

double quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const double place = part * static_cast<double>(values.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, values.size() - 1);
    return values[below] + (place - static_cast<double>(below)) * (values[above] - values[below]);
}

std::string print(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string percent(double part) { return print(100 * part, 0) + " %"; }

std::string duration(double nanoseconds) {
    const char* const units[] = {"ns", "us", "ms", "s"};
    std::size_t unit = 0;
    for (; unit < 3 && nanoseconds >= 1000; ++unit)
        nanoseconds /= 1000;
    return print(nanoseconds, nanoseconds < 100 ? 1 : 0) + " " + units[unit];
}

struct Comparison {
    double ratio, noise;
    const char* verdict;
    bool missed;
};

Comparison compare(const Row& row, const Rival& rival) {
    const double ratio = row.samples.median() / rival.samples.median();
    const double noise = std::hypot(row.samples.spread(), rival.samples.spread());
    if (rival.goal == 0)
        return {ratio, noise, "", false};
    if (ratio <= rival.goal)
        return {ratio, noise, "met", false};
    const bool missed = ratio > rival.goal * (1 + noise);
    return {ratio, noise, missed ? "MISSED" : "within noise", missed};
}

using Line = std::vector<std::string>;

void printLines(const std::vector<Line>& lines) {
    std::vector<std::size_t> widths(lines.front().size());
    for (const Line& line : lines)
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], line[i].size());
    for (const Line& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i)
            std::printf("| %-*s ", static_cast<int>(widths[i]), line[i].c_str());
        std::printf("|\n");
    }
}

// A line for each rival, and for each row without one. Returns how many goals were missed.
int printTable(const std::deque<Row*>& rows) {
    std::vector<Line> lines = {{"row", "ours", "peer", "ratio", "limit", "ratio", "goal", "noise", "met"}};
    lines.emplace_back(lines.front().size(), "---");
    int missed = 0;
    for (const Row* row : rows) {
        const std::string ours = duration(row->samples.median());
        if (row->rivals.empty())
            lines.push_back({row->name, ours, "", "", "", "", "", percent(row->samples.spread()), ""});
        for (const Rival& rival : row->rivals) {
            const Comparison result = compare(*row, rival);
            const std::string who = rival.name + ": " + duration(rival.samples.median());
            const std::string ratio = print(result.ratio, 2);
            const bool peer = rival.kind == Rival::peer;
            lines.push_back({row->name, ours, peer ? who : "", peer ? ratio : "", peer ? "" : who, peer ? "" : ratio,
                             rival.goal != 0 ? print(rival.goal, 2) : "", percent(result.noise), result.verdict});
            missed += result.missed;
        }
    }
    printLines(lines);
    return missed;
}

// Names hold nothing that would have to be escaped.
void writeJson(std::ostream& out, const std::deque<Row*>& rows) {
    const auto samples = [](const Samples& s) {
        return "\"median\": " + print(s.median(), 1) + ", \"spread\": " + print(s.spread(), 3);
    };
    out << "{\"rows\": [";
    const char* separator = "\n";
    for (const Row* row : rows) {
        out << separator << "  {\"name\": \"" << row->name << "\", \"series\": \"" << row->series
            << "\", \"bytes\": " << (row->bytes ? row->bytes() : 0) << ", " << samples(row->samples)
            << ", \"rivals\": [";
        separator = ",\n";
        const char* inner = "\n";
        for (const Rival& rival : row->rivals) {
            out << inner << "    {\"kind\": \"" << (rival.kind == Rival::peer ? "peer" : "limit") << "\", \"name\": \""
                << rival.name << "\", \"goal\": " << rival.goal << ", " << samples(rival.samples) << "}";
            inner = ",\n";
        }
        out << "]}";
    }
    out << "\n]}\n";
}

// While a process has one thread only, the C library leaves out the atomic operations of its locks, and so do shared
// pointers. Programs that trace and lock have threads: one that sleeps makes every body pay what it would pay there.
class IdleThread {
public:
    ~IdleThread() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            done_ = true;
        }
        changed_.notify_one();
        thread_.join();
    }

private:
    void wait() {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this] { return done_; });
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    bool done_ = false;
    std::thread thread_{&IdleThread::wait, this};
};

// How often a body has to run to take that long. What disturbs the machine makes a run longer, never shorter: the
// shortest of three counts.
std::size_t calibrate(const Body& body, double wanted) {
    for (std::size_t times = 1;;) {
        const double taken = std::min({nanoseconds(body, times), nanoseconds(body, times), nanoseconds(body, times)});
        if (taken >= wanted)
            return times;
        const double factor = taken > wanted / 10 ? 1.2 * wanted / taken : 10;
        times = static_cast<std::size_t>(static_cast<double>(times) * factor) + 1;
    }
}

// What a heap looks like decides how long it takes to allocate a hundred thousand nodes. It keeps its pages here, and
// serves all but the largest blocks, as the C library decides by itself after a while; settleHeap() does the rest.
void keepHeap() {
    ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
    ::mallopt(M_MMAP_THRESHOLD, sizeof(void*) == 8 ? 32 << 20 : 512 << 10);
}

struct Options {
    double seconds = 0.005;
    int repetitions = 31;
    std::string json;
    std::regex filter{""};
};

int usage() {
    std::cerr << "usage: bench [--repetitions N] [--seconds S] [--json FILE] [FILTER]\n"
                 "FILTER is a regular expression for names of rows.\n";
    return 2;
}

// Returns whether the arguments could be understood.
bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool named = argument.rfind("--", 0) == 0;
        if (named && i + 1 == argc)
            return false;
        if (argument == "--repetitions")
            options.repetitions = std::max(1, std::atoi(argv[++i]));
        else if (argument == "--seconds")
            options.seconds = std::atof(argv[++i]);
        else if (argument == "--json")
            options.json = argv[++i];
        else if (named || i + 1 != argc)
            return false;
        else
            options.filter = argument;
    }
    return true;
}

int run(const Options& options) {
    keepHeap();
    const IdleThread idle;
    for (const auto add : rowAdders())
        add();
    for (const auto add : peerAdders())
        add();

    std::deque<Row*> rows;
    std::vector<Task> tasks;
    for (Row& row : table()) {
        if (!std::regex_search(row.name, options.filter))
            continue;
        rows.push_back(&row);
        tasks.push_back({row.name, &row.ours, &row.samples, 0});
        for (Rival& rival : row.rivals)
            tasks.push_back({row.name + " / " + rival.name, &rival.body, &rival.samples, 0});
    }
    if (rows.empty()) {
        std::cerr << "bench: no row has such a name\n";
        return 2;
    }
    for (const Task& task : tasks)
        (*task.body)(0);
    for (Task& task : tasks)
        task.times = calibrate(*task.body, options.seconds * 1e9);
    measure(tasks, options.repetitions);

    const int missed = printTable(rows);
    if (!options.json.empty()) {
        std::ofstream file(options.json);
        writeJson(file, rows);
        if (!file.flush()) {
            std::cerr << "bench: cannot write " << options.json << "\n";
            return 2;
        }
    }
    std::printf("\n%d goals missed by more than the noise\n", missed);
    return missed != 0;
}

} // namespace

double Samples::median() const { return quantile(nanoseconds, 0.5); }

double Samples::spread() const { return (quantile(nanoseconds, 0.75) - quantile(nanoseconds, 0.25)) / 2 / median(); }

Row& Row::peer(const std::string& who, Body body, double goal) {
    rivals.push_back({Rival::peer, who, std::move(body), goal, {}});
    return *this;
}

Row& Row::limit(const std::string& what, Body body, double goal) {
    rivals.push_back({Rival::limit, what, std::move(body), goal, {}});
    return *this;
}

Row& Row::growth(const std::string& of, std::function<std::size_t()> forBytes) {
    series = of;
    bytes = std::move(forBytes);
    return *this;
}

Row& Row::growth(const std::string& of, std::size_t forBytes) {
    return growth(of, [forBytes] { return forBytes; });
}

Row& row(const std::string& name, Body ours) {
    Row& added = table().emplace_back();
    added.name = name;
    added.ours = std::move(ours);
    return added;
}

Row& find(const std::string& name) {
    for (Row& row : table())
        if (row.name == name)
            return row;
    std::cerr << "bench: there is no row " << name << "\n";
    std::exit(2);
}

Rows::Rows(void (*add)()) { rowAdders().push_back(add); }

Peers::Peers(void (*add)()) { peerAdders().push_back(add); }

// The C library does so before it looks for a block that is not small.
void settleHeap() {
    void* const block = std::malloc(64 << 10);
    keep(block);
    std::free(block);
}

double nanoseconds(const Body& body, std::size_t times) {
    using Clock = std::chrono::steady_clock;
    settleHeap();
    const Clock::time_point start = Clock::now();
    body(times);
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

Body onTwoThreads(const Body& body) {
    return [body](std::size_t times) {
        std::thread other([&] { body(times / 2); });
        body(times - times / 2);
        other.join();
    };
}

} // namespace bench

int main(int argc, char** argv) {
    bench::Options options;
    return bench::parse(argc, argv, options) ? bench::run(options) : bench::usage();
}
