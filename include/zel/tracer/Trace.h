/// @file
/// Where the trace goes.
#ifndef ZEL_TRACER_TRACE_H
#define ZEL_TRACER_TRACE_H

#include "zel/export.h"

#include <iosfwd>

/// Switches of the process-wide trace. Records kept in memory until then, at most the last 256, are printed first.
/// May be called from any thread; see ZEL::RT::TraceWriter for what each destination does.
namespace ZEL::TRACE {

/// Back to memory; a trace file is closed.
ZEL_API void setTraceDefault();

/// Calls \p callback with each record's line, without a line break, and its length in bytes.
ZEL_API void setTraceCallback(int (*callback)(const char* text, int length));

/// Prints to \p stream, which the caller keeps alive until the next switch.
ZEL_API void setTraceToStream(std::ostream* stream);

/// Prints into the file, which is emptied or created. One that cannot be opened loses what is printed.
ZEL_API void setTraceToFile(const char* path);

} // namespace ZEL::TRACE

#endif
