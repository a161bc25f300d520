/// @file
/// Interface of a store of named text values.
#ifndef ZEL_UTILS_IPROPERTIES_H
#define ZEL_UTILS_IPROPERTIES_H

#include "zel/exceptions/Marshallable.h"
#include "zel/exceptions/Object.h"
#include "zel/export.h"
#include "zel/memory/SmartPointer.h"
#include "zel/utils/Vector.h"

#include <string>

namespace ZEL::I {

/// Unique names, each with a text value, in ascending byte order of the names. A name is any text but the empty one, a
/// value is any text, and neither is altered on the way. Marshals to XML and unmarshals from XML and plain text.
/// Not locked: threads that share a store keep its writers apart from everybody else. Virtual functions in slot order.
class ZEL_API IProperties : public virtual Object, public virtual Marshallable {
public:
    std::string toString() const override = 0;

    ~IProperties() override;

    /// @return all names, in order.
    virtual Vector<std::string> retrievePropertyNames() const = 0;

    /// @return the value of \c name, or \c defaultValue if there is none.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name.
    virtual std::string retrieveProperty(const std::string& name, const std::string& defaultValue) const = 0;

    /// Sets \c name to \c value, in place of any value before.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name; the store stays as it is.
    virtual void assignProperty(const std::string& name, const std::string& value) = 0;

    /// Removes \c name; one that is absent or empty is no error.
    virtual void removeProperty(const std::string& name) = 0;
};

} // namespace ZEL::I

namespace ZEL {

/// @return a new, empty store with a count of 1.
ZEL_API RT::SmartPointer<I::IProperties> createProperties();

} // namespace ZEL

#endif
