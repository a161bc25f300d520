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

    std::string text() const { return stream_.str(); }

    // The records that have a text in them, as scopes: "function{ text; text; } ". The library's have time and thread.
    std::string scopes(const std::string& wanted = "") const {
        std::string result;
        std::istringstream lines(text());
        for (std::string line; std::getline(lines, line);) {
            const std::size_t end = line.find("(): "), function = line.rfind(' ', end) + 1;
            const std::string record = line.substr(end + 4), opened = line.substr(function, end - function) + "{ ";
            if (line.find(" Thread ") == std::string::npos)
                result += "unstamped ";
            if (line.find(wanted) != std::string::npos)
                result += record == "Entering" ? opened : record == "Leaving" ? "} " : record + "; ";
        }
        return result;
    }

private:
    std::ostringstream stream_;
};

#endif
