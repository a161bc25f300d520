// Many at once: processes that change one file until they are killed, and threads that trace to changing destinations.
#include "zel/vor.h"
#include "zel/zel.h"

#include "Report.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <memory>
#include <numeric>
#include <random>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// In the library's place, so that a file which is locked is tried more often than twice a second.
void internal_sleepForAWhile(void) { std::this_thread::sleep_for(1ms); }

namespace {

constexpr int many = 16;
constexpr long most = 1 << 20;
const std::string path = "file"; // of the working directory

std::string numbered(int who, long number) {
    return std::to_string(who) + " " + std::to_string(number) + std::string(static_cast<std::size_t>(number % 97), '.');
}

// Whether a line is whole, and which one it is.
bool isNumbered(const std::string& line, int& who, long& number) {
    return std::sscanf(line.c_str(), "%d %ld", &who, &number) == 2 && who >= 0 && who < many && number > 0 &&
           line == numbered(who, number);
}

// What the processes know of each other.
struct Shared {
    std::atomic<long> last[many]; // line that each has begun to append
    std::atomic<bool> acknowledged[many][most];
    std::atomic<bool> rewriting;
    char contents[512]; // made by the rewrite, which may be cut short with its process
    std::atomic<long> rewrites, lostLines, lostRewrites;
};
Shared* shared = nullptr;

void lose(std::atomic<long>& count, const std::string& what) {
    ++count;
    Report::complain(what);
}

// The file under its lock. Its first line has the number of the last rewrite, and that of each process's last line
// before: these are left out. The others begin with '<', which ends a line that was cut short.
struct Log {
    const ZEL::RT::SmartPointer<ZEL::RT::ILocalFile> file = ZEL::RT::getLocalFile(path);
    const ZEL::RT::SmartPointer<ZEL::RT::FileLockImpl> lock = file->writeLock();

    // A rewrite that was cut short left the old contents, or a part of the new ones to be completed.
    Log() {
        const std::string wanted = shared->contents, found = file->retrieve(lock);
        if (shared->rewriting && wanted.compare(0, found.size(), found) == 0)
            file->save(lock, wanted);
        shared->rewriting = false;
    }

    void append(int who) const {
        const long number = ++shared->last[who];
        file->append(lock, "<" + numbered(who, number) + "\n");
        shared->acknowledged[who][number] = true;
    }

    void rewrite() const {
        const std::string contents = checked();
        std::copy_n(contents.c_str(), contents.size() + 1, shared->contents);
        shared->rewriting = true;
        file->save(lock, contents);
        ++shared->rewrites;
        shared->rewriting = false;
    }

    // The contents that stand for the present ones, of which nothing may be missing.
    std::string checked() const {
        std::istringstream in(file->retrieve(lock));
        long rewrites = -1, upTo[many] = {}, number = 0;
        int who = 0;
        in >> rewrites;
        for (long& last : upTo)
            in >> last;
        if (!in || rewrites < shared->rewrites)
            lose(shared->lostRewrites, "rewrite " + std::to_string(shared->rewrites));
        std::string line;
        std::set<std::pair<int, long>> found;
        for (std::getline(in, line); std::getline(in, line);)
            if (isNumbered(line.substr(line.rfind('<') + 1), who, number))
                if (number <= upTo[who] || !found.emplace(who, number).second)
                    lose(shared->lostLines, "once too often: " + line);
        std::string contents = std::to_string(rewrites + 1);
        for (who = 0; who < many; contents += " " + std::to_string(upTo[who++]))
            for (number = upTo[who] + 1; number <= shared->last[who]; ++number)
                if (found.count({who, number}) != 0)
                    upTo[who] = number;
                else if (shared->acknowledged[who][number])
                    lose(shared->lostLines, numbered(who, number));
        return contents + "\n";
    }
};

// Until it is killed.
int change(int who) {
    for (std::mt19937 random(static_cast<unsigned>(::getpid())); shared->last[who] < most - 1;)
        try {
            const Log log;
            random() % 16 == 0 ? log.rewrite() : log.append(who);
        } catch (const ZEL::EXCEPTIONS::IOException& e) { // -1086 if the file was locked for too long
            if (e.getEntryCode() != -1086)
                lose(shared->lostLines, e.what());
        }
    return 1;
}

void loadFile(Report& report) {
    std::string none = "0";
    for (int who = 0; who < many; ++who)
        none += " 0";
    std::ofstream(path) << none << "\n";
    const auto start = [](int who) {
        char program[] = "/proc/self/exe", argument[] = "change", number[] = {static_cast<char>('a' + who), '\0'};
        char* const arguments[] = {program, argument, number, nullptr};
        pid_t child = -1;
        if (::posix_spawn(&child, program, nullptr, nullptr, arguments, environ) != 0)
            std::abort();
        return child;
    };
    long killed = 0, others = 0;
    const auto end = [&](pid_t child) {
        int status = 0;
        ::kill(child, SIGKILL);
        ::waitpid(child, &status, 0);
        ++killed;
        others += !WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL;
    };
    pid_t children[many];
    for (int who = 0; who < many; ++who)
        children[who] = start(who);
    std::mt19937 random(1);
    for (const auto until = Clock::now() + std::chrono::milliseconds(report.times(30'000)); Clock::now() < until;) {
        std::this_thread::sleep_for(1us * (random() % 40'000));
        const int who = static_cast<int>(random() % many);
        end(children[who]);
        children[who] = start(who);
    }
    for (const pid_t child : children)
        end(child);

    VOR_FileHandle* handle = nullptr;
    const bool locked = vor_safeOpenFile(path.c_str(), 3, 0, &handle) != 0 || vor_safeCloseFile(handle) != 0;
    Log().checked();
    long appends = 0;
    for (const auto& acknowledged : shared->acknowledged)
        appends += std::count(std::begin(acknowledged), std::end(acknowledged), true);
    report.line("processes killed while they change a file under a lock", killed, others + locked);
    report.line("lines that they have appended to it", appends, shared->lostLines);
    report.line("times that they have rewritten it", shared->rewrites, shared->lostRewrites);
}

// So many more lines are written to a destination: in memory, all of them must have room.
std::atomic<int> room{0};
std::string heard;

// Switches itself now and then, by way of a file.
int hear(const char* text, int length) {
    static int times = 0;
    heard.append(text, static_cast<std::size_t>(length)) += '\n';
    if (++times % 16 == 0) {
        ZEL::TRACE::setTraceToFile("unused");
        ZEL::TRACE::setTraceToFile("unused");
        ZEL::TRACE::setTraceCallback(hear);
    }
    return 0;
}

// Whether each line is whole, there for the first time, and later than those of its thread before it.
long lostOf(const std::string& destination, std::vector<bool> (&seen)[many]) {
    long lost = 0, number = 0, last[many] = {};
    int who = 0;
    std::istringstream in(destination);
    for (std::string line; std::getline(in, line);)
        if (line.rfind(": ", 0) != 0 || !isNumbered(line.substr(2), who, number)) {
            Report::complain("not whole: " + line), ++lost;
        } else {
            const auto index = static_cast<std::size_t>(number);
            if (seen[who].size() <= index)
                seen[who].resize(2 * index);
            if (number <= last[who] || seen[who][index])
                Report::complain("out of order: " + line), ++lost;
            last[who] = number;
            seen[who][index] = true;
        }
    return lost;
}

void loadTrace(Report& report) {
    const auto openFiles = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = openFiles();
    std::ostringstream stream;
    ZEL::TRACE::setTraceToStream(&stream); // what is in memory so far
    ZEL::TRACE::setTraceDefault();
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    long written[many] = {}, switches = 0, lost = 0;
    for (int who = 0; who < many; ++who)
        threads.emplace_back([&stop, &number = written[who], who] {
            while (!stop)
                if (room-- > 0)
                    ZEL::Tracer().write(numbered(who, ++number), 0);
                else
                    std::this_thread::sleep_for(100us);
        });
    std::mt19937 random(1);
    const auto run = [&] {
        room = 2000;
        std::this_thread::sleep_for(1us * (random() % (random() % 2 == 0 ? 200 : 5000)));
    };
    std::vector<bool> seen[many];
    for (const auto until = Clock::now() + std::chrono::milliseconds(report.times(2500)); Clock::now() < until;
         switches += 4) {
        ZEL::TRACE::setTraceToFile(path.c_str());
        run();
        stream.str({});
        ZEL::TRACE::setTraceToStream(&stream);
        run();
        ZEL::TRACE::setTraceCallback(hear);
        run();
        room = 200; // and one more of each thread now, and one that was too late for the last destination
        ZEL::TRACE::setTraceDefault();
        for (const std::string& text : {TemporaryDirectory::contents(path), stream.str(), heard})
            lost += lostOf(text, seen);
        heard.clear();
    }
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    stream.str({});
    ZEL::TRACE::setTraceToStream(&stream);
    ZEL::TRACE::setTraceDefault();
    lost += lostOf(stream.str(), seen);
    const auto left = openFiles() - before;
    if (left != 0)
        Report::complain(std::to_string(left) + " descriptors left open");
    for (int who = 0; who < many; ++who)
        lost += written[who] - std::count(seen[who].begin(), seen[who].end(), true);
    report.line("lines of 16 threads while the destination changes " + std::to_string(switches) + " times",
                std::accumulate(written, written + many, 0L), lost + (left != 0));
}

} // namespace

int main(int argc, char** argv) {
    const bool changing = argc == 3 && argv[1] == std::string("change");
    const std::unique_ptr<TemporaryDirectory> directory(changing ? nullptr : new TemporaryDirectory);
    if (!changing)
        std::filesystem::current_path(directory->path(""));
    const int memory = ::open("shared", O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (::ftruncate(memory, sizeof(Shared)) != 0)
        std::abort();
    shared = static_cast<Shared*>(::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED, memory, 0));
    ::close(memory);
    if (changing)
        return change(*argv[2] - 'a');
    Report report(argc, argv);
    loadFile(report);
    loadTrace(report);
    return report.status();
}
