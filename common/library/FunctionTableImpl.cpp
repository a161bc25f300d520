#include "zel/library/FunctionTableImpl.h"

#include "zel/tracer/Tracer.h"

#include <algorithm>
#include <cinttypes>
#include <cstddef>

namespace ZEL::RT {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct FunctionTableImpl::Layout {
    static constexpr std::size_t word = sizeof(void*);
    static_assert(offsetof(FunctionTableImpl, methods_) == word);
    static_assert(offsetof(FunctionTableImpl, tableName_) == 4 * word);
    static_assert(offsetof(FunctionTableImpl, assigned_) == 4 * word + sizeof(std::string));
};
#pragma GCC diagnostic pop

const char FunctionTableImpl::TAG[10] = "functions";

FunctionTableImpl::FunctionTableImpl(const std::string& tableName) : tableName_(tableName), assigned_(false) {
    Tracer trace("FunctionTableImpl::FunctionTableImpl", true);
}

std::string FunctionTableImpl::toString() const { return TAG; }

FunctionTableImpl::~FunctionTableImpl() {
    try {
        Tracer trace("FunctionTableImpl::~FunctionTableImpl", true);
    } catch (...) {
        // The trace failed, and nobody can be told from here.
    }
}

bool FunctionTableImpl::assigned() const { return assigned_; }

bool FunctionTableImpl::empty() const { return methods_.empty(); }

void FunctionTableImpl::addMethod(const DynamicMethod& method) {
    Tracer trace("FunctionTableImpl::addMethod", true);
    methods_.push_back(method);
}

bool FunctionTableImpl::load(const SmartPointer<const DynamicLibraryImpl>& library) const {
    Tracer trace("FunctionTableImpl::load", true);
    assigned_ = static_cast<bool>(library);
    for (auto entry = methods_.begin(); assigned_ && entry != methods_.end(); ++entry) {
        entry->address_ = library->getSymbol(entry->method_);
        if (entry->address_ == nullptr) {
            trace.printf("Could not find function %s in library %s", entry->method_.c_str(),
                         library->getLibraryName().c_str());
            assigned_ = false;
        }
    }
    return assigned_;
}

bool FunctionTableImpl::containsFunction(const std::string& name) const {
    Tracer trace("FunctionTableImpl::containsFunction", true);
    return find(name) != nullptr;
}

void* FunctionTableImpl::retrieveFunction(const std::string& name) const {
    Tracer trace("FunctionTableImpl::retrieveFunction", true);
    const DynamicMethod* entry = find(name);
    void* const address = entry != nullptr ? entry->address_ : nullptr;
    trace.printf("Function %s = 0x%" PRIxPTR, name.c_str(), reinterpret_cast<std::uintptr_t>(address));
    return address;
}

void FunctionTableImpl::clear() const {
    Tracer trace("FunctionTableImpl::clear", true);
    assigned_ = false;
}

const DynamicMethod* FunctionTableImpl::find(const std::string& name) const {
    const auto entry = std::find_if(methods_.begin(), methods_.end(),
                                    [&name](const DynamicMethod& method) { return method.name_ == name; });
    return entry != methods_.end() ? &*entry : nullptr;
}

} // namespace ZEL::RT
