#ifndef ZEL_COMMON_TRACER_TRACESCOPE_H
#define ZEL_COMMON_TRACER_TRACESCOPE_H

#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace ZEL::RT {

class TraceWriter;
struct TraceParts;

// All that a stamped Tracer would write from its making to its end, when that is known beforehand. In memory it takes
// one lock, which is half of what records cost.
class TraceScope {
public:
    // Printed as one text, cut as formatted texts are.
    struct Text {
        std::string_view head;
        std::string_view tail;
    };

    // Lets the failures of the trace out, as a tracer does. The function's name is borrowed: it must be static text.
    static void write(const char* function, std::initializer_list<Text> texts);

private:
    static bool keep(TraceWriter& writer, const TraceParts& frame, std::initializer_list<Text> texts);
};

} // namespace ZEL::RT

#endif
