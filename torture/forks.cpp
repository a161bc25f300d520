// Children of a process with busy threads do at once what these were doing.
#include "zel/zel.h"

#include "Report.h"
#include "support/Child.h"
#include "support/Sanitizers.h"
#include "support/TemporaryDirectory.h"

#include <atomic>
#include <sstream>
#include <thread>
#include <vector>

namespace {

const TemporaryDirectory directory;
const std::string tracePath = directory.path("trace"), text(3000, 'x'), path = directory.file("file", text);

// Whether each of these works, and leaves its trace in the stream that it is sent to.
bool use() {
    bool caught = false;
    try {
        ZEL::RT::checkDeref(nullptr);
    } catch (const ZEL::EXCEPTIONS::NullPointerException&) {
        caught = true;
    }
    ZEL::Tracer scope("using", true);
    scope.printf("%s", ZEL::Date::getShortString(-1).c_str());
    ZEL::RT::Thread thread([](void* argument) { return argument; }, nullptr);
    const bool ran = threadSanitizer || (thread.start() == 0 && thread.wait(0)); // which wants none in a child
    return caught && ran && ZEL::RT::getLocalFile(path)->retrieve() == text;
}

int child(long number) {
    ZEL::Tracer().write("child " + std::to_string(number), 0);
    if (!use())
        return 1;
    std::ostringstream out;
    ZEL::TRACE::setTraceToStream(&out);
    const bool used = use();
    ZEL::TRACE::setTraceDefault();
    return used && out.str().find("NullPointerException") != std::string::npos ? 0 : 2;
}

// How many children did not end as they should, or are missing in the file that the trace goes to.
long lost(long children, const char* traceFile) {
    traceFile != nullptr ? ZEL::TRACE::setTraceToFile(traceFile) : ZEL::TRACE::setTraceDefault();
    std::atomic<bool> stop{false}, failed{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            while (!stop)
                failed = !use() || failed;
        });
    long failures = 0;
    for (long i = 0; i < children && failures < 3; ++i) // one that hangs takes its time
        if (const int status = statusOfChild([i] { return child(i); })) {
            Report::complain("child " + std::to_string(i) + " ended with " + std::to_string(status));
            ++failures;
        }
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    ZEL::TRACE::setTraceDefault();
    if (traceFile == nullptr || failures != 0)
        return failures + failed;
    long missing = children;
    std::ifstream in(traceFile);
    for (std::string line; std::getline(in, line);)
        missing -= line.find(": child ") != std::string::npos;
    return missing + failed;
}

} // namespace

int main(int argc, char** argv) {
    if (addressSanitizer)
        return std::fputs("forks: skipped, the sanitizer's allocator is not made for them\n", stderr), 77;
    Report report(argc, argv);
    const long children = report.times(250);
    report.line("children of eight threads that trace into memory", children, lost(children, nullptr));
    report.line("children of eight threads that trace to a file", children, lost(children, tracePath.c_str()));
    return report.status();
}
