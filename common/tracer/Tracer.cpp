#include "zel/tracer/Tracer.h"

#include "zel/api/vor_thread.h"
#include "zel/tracer/TraceWriter.h"

#include "tracer/TraceFormat.h"
#include "tracer/TraceParts.h"

#include <cstddef>
#include <ctime>

namespace ZEL {

namespace {

std::string_view orEmpty(const char* text) { return text != nullptr ? std::string_view(text) : std::string_view(); }

} // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct Tracer::Layout {
    static_assert(offsetof(Tracer, functionName_) == sizeof(void*));
    static_assert(offsetof(Tracer, className_) == 2 * sizeof(void*));
    static_assert(offsetof(Tracer, stamped_) == 3 * sizeof(void*));
};
#pragma GCC diagnostic pop

Tracer::Tracer() : functionName_(nullptr), className_(nullptr), stamped_(false) {}

Tracer::Tracer(const char* function, bool stamped) : Tracer(function, nullptr, 0, stamped) {}

Tracer::Tracer(const char* function, const char* className, int line, bool stamped)
    : functionName_(function), className_(className), stamped_(stamped) {
    emit(line, "Entering");
}

Tracer::~Tracer() {
    if (functionName_ == nullptr)
        return;
    try {
        emit(0, "Leaving");
    } catch (...) {
        // Nobody can be told from here.
    }
}

void Tracer::write(const std::string& text, int line) { emit(line, text); }

void Tracer::write(const std::string& a, const std::string& b, int line) { emit(line, a, b); }

void Tracer::writeln(const char* text, int line) { emit(line, orEmpty(text)); }

void Tracer::writeln(const char* a, const char* b, int line) { emit(line, orEmpty(a), orEmpty(b)); }

void Tracer::printf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    this->format(0, format, arguments);
    va_end(arguments);
}

void Tracer::printf(int line, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    this->format(line, format, arguments);
    va_end(arguments);
}

void Tracer::write(const RT::TraceRecord& record) { RT::TraceWriter::write(record); }

RT::TraceParts Tracer::parts(int line, std::string_view head, std::string_view tail) const {
    const long time = stamped_ ? std::time(nullptr) : 0;
    const int thread = stamped_ ? static_cast<int>(vor_getThreadId()) : 0;
    return {functionName_, className_, line, head, tail, time, thread};
}

void Tracer::emit(int line, std::string_view head, std::string_view tail) {
    RT::TraceWriter::write(parts(line, head, tail));
}

void Tracer::format(int line, const char* format, va_list arguments) {
    char text[RT::formattedSize];
    emit(line, RT::formatTrace(text, sizeof text, format, arguments));
}

} // namespace ZEL
