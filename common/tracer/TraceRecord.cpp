#include "zel/tracer/TraceRecord.h"

#include "zel/data/Date.h"
#include "zel/threads/Thread.h"
#include "zel/tracer/Tracer.h"
#include "zel/utils/StringUtils.h"

#include "tracer/TraceFormat.h"
#include "tracer/TraceParts.h"
#include "utils/ErrnoKeeper.h"

#include <cstddef>
#include <ctime>

namespace ZEL::RT {

namespace {
constexpr std::size_t storageKept = formattedSize;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct TraceRecord::Layout {
    static constexpr std::size_t word = sizeof(void*);
    static_assert(offsetof(TraceRecord, className_) == word);
    static_assert(offsetof(TraceRecord, line_) == 2 * word);
    static_assert(offsetof(TraceRecord, text_) == 3 * word);
    static_assert(offsetof(TraceRecord, time_) == 3 * word + sizeof(std::string));
    static_assert(offsetof(TraceRecord, thread_) == 4 * word + sizeof(std::string));
    static_assert(sizeof(TraceRecord) == (word == 4 ? 44 : 72));
};
#pragma GCC diagnostic pop

TraceRecord::TraceRecord(const char* function, const char* className, int line, const std::string& text)
    : functionName_(function), className_(className), line_(line), text_(text), time_(std::time(nullptr)),
      thread_(static_cast<int>(Thread::myThreadID())) {}

TraceRecord::TraceRecord(const Tracer& tracer, int line, const std::string& text)
    : TraceRecord(tracer.parts(line, text, {})) {}

TraceRecord::TraceRecord(const Tracer& tracer, int line, const std::string& a, const std::string& b)
    : TraceRecord(tracer.parts(line, a, b)) {}

TraceRecord::TraceRecord(const TraceParts& parts) { assign(parts); }

// The text comes first: when it finds no memory, the record is still what it was. It stays in the storage that the
// record has, as long as that is of a size that suits.
void TraceRecord::assign(const TraceParts& parts) {
    const std::size_t size = parts.head.size() + parts.tail.size();
    if (size > text_.capacity() || (size <= storageKept && text_.capacity() > storageKept))
        fit(size);
    if (parts.tail.empty()) {
        text_.assign(parts.head);
    } else {
        text_.resize(size);
        parts.head.copy(text_.data(), parts.head.size());
        parts.tail.copy(text_.data() + parts.head.size(), parts.tail.size());
    }
    functionName_ = parts.functionName;
    className_ = parts.className;
    line_ = parts.line;
    time_ = parts.time;
    thread_ = parts.thread;
}

// A text of unusual length leaves more than is worth keeping behind it.
void TraceRecord::fit(std::size_t size) {
    const ErrnoKeeper keeper;
    std::string fitting;
    fitting.reserve(size);
    text_.swap(fitting);
}

TraceParts TraceRecord::parts() const { return {functionName_, className_, line_, text_, {}, time_, thread_}; }

std::string TraceRecord::toString() const {
    std::string line;
    if (time_ != 0)
        line += Date::getShortString(time_);
    if (thread_ != 0)
        line.append(" Thread ").append(StringUtils::ToString(thread_));
    if (functionName_ != nullptr || className_ != nullptr)
        line.append(" ").append(StringUtils::ToLocation(className_, functionName_, line_));
    return line.append(": ").append(text_);
}

} // namespace ZEL::RT
