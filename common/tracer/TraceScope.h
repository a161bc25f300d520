#ifndef ZEL_COMMON_TRACER_TRACESCOPE_H
#define ZEL_COMMON_TRACER_TRACESCOPE_H

#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace ZEL::RT {

class TraceWriter;
struct TraceParts;

// A stamped Tracer whose records come together where they can: in memory they take one lock, which is half of what
// records cost. Lets the failures of the trace out, as a tracer does. The function's name is borrowed: it must be
// static text.
class TraceScope {
public:
    // "Entering" now, and "Leaving" at the end, if it has not been written by then.
    explicit TraceScope(const char* function);
    ~TraceScope();
    TraceScope(const TraceScope&) = delete;
    TraceScope& operator=(const TraceScope&) = delete;

    // What printf() of a tracer would write, and "Leaving".
    void leave(const char* format, ...) __attribute__((format(printf, 2, 3)));

    // Printed as one text, cut as formatted texts are.
    struct Text {
        std::string_view head;
        std::string_view tail;
    };

    // All that a tracer would write from its making to its end, when that is known beforehand.
    static void write(const char* function, std::initializer_list<Text> texts);

private:
    template <class Records> static void together(Records records);

    const char* function_; // null when it has been left
};

} // namespace ZEL::RT

#endif
