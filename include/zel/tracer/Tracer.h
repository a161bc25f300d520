/// @file
/// Scoped tracer.
#ifndef ZEL_TRACER_TRACER_H
#define ZEL_TRACER_TRACER_H

#include "zel/export.h"

#include <cstdarg>
#include <string>
#include <string_view>

namespace ZEL {

namespace RT {
class TraceRecord;
struct TraceParts;
} // namespace RT

/// Brackets a function in the trace: "Entering" when it is made, "Leaving" when it goes, and free text between.
///
/// Made on the stack of the traced function and used by that thread alone. Names are borrowed, also by the records,
/// which outlive the tracer: they must be static text; null is allowed and only changes the record's line. Operations
/// let the failures of the trace out (std::bad_alloc, LockException, whatever a trace callback or stream throws);
/// the destructor drops them. Tracing leaves errno alone and is no cancellation point.
class ZEL_API Tracer {
public:
    /// Brackets nothing and writes nothing by itself.
    Tracer();

    /// Writes "Entering" with line 0.
    /// @param function such as "FileLockImpl::obtainLock"; "()" is added when it is printed.
    /// @param stamped whether this tracer's records carry the time and the calling thread.
    Tracer(const char* function, bool stamped);

    /// Writes "Entering" with the given line; 0 or negative when there is none.
    Tracer(const char* function, const char* className, int line, bool stamped);

    /// Writes "Leaving" with line 0, unless the function name is null.
    virtual ~Tracer();

    Tracer(const Tracer&) = delete;
    Tracer& operator=(const Tracer&) = delete;

    /// Writes a text of any length; a \p line of 0 or below is not printed.
    void write(const std::string& text, int line);

    /// Writes \p a directly followed by \p b.
    void write(const std::string& a, const std::string& b, int line);

    /// The same from C strings; null counts as "". Despite the name no line break is added.
    /// @{
    void writeln(const char* text, int line);
    void writeln(const char* a, const char* b, int line);
    /// @}

    /// Writes formatted text, cut in silence to its first 1023 characters. The record's line is 0 unless it is given.
    /// @{
    void printf(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void printf(int line, const char* format, ...) __attribute__((format(printf, 3, 4)));
    /// @}

    /// Writes a record as it is.
    void write(const RT::TraceRecord& record);

private:
    friend class RT::TraceRecord;
    struct Layout;

    ZEL_LOCAL RT::TraceParts parts(int line, std::string_view head, std::string_view tail) const;
    ZEL_LOCAL void emit(int line, std::string_view head, std::string_view tail = {});
    ZEL_LOCAL void format(int line, const char* format, va_list arguments) __attribute__((format(printf, 3, 0)));

    const char* functionName_;
    const char* className_;
    bool stamped_;
};

} // namespace ZEL

#endif
