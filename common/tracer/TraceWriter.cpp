#include "zel/tracer/TraceWriter.h"

#include "zel/api/vor_mutex.h"
#include "zel/api/vor_thread.h"
#include "zel/threads/MutexGrabber.h"
#include "zel/utils/EnvUtils.h"

#include "threads/CancellationShield.h"
#include "threads/Hold.h"
#include "threads/ImmortalMutex.h"
#include "tracer/LastingNames.h"
#include "tracer/TraceFormat.h"
#include "tracer/TraceParts.h"
#include "tracer/TraceScope.h"
#include "tracer/Unloading.h"
#include "utils/ErrnoKeeper.h"
#include "utils/SecureProcess.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <ctime>
#include <fstream>
#include <memory>
#include <new>
#include <ostream>
#include <utility>

#include <pthread.h>

namespace ZEL::RT {

namespace {

enum Kind : int { toMemory = 0, toFile = 1, toCallback = 2, toStream = 3 };

constexpr std::size_t ringBound = 256;

ImmortalMutex creationMutex;
[[maybe_unused]] const Mutex& madeAtLoad = creationMutex.get();

std::atomic<TraceWriter*> instance{nullptr};

// How many libraries are being unloaded at the moment.
std::atomic<int> unloading{0};

// Whether the calling thread is inside the writer. What it traces there is dropped: a callback that traces, a lock
// whose failure is traced and an allocation that fails would otherwise come back here without end.
thread_local bool inside __attribute__((tls_model("initial-exec"))) = false;

// Marks the calling thread as inside for the length of a scope.
class Inside {
public:
    Inside() { inside = true; }
    ~Inside() { inside = before_; }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

private:
    const bool before_ = inside;
};

std::string tracePath() { return isSecureProcess() ? std::string() : EnvUtils::GetEnv("VOR_TRACE", ""); }

} // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct TraceWriter::Layout {
    static constexpr std::size_t word = sizeof(void*);
    static constexpr std::size_t locks = 2 * word + sizeof(ring_);
    static_assert(offsetof(TraceWriter, kind_) == word);
    static_assert(offsetof(TraceWriter, ring_) == 2 * word);
    static_assert(offsetof(TraceWriter, bufferMutex_) == locks);
    static_assert(offsetof(TraceWriter, outputMutex_) == locks + sizeof(Mutex));
    static_assert(offsetof(TraceWriter, stream_) == locks + 2 * sizeof(Mutex));
    static_assert(offsetof(TraceWriter, file_) == locks + 2 * sizeof(Mutex) + word);
    static_assert(offsetof(TraceWriter, callback_) == locks + 2 * sizeof(Mutex) + 2 * word);
};
#pragma GCC diagnostic pop

// The child of a fork gets locks that nobody holds. To have the records and the trace file whole as well, the fork
// waits until nobody works on them, but not for long: a callback may keep the locks for as long as it likes, and it
// may be waiting for the very thread that forks.
struct TraceWriter::Fork {
    static constexpr long patience = 20'000'000; // nanoseconds, for each lock

    // Of the thread that forks; several may at once.
    static thread_local bool bufferHeld;
    static thread_local bool outputHeld;

    static const int handled;

    static bool tryLock(Mutex& mutex) {
        timespec until;
        ::clock_gettime(CLOCK_REALTIME, &until);
        until.tv_nsec += patience;
        if (until.tv_nsec >= 1'000'000'000) {
            until.tv_nsec -= 1'000'000'000;
            ++until.tv_sec;
        }
        return ::pthread_mutex_timedlock(reinterpret_cast<pthread_mutex_t*>(&mutex), &until) == 0;
    }

    static void prepare() {
        TraceWriter* writer = instance.load(std::memory_order_acquire);
        bufferHeld = writer != nullptr && tryLock(writer->bufferMutex_);
        outputHeld = writer != nullptr && tryLock(writer->outputMutex_);
    }

    static void parent() ZEL_NO_THREAD_SAFETY_ANALYSIS {
        TraceWriter* writer = instance.load(std::memory_order_acquire);
        if (outputHeld)
            writer->outputMutex_.unlock();
        if (bufferHeld)
            writer->bufferMutex_.unlock();
    }

    static void child() {
        creationMutex.renew();
        TraceWriter* writer = instance.load(std::memory_order_acquire);
        if (writer == nullptr)
            return;
        if (!bufferHeld) { // caught in the middle of a change: not even fit to be destroyed
            new (&writer->ring_) Queue<TraceRecord, std::deque<TraceRecord>>;
            LastingNames::renew();
        }
        new (&writer->bufferMutex_) Mutex;
        new (&writer->outputMutex_) Mutex;
    }
};

thread_local bool TraceWriter::Fork::bufferHeld __attribute__((tls_model("initial-exec"))) = false;
thread_local bool TraceWriter::Fork::outputHeld __attribute__((tls_model("initial-exec"))) = false;
const int TraceWriter::Fork::handled = ::pthread_atfork(prepare, parent, child);

TraceWriter* TraceWriter::getInstance() {
    TraceWriter* writer = instance.load(std::memory_order_acquire);
    if (writer != nullptr || inside)
        return writer;
    return create();
}

TraceWriter* TraceWriter::create() {
    const ErrnoKeeper keeper;
    const Inside scope;
    const MutexGrabber grabber(creationMutex.get());
    TraceWriter* writer = instance.load(std::memory_order_acquire);
    if (writer == nullptr) {
        writer = new TraceWriter;
        instance.store(writer, std::memory_order_release);
    }
    return writer;
}

void TraceWriter::write(const TraceRecord& record) {
    if (TraceWriter* writer = getInstance())
        writer->route(record);
}

void TraceWriter::write(const TraceParts& parts) {
    if (TraceWriter* writer = getInstance())
        writer->route(parts);
}

TraceWriter::TraceWriter() : kind_(toMemory), stream_(nullptr), file_(nullptr), callback_(nullptr) {
    const std::string path = tracePath();
    if (!path.empty())
        setDestination(path.c_str());
}

TraceWriter::~TraceWriter() = default;

void TraceWriter::writeRecord(const TraceRecord& record) { route(record); }

// By contract these two take no lock.
void TraceWriter::addRecord(const TraceRecord& record) ZEL_NO_THREAD_SAFETY_ANALYSIS { keep(record); }

void TraceWriter::printRecord(const TraceRecord& record) ZEL_NO_THREAD_SAFETY_ANALYSIS {
    if (inside || kind_ == toMemory)
        return;
    const ErrnoKeeper keeper;
    const Inside scope;
    const CancellationShield shield;
    print(record);
}

void TraceWriter::flushRingBuffer() {
    if (inside)
        return;
    const ErrnoKeeper keeper;
    const Inside scope;
    const CancellationShield shield;
    const MutexGrabber buffer(bufferMutex_);
    if (kind_ == toMemory)
        return;
    const MutexGrabber output(outputMutex_);
    drain();
}

void TraceWriter::setDestination(const char* path) {
    std::unique_ptr<std::ofstream> opened(new std::ofstream);
    redirect([&]() ZEL_REQUIRES(outputMutex_) {
        if (path != nullptr)
            opened->open(path, std::ios::out | std::ios::trunc);
        else
            opened->setstate(std::ios::failbit);
        stream_ = file_ = opened.release();
        kind_ = toFile;
    });
}

void TraceWriter::setDestination(std::ostream* stream) {
    redirect([=]() ZEL_REQUIRES(outputMutex_) {
        stream_ = stream;
        kind_ = toStream;
    });
}

void TraceWriter::setDestination(Callback callback) {
    redirect([=]() ZEL_REQUIRES(outputMutex_) {
        callback_ = callback;
        kind_ = toCallback;
    });
}

void TraceWriter::setDestinationToMemory() {
    redirect([this] { kind_ = toMemory; });
}

void TraceWriter::closeDestination() {
    delete file_;
    file_ = nullptr;
}

// One lock for one record. The destination may change between the look at it and the lock: a record that comes late
// into the ring is printed with the next switch, and one that comes late to print is kept.
template <class Source> void TraceWriter::route(const Source& source) {
    if (inside)
        return;
    const Inside scope;
    while (kind_.load(std::memory_order_relaxed) != toMemory) {
        if (printLocked(source))
            return;
    }
    const Hold buffer(bufferMutex_);
    keep(source);
}

// Whether it was printed: not if the destination has become memory.
template <class Source> [[gnu::noinline]] bool TraceWriter::printLocked(const Source& source) {
    const ErrnoKeeper keeper;
    const CancellationShield shield;
    const MutexGrabber output(outputMutex_);
    if (kind_ == toMemory)
        return false;
    print(source);
    return true;
}

// A thread that is printing has the output mutex already, and must not wait for the buffer mutex now. There is nothing
// to drain for it: what it prints is the first to have left the ring.
template <class Change> void TraceWriter::redirect(Change change) {
    const ErrnoKeeper keeper;
    const CancellationShield shield;
    const auto replace = [&]() ZEL_REQUIRES(outputMutex_) {
        closeDestination();
        stream_ = nullptr; // which may have been the file, should there be no memory for the change
        change();
    };
    if (inside && instance.load(std::memory_order_relaxed) == this) {
        const MutexGrabber output(outputMutex_);
        replace();
        return;
    }
    const Inside scope;
    const MutexGrabber buffer(bufferMutex_);
    const MutexGrabber output(outputMutex_);
    replace();
    drain();
}

void TraceWriter::keep(const TraceRecord& record) { keep(record.parts()); }

void TraceWriter::keep(const TraceParts& parts) {
    if (unloading.load(std::memory_order_relaxed) != 0)
        keepLasting(parts);
    else
        append(parts);
}

[[gnu::noinline]] void TraceWriter::keepLasting(TraceParts parts) {
    parts.functionName = LastingNames::of(parts.functionName);
    parts.className = LastingNames::of(parts.className);
    append(parts);
}

void TraceWriter::append(const TraceParts& parts) {
    if (ring_.size() < ringBound)
        return grow(parts);
    ring_.front().assign(parts);
    ring_.turn();
}

[[gnu::noinline]] void TraceWriter::grow(const TraceParts& parts) {
    const ErrnoKeeper keeper;
    ring_.push(TraceRecord(parts));
}

void TraceWriter::print(const TraceRecord& record) {
    const std::string line = record.toString();
    if (kind_ == toCallback) {
        if (callback_ != nullptr)
            callback_(line.c_str(), static_cast<int>(std::min<std::size_t>(line.size(), INT_MAX)));
    } else if (stream_ != nullptr) {
        stream_->write(line.data(), static_cast<std::streamsize>(line.size())) << std::endl;
    }
}

void TraceWriter::print(const TraceParts& parts) { print(TraceRecord(parts)); }

// Under both mutexes. The callback may switch back to memory, and what is then left stays there.
void TraceWriter::drain() {
    while (kind_ != toMemory && !ring_.empty()) {
        print(ring_.front());
        ring_.pop();
    }
}

// Once around, which leaves the order as it was.
void TraceWriter::keepNames() {
    for (std::size_t i = 0; i < ring_.size(); ++i) {
        TraceRecord& record = ring_.front();
        record.functionName_ = LastingNames::of(record.functionName_);
        record.className_ = LastingNames::of(record.className_);
        ring_.turn();
    }
}

namespace {

TraceParts stamped(const char* function, std::string_view head = {}) {
    return {function, nullptr, 0, head, {}, std::time(nullptr), static_cast<int>(vor_getThreadId())};
}

// As a tracer does: after a failure only the last record is written.
template <class Write> void writeToEnd(TraceParts& record, std::initializer_list<TraceScope::Text> texts, Write write) {
    const auto put = [&](std::string_view head, std::string_view tail) {
        record.head = head;
        record.tail = tail.substr(0, formattedSize - 1 - head.size());
        write(record);
    };
    const auto leave = [&] {
        try {
            put("Leaving", {});
        } catch (...) {
            // Nobody is told of what fails on leaving.
        }
    };
    try {
        for (const TraceScope::Text& text : texts)
            put(text.head, text.tail);
    } catch (...) {
        leave();
        throw;
    }
    leave();
}

} // namespace

TraceScope::TraceScope(const char* function) : function_(function) {
    TraceWriter::write(stamped(function, "Entering"));
}

TraceScope::~TraceScope() {
    if (function_ == nullptr)
        return;
    try {
        TraceWriter::write(stamped(function_, "Leaving"));
    } catch (...) {
        // Nobody can be told from here.
    }
}

void TraceScope::leave(const char* format, ...) {
    char text[formattedSize];
    va_list arguments;
    va_start(arguments, format);
    const std::string_view message = formatTrace(text, sizeof text, format, arguments);
    va_end(arguments);
    TraceParts record = stamped(std::exchange(function_, nullptr));
    together([&](auto write) { writeToEnd(record, {{message, {}}}, write); });
}

void TraceScope::write(const char* function, std::initializer_list<Text> texts) {
    TraceParts record = stamped(function, "Entering");
    together([&](auto write) {
        write(record);
        writeToEnd(record, texts, write);
    });
}

// Under one lock if the destination is memory, which it stays as long as the lock is held. Hands over what writes a
// record.
template <class Records> void TraceScope::together(Records records) {
    TraceWriter* writer = TraceWriter::getInstance();
    if (writer == nullptr || inside)
        return;
    if (writer->kind_.load(std::memory_order_relaxed) == toMemory) {
        const Inside scope;
        const Hold buffer(writer->bufferMutex_);
        if (writer->kind_ == toMemory)
            return records([writer](const TraceParts& record) ZEL_NO_THREAD_SAFETY_ANALYSIS { writer->keep(record); });
    }
    records([writer](const TraceParts& record) { writer->route(record); });
}

// A thread that unloads while it is printing may hold the output mutex alone, and must not wait for the buffer mutex
// for long: one who has that waits for the other. There is hardly anything in the ring while the trace is printed.
Unloading::Unloading() {
    const ErrnoKeeper keeper;
    ++unloading;
    TraceWriter* writer = instance.load(std::memory_order_acquire);
    if (writer == nullptr)
        return;
    Mutex& mutex = writer->bufferMutex_;
    const bool locked = inside ? TraceWriter::Fork::tryLock(mutex) : vor_lockMutex(&mutex) == 0;
    const Inside scope;
    if (!locked)
        return;
    writer->keepNames();
    vor_unlockMutex(&mutex);
}

Unloading::~Unloading() { --unloading; }

} // namespace ZEL::RT
