#ifndef ZEL_COMMON_EXCEPTIONS_EXCEPTIONDATAIMPL_H
#define ZEL_COMMON_EXCEPTIONS_EXCEPTIONDATAIMPL_H

#include "zel/exceptions/IExceptionData.h"
#include "zel/utils/PropertiesImpl.h"

#include <string>

namespace ZEL::EXCEPTIONS {

// Keeps an exception's properties in a properties store. Private to this room: the public headers of exceptions
// stay below those of the store, and callers have createExceptionData().
class ExceptionDataImpl : public IExceptionData {
public:
    ~ExceptionDataImpl() override;

    // Empty whatever the store holds: the properties may be nobody else's business.
    std::string toString() const override;

    std::string retrieveProperty(const std::string& name) const override;
    void assignProperty(const std::string& name, const std::string& value) override;

private:
    RT::PropertiesImpl properties_;
};

} // namespace ZEL::EXCEPTIONS

#endif
