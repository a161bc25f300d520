/// @file
/// Property store of an exception.
#ifndef ZEL_EXCEPTIONS_IEXCEPTIONDATA_H
#define ZEL_EXCEPTIONS_IEXCEPTIONDATA_H

#include "zel/exceptions/Object.h"
#include "zel/memory/SmartPointer.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// Named text values of an exception, shared by all its copies. Not locked. Virtual functions in slot order.
class ZEL_API IExceptionData : public virtual Object {
public:
    /// @return "", whatever the store holds.
    std::string toString() const override = 0;

    ~IExceptionData() override;

    /// @return the value of \p name, or "" when there is none.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name.
    virtual std::string retrieveProperty(const std::string& name) const = 0;

    /// Sets \p name to \p value.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name.
    virtual void assignProperty(const std::string& name, const std::string& value) = 0;
};

/// @return a new, empty store with a count of 1.
ZEL_API RT::SmartPointer<IExceptionData> createExceptionData();

} // namespace ZEL::EXCEPTIONS

#endif
