#include "zel/library/DynamicMethod.h"

#include "zel/utils/XmlUtils.h"

#include <cstddef>

namespace ZEL::RT {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct DynamicMethod::Layout {
    static_assert(offsetof(DynamicMethod, name_) == sizeof(void*));
    static_assert(offsetof(DynamicMethod, method_) == sizeof(void*) + sizeof(std::string));
    static_assert(offsetof(DynamicMethod, address_) == sizeof(void*) + 2 * sizeof(std::string));
};
#pragma GCC diagnostic pop

const char DynamicMethod::TAG[9] = "function";

DynamicMethod::DynamicMethod() : address_(nullptr) {}

DynamicMethod::DynamicMethod(const std::string& name, const std::string& method)
    : name_(name), method_(method), address_(nullptr) {}

DynamicMethod::DynamicMethod(const DynamicMethod& other) = default;

DynamicMethod& DynamicMethod::operator=(const DynamicMethod& other) = default;

std::string DynamicMethod::toString() const {
    return XmlUtils::ToElement(TAG, "",
                               XmlUtils::ToAttribute("name", name_) + XmlUtils::ToAttribute("method", method_));
}

DynamicMethod::~DynamicMethod() = default;

bool DynamicMethod::assigned() const { return address_ != nullptr; }

bool DynamicMethod::empty() const { return name_.empty() || method_.empty(); }

} // namespace ZEL::RT
