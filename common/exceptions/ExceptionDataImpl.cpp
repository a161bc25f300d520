#include "exceptions/ExceptionDataImpl.h"

namespace ZEL::EXCEPTIONS {

ExceptionDataImpl::~ExceptionDataImpl() = default;

std::string ExceptionDataImpl::toString() const { return std::string(); }

std::string ExceptionDataImpl::retrieveProperty(const std::string& name) const {
    return properties_.retrieveProperty(name, std::string());
}

void ExceptionDataImpl::assignProperty(const std::string& name, const std::string& value) {
    properties_.assignProperty(name, value);
}

} // namespace ZEL::EXCEPTIONS
