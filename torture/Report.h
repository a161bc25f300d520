// The lines of the table that scripts/torture prints, which every program here adds to.
#ifndef ZEL_TORTURE_REPORT_H
#define ZEL_TORTURE_REPORT_H

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>

// One for each program, made from its arguments: the minutes that it is given, 2 by default, by which whatever is not
// tried exhaustively is multiplied.
class Report {
public:
    Report(int argc, char** argv) : minutes_(argc > 1 ? std::atof(argv[1]) : 2) {}

    double minutes() const { return minutes_; }

    // So many of something for each minute.
    long times(double eachMinute) const { return static_cast<long>(eachMinute * minutes_ + 0.5); }

    // Says what was lost, wherever it is noticed; the line of the table has the number.
    static void complain(const std::string& what) {
        static std::atomic<int> left{20};
        if (left-- > 0)
            std::fprintf(stderr, "  lost: %s\n", what.c_str());
    }

    // Ends a scenario.
    void line(const std::string& scenario, long tried, long lost) {
        std::printf("%-66s %10ld %6ld\n", scenario.c_str(), tried, lost);
        std::fflush(stdout);
        nothingTried_ = nothingTried_ || tried == 0;
        lost_ += lost;
    }

    // The program's exit status: a scenario that tried nothing has not been passed.
    int status() const { return lost_ != 0 || nothingTried_ ? 1 : 0; }

private:
    double minutes_;
    long lost_ = 0;
    bool nothingTried_ = false;
};

#endif
