// What is traced during a scope, line by line.
#ifndef ZEL_TESTS_SUPPORT_CAPTUREDTRACE_H
#define ZEL_TESTS_SUPPORT_CAPTUREDTRACE_H

#include "zel/tracer/Trace.h"

#include <sstream>
#include <string>

class CapturedTrace {
public:
    // Drops what the ring buffer holds from before.
    CapturedTrace() {
        ZEL::TRACE::setTraceToStream(&stream_);
        stream_.str(std::string());
    }
    ~CapturedTrace() { ZEL::TRACE::setTraceDefault(); }
    CapturedTrace(const CapturedTrace&) = delete;
    CapturedTrace& operator=(const CapturedTrace&) = delete;

    std::string text() const { return stream_.str(); }

    // The texts of the records, without date, thread and location, each with "; " behind it.
    std::string texts() const {
        std::string result;
        std::istringstream lines(stream_.str());
        for (std::string line; std::getline(lines, line);) {
            const auto location = line.find(") ") != std::string::npos ? line.find(") ") : 0;
            result += line.substr(line.find(": ", location) + 2) + "; ";
        }
        return result;
    }

private:
    std::ostringstream stream_;
};

#endif
