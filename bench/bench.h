/// @file
/// Rows of the table that compares the library with its peers and with the limits that its contract sets.
#ifndef ZEL_BENCH_BENCH_H
#define ZEL_BENCH_BENCH_H

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Does the work of a row so many times. Those of all rows are called with 0 first, which is when inputs are made, so
/// that what stays lies together in memory, apart from what comes and goes.
using Body = std::function<void(std::size_t times)>;

/// What was measured of one body: nanoseconds for one time, from each repetition.
struct Samples {
    std::vector<double> nanoseconds;
    double median() const;
    /// Half of what lies between the quartiles, as a part of the median.
    double spread() const;
};

/// A body and what it is measured against: its goal is the ratio of our median to its own. 0 is no goal.
struct Rival {
    enum Kind { peer, limit };
    Kind kind;
    std::string name;
    Body body;
    double goal;
    Samples samples;
};

struct Row {
    std::string name;
    Body ours;
    std::deque<Rival> rivals;
    std::string series;                 ///< What it is a point of in the chart of growth, if it is.
    std::function<std::size_t()> bytes; ///< How much it works on then.
    Samples samples;

    /// Somebody else's code for the same work.
    Row& peer(const std::string& who, Body body, double goal = 0);
    /// What no implementation of the contract can do without, or the row itself at another size.
    Row& limit(const std::string& what, Body body, double goal = 0);
    Row& growth(const std::string& of, std::function<std::size_t()> forBytes);
    Row& growth(const std::string& of, std::size_t forBytes);
};

/// Adds a row to the table.
Row& row(const std::string& name, Body ours);

/// The row of that name. Ends the program if there is none.
Row& find(const std::string& name);

/// Objects of static storage that add the rows of a source, and then the peers to everybody's rows.
struct Rows {
    explicit Rows(void (*add)());
};
struct Peers {
    explicit Peers(void (*add)());
};

/// A body, how often it does its work in one repetition, and where its samples go.
struct Task {
    std::string name;
    const Body* body;
    Samples* samples;
    std::size_t times;
};

/// Measures all tasks in one random order of all their repetitions.
void measure(const std::vector<Task>& tasks, int repetitions);

/// Puts the free pieces of the heap together, so that nobody has to allocate from what others left in pieces.
void settleHeap();

/// The time that a body takes for so many times, on a settled heap.
double nanoseconds(const Body& body, std::size_t times);

/// A body out of what is to be done once.
template <class Once> Body each(Once once) {
    return [once](std::size_t times) {
        for (; times != 0; --times)
            once();
    };
}

/// The same for what is to be done with an input, which \p make gives by reference.
template <class Make, class Once> Body each(Make make, Once once) {
    return [make, once](std::size_t times) {
        const auto& input = make();
        for (; times != 0; --times)
            once(input);
    };
}

/// A body that does half of the work on a thread of its own.
Body onTwoThreads(const Body& body);

/// Makes the compiler believe that somebody reads the value.
template <class T> void keep(const T& value) { asm volatile("" : : "m"(value) : "memory"); }

} // namespace bench

#endif
