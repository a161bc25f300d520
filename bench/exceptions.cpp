#include "bench.h"
#include "inputs.h"

#include <ctime>
#include <exception>
#include <string>

#include <zel/zel.h>

namespace {

using namespace bench;
using ZEL::EXCEPTIONS::IOException;

void throwTraced() {
    try {
        throwException(
            IOException(inputs::fileName, "ZEL", inputs::code, "code", inputs::message, nullptr, -1, nullptr),
            inputs::source, inputs::sourceLine, inputs::operation);
    } catch (const IOException& e) {
        keep(e);
    }
}

// Holds what an exception of the library holds, and makes no record of it.
class Untraced : public std::exception {
public:
    Untraced(const std::string& fileName, const char* name, int code, const char* catalogue, int entryCode,
             const char* entryName, const char* text)
        : name_(name), code_(code), catalogue_(catalogue), entryName_(entryName), entryCode_(entryCode), text_(text),
          time_(std::time(nullptr)), properties_(ZEL::EXCEPTIONS::createExceptionData()) {
        properties_->assignProperty("FileName", fileName);
    }
    Untraced(const Untraced& other) = default;
    const char* what() const noexcept override { return text_.c_str(); }

    void setPlace(const char* file, int line, const char* function) {
        file_ = file;
        line_ = line;
        function_ = function;
    }

private:
    const char* file_ = nullptr;
    const char* function_ = nullptr;
    int line_ = -1;
    std::string name_;
    int code_;
    std::string catalogue_;
    std::string entryName_;
    int entryCode_;
    std::string text_;
    std::time_t time_;
    ZEL::RT::SmartPointer<ZEL::EXCEPTIONS::IExceptionData> properties_;
};

[[gnu::cold, gnu::noinline]] void throwUntracedAt(Untraced e, const char* file, int line, const char* function) {
    e.setPlace(file, line, function);
    throw Untraced(e);
}

void throwUntraced() {
    try {
        throwUntracedAt(Untraced(inputs::fileName, "IOException", -9, "ZEL", inputs::code, "code", inputs::message),
                        inputs::source, inputs::sourceLine, inputs::operation);
    } catch (const Untraced& e) {
        keep(e);
    }
}

const Rows rows([] {
    row("throw and catch an IOException, 24 records", each(throwTraced)).limit("untraced", each(throwUntraced), 1.4);
});

} // namespace
