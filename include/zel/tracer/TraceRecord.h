/// @file
/// One record of the trace.
#ifndef ZEL_TRACER_TRACERECORD_H
#define ZEL_TRACER_TRACERECORD_H

#include "zel/export.h"

#include <cstddef>
#include <string>

namespace ZEL {

class Tracer;

namespace RT {

struct TraceParts;

/// Where, when, on which thread, and what: one record of the trace, a plain value.
///
/// The names are borrowed and outlive their tracer in the trace's ring buffer: they must be static text. Any of them
/// may be null.
class ZEL_API TraceRecord {
public:
    /// Stamped with the current time and the calling thread.
    /// @param function, className static text, borrowed; null when unknown.
    /// @param line 0 or negative when unknown.
    /// @param text copied whole; only Tracer::printf() cuts.
    TraceRecord(const char* function, const char* className, int line, const std::string& text);

    /// With the tracer's names; stamped when the tracer stamps.
    TraceRecord(const Tracer& tracer, int line, const std::string& text);

    /// The same; the text is \p a followed by \p b.
    TraceRecord(const Tracer& tracer, int line, const std::string& a, const std::string& b);

    /// @return the record's line: short date and time, " Thread " and the thread's number as a signed 32-bit
    /// integer, a blank and the location, ": " and the text; without the parts that are not known.
    std::string toString() const;

private:
    friend class TraceWriter;

    struct Layout;

    ZEL_LOCAL explicit TraceRecord(const TraceParts& parts);
    ZEL_LOCAL void assign(const TraceParts& parts);
    ZEL_LOCAL void fit(std::size_t size);
    ZEL_LOCAL TraceParts parts() const;

    const char* functionName_;
    const char* className_;
    int line_;
    std::string text_;
    long time_;
    int thread_;
};

} // namespace RT
} // namespace ZEL

#endif
