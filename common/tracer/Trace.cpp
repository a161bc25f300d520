#include "zel/tracer/Trace.h"

#include "zel/tracer/TraceWriter.h"

namespace ZEL::TRACE {

namespace {

using RT::TraceWriter;

// There is no writer for the thread that is making it: nothing to switch yet.
template <class Switch> void apply(Switch change) {
    if (TraceWriter* writer = TraceWriter::getInstance())
        change(*writer);
}

} // namespace

void setTraceDefault() {
    apply([](TraceWriter& writer) { writer.setDestinationToMemory(); });
}

void setTraceCallback(int (*callback)(const char* text, int length)) {
    apply([=](TraceWriter& writer) { writer.setDestination(callback); });
}

void setTraceToStream(std::ostream* stream) {
    apply([=](TraceWriter& writer) { writer.setDestination(stream); });
}

void setTraceToFile(const char* path) {
    apply([=](TraceWriter& writer) { writer.setDestination(path); });
}

} // namespace ZEL::TRACE
