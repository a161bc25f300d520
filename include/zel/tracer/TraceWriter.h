/// @file
/// The process's one sink of trace records.
#ifndef ZEL_TRACER_TRACEWRITER_H
#define ZEL_TRACER_TRACEWRITER_H

#include "zel/export.h"
#include "zel/threads/Mutex.h"
#include "zel/tracer/Queue.h"
#include "zel/tracer/TraceRecord.h"

#include <atomic>
#include <iosfwd>

namespace ZEL {

class Tracer;

namespace RT {

class TraceScope;
class Unloading;

/// Keeps the last 256 records in memory or prints each at once: to a file, a stream or a callback. Records kept in
/// memory are printed first to the destination that is chosen next, oldest first.
///
/// Any thread may trace and switch. The buffer mutex is taken before the output mutex, wherever both are. Printing and
/// switching cannot be cancelled. A record made by the thread that is printing one at that moment is dropped; a
/// destination that such a thread switches to starts with the next record. A callback must return or throw: it must
/// not end its thread. What it throws passes out of the operation that printed, with every lock released.
///
/// The child of a fork traces on with locks of its own. It keeps the records in memory, unless another thread held on
/// to them for long at that moment.
class ZEL_API TraceWriter {
public:
    /// What receives the lines of a callback destination: a line that is terminated by a NUL, and its length without
    /// it. Its result is ignored.
    using Callback = int (*)(const char* text, int length);

    /// @return the writer, made on first use and never deleted; when the environment variable VOR_TRACE holds a path
    /// then, that file is the first destination. A process with raised privileges ignores the variable. Null only for
    /// the thread that is making the writer at that moment.
    static TraceWriter* getInstance();

    /// Hands \p record to the writer. Does nothing while the calling thread is making the writer.
    static void write(const TraceRecord& record);

    /// Destroys what is in memory; neither prints it nor closes the file.
    virtual ~TraceWriter();

    TraceWriter(const TraceWriter&) = delete;
    TraceWriter& operator=(const TraceWriter&) = delete;

    /// Keeps the record in memory or prints it, as the destination says.
    void writeRecord(const TraceRecord& record);

    /// Keeps the record in memory and drops the oldest of more than 256. Takes no lock.
    void addRecord(const TraceRecord& record);

    /// Prints the record, unless the destination is memory. Takes no lock.
    void printRecord(const TraceRecord& record);

    /// Prints and removes every record in memory, unless the destination is memory.
    void flushRingBuffer();

    /// Prints into a file, which is emptied or created. One that cannot be opened is not reported: what is printed
    /// is lost until the next switch. Null counts as such a file.
    void setDestination(const char* path);

    /// Prints to a stream, which the caller keeps alive until the next switch; nobody else may use it meanwhile. Each
    /// record ends with std::endl. Null loses what is printed.
    void setDestination(std::ostream* stream);

    /// Calls \p callback with each record's line, without a line break, and its length in bytes; its result is
    /// ignored. Null loses what is printed.
    void setDestination(Callback callback);

    /// Back to the memory of 256 records.
    void setDestinationToMemory();

    /// Closes the trace file, if there is one. Neither destination nor stream are reset: for those who do so next,
    /// holding both mutexes.
    void closeDestination() ZEL_REQUIRES(outputMutex_);

private:
    friend class ZEL::Tracer;
    friend class TraceScope;
    friend class Unloading;

    struct Fork;
    struct Layout;

    ZEL_LOCAL TraceWriter();
    ZEL_LOCAL static TraceWriter* create();

    ZEL_LOCAL static void write(const TraceParts& parts);
    template <class Source> ZEL_LOCAL void route(const Source& source);
    template <class Source> ZEL_LOCAL bool printLocked(const Source& source);
    template <class Change> ZEL_LOCAL void redirect(Change change);
    ZEL_LOCAL void keep(const TraceRecord& record) ZEL_REQUIRES(bufferMutex_);
    ZEL_LOCAL void keep(const TraceParts& parts) ZEL_REQUIRES(bufferMutex_);
    ZEL_LOCAL void keepLasting(TraceParts parts) ZEL_REQUIRES(bufferMutex_);
    ZEL_LOCAL void append(const TraceParts& parts) ZEL_REQUIRES(bufferMutex_);
    ZEL_LOCAL void grow(const TraceParts& parts) ZEL_REQUIRES(bufferMutex_);
    ZEL_LOCAL void keepNames() ZEL_REQUIRES(bufferMutex_);
    ZEL_LOCAL void print(const TraceRecord& record) ZEL_REQUIRES(outputMutex_);
    ZEL_LOCAL void print(const TraceParts& parts) ZEL_REQUIRES(outputMutex_);
    ZEL_LOCAL void drain() ZEL_REQUIRES(bufferMutex_, outputMutex_);

    std::atomic<int> kind_;
    Queue<TraceRecord, std::deque<TraceRecord>> ring_ ZEL_GUARDED_BY(bufferMutex_);
    Mutex bufferMutex_;
    Mutex outputMutex_;
    std::ostream* stream_ ZEL_GUARDED_BY(outputMutex_);
    std::ofstream* file_ ZEL_GUARDED_BY(outputMutex_);
    Callback callback_ ZEL_GUARDED_BY(outputMutex_);
};

} // namespace RT
} // namespace ZEL

#endif
