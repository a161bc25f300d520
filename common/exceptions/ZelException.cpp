#include "zel/exceptions/ZelException.h"

#include "zel/exceptions/ILocalizable.h"
#include "zel/utils/StringUtils.h"

#include "exceptions/Catalogue.h"
#include "tracer/TraceScope.h"
#include "utils/ErrnoKeeper.h"

#include <charconv>
#include <cstddef>
#include <ctime>
#include <iterator>
#include <string_view>

namespace ZEL::EXCEPTIONS {

namespace {

const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }

const char* orNull(const char* text) { return text != nullptr ? text : "(null)"; }

const char* orNull(const std::string& text) { return text.empty() ? "(null)" : text.c_str(); }

// The digits of a number, for as long as the object is there.
class Decimal {
public:
    explicit Decimal(int number) : end_(std::to_chars(digits_, std::end(digits_), number).ptr) {}
    operator std::string_view() const { return {digits_, static_cast<std::size_t>(end_ - digits_)}; }

private:
    char digits_[12];
    const char* end_;
};

} // namespace

// Code compiled against the class reads these fields in place.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct ZelException::Layout {
    static constexpr std::size_t word = sizeof(void*);
    static constexpr std::size_t string = sizeof(std::string);
    static constexpr std::size_t number = word; // an int and what aligns the pointer after it
    static constexpr std::size_t name = 4 * word + number;

    static_assert(offsetof(ZelException, text_) == word);
    static_assert(offsetof(ZelException, sourceFunction_) == 2 * word);
    static_assert(offsetof(ZelException, sourceFile_) == 3 * word);
    static_assert(offsetof(ZelException, sourceLine_) == 4 * word);
    static_assert(offsetof(ZelException, exceptionName_) == name);
    static_assert(offsetof(ZelException, exceptionCode_) == name + string);
    static_assert(offsetof(ZelException, catalogName_) == name + string + number);
    static_assert(offsetof(ZelException, entryName_) == name + 2 * string + number);
    static_assert(offsetof(ZelException, entryCode_) == name + 3 * string + number);
    static_assert(offsetof(ZelException, entryText_) == name + 3 * string + 2 * number);
    static_assert(offsetof(ZelException, errorTime_) == name + 4 * string + 2 * number);
    static_assert(offsetof(ZelException, properties_) == name + 4 * string + 2 * number + sizeof(long));
    static_assert(sizeof(ZelException) == (word == 4 ? 136 : 208));
};
#pragma GCC diagnostic pop

// The strings are filled in the body and not before it, so that errno is kept while they find their memory.

ZelException::ZelException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                           const char* function)
    : text_(text), exceptionCode_(code) {
    const ErrnoKeeper keeper;
    exceptionName_ = orEmpty(name);
    if (text != nullptr) {
        catalogName_ = text->getCatalogName();
        entryText_ = text->getEntryText();
        entryName_ = text->getEntryName();
        entryCode_ = text->getEntryCode();
    }
    errorTime_ = std::time(nullptr);
    setSourceLocation(file, line, function);
    properties_ = createExceptionData();
}

ZelException::ZelException(const char* name, int code, const char* catalogName, int entryCode, const char* entryName,
                           const char* entryText, const char* file, int line, const char* function)
    : text_(nullptr), exceptionCode_(code), entryCode_(entryCode) {
    const ErrnoKeeper keeper;
    exceptionName_ = orEmpty(name);
    catalogName_ = orEmpty(catalogName);
    entryName_ = orEmpty(entryName);
    entryText_ = orEmpty(entryText);
    errorTime_ = std::time(nullptr);
    setSourceLocation(file, line, function);
    properties_ = createExceptionData();
}

ZelException::ZelException(const ZelException& other)
    : std::exception(other), text_(other.text_), exceptionCode_(other.exceptionCode_), entryCode_(other.entryCode_),
      errorTime_(other.errorTime_) {
    const ErrnoKeeper keeper;
    exceptionName_ = other.exceptionName_;
    catalogName_ = other.catalogName_;
    entryName_ = other.entryName_;
    entryText_ = other.entryText_;
    setSourceLocation(other.sourceFile_, other.sourceLine_, other.sourceFunction_);
    try {
        properties_ = other.properties_;
    } catch (...) {
        // The reference could not be counted, since its lock fails. A copy without properties still says what happened.
    }
}

ZelException::~ZelException() = default;

const char* ZelException::what() const noexcept { return getErrorText().c_str(); }

ZelException* ZelException::clone() const { return new ZelException(*this); }

bool ZelException::instanceOf(int code) const { return answersTo(Row::Root, code); }

bool ZelException::instanceOf(const std::string& name) const { return answersTo(Row::Root, name); }

int ZelException::getExceptionCode() const { return exceptionCode_; }

std::string ZelException::getExceptionName() const { return exceptionName_; }

int ZelException::getEntryCode() const { return text_ != nullptr ? text_->getEntryCode() : entryCode_; }

const std::string& ZelException::getEntryName() const { return text_ != nullptr ? text_->getEntryName() : entryName_; }

const std::string& ZelException::getCatalogName() const {
    return text_ != nullptr ? text_->getCatalogName() : catalogName_;
}

// Falls back to the entry's name and not to its text: callers who want the message ask getErrorText().
const std::string& ZelException::getEntryText() const { return text_ != nullptr ? text_->getEntryText() : entryName_; }

long ZelException::getErrorTime() const { return errorTime_; }

const std::string& ZelException::getErrorText() const { return text_ != nullptr ? getEntryText() : entryText_; }

const char* ZelException::getSourceFile() const { return sourceFile_; }

int ZelException::getSourceLine() const { return sourceLine_; }

const char* ZelException::getSourceFunction() const { return sourceFunction_; }

std::string ZelException::getExecutionPoint() const {
    return RT::StringUtils::ToLocation(sourceFile_, sourceFunction_, sourceLine_);
}

std::string ZelException::retrieveProperty(const std::string& name) const {
    return properties_ ? properties_->retrieveProperty(name) : std::string();
}

void ZelException::assignProperty(const std::string& name, const std::string& value) {
    const ErrnoKeeper keeper;
    if (properties_)
        properties_->assignProperty(name, value);
}

void ZelException::setSourceLocation(const char* file, int line, const char* function) const {
    if (function != nullptr)
        sourceFunction_ = function;
    if (file != nullptr)
        sourceFile_ = file;
    if (line > 0)
        sourceLine_ = line;
    // Locks and allocations fail inside tracing itself, so their exceptions are not traced where they are thrown.
    // While one is being built or copied this object is still a plain root, which answers no: that much is traced.
    // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall): asked of the root, as said.
    if (instanceOf(catalogue(Row::Lock).code) || instanceOf(catalogue(Row::BadAlloc).code))
        return;
    const ErrnoKeeper keeper;
    try {
        trace();
    } catch (...) {
        // The failure being reported matters more than its trace. Tracing is no cancellation point, so no thread is
        // on its way out here.
    }
}

void ZelException::trace() const {
    RT::TraceScope::write("ZelException::setSourceLocation => exception thrown!",
                          {{"name: ", orNull(exceptionName_)},
                           {"code: ", Decimal(exceptionCode_)},
                           {"message: ", orNull(entryText_)},
                           {"method: ", orNull(sourceFunction_)},
                           {"file: ", orNull(sourceFile_)},
                           {"line: ", Decimal(sourceLine_)}});
}

} // namespace ZEL::EXCEPTIONS
