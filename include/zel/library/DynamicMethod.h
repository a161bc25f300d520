/// @file
/// One function of a library, by name.
#ifndef ZEL_LIBRARY_DYNAMICMETHOD_H
#define ZEL_LIBRARY_DYNAMICMETHOD_H

#include "zel/exceptions/Object.h"
#include "zel/export.h"

#include <string>

namespace ZEL::RT {

/// Entry of a FunctionTableImpl: the name that callers ask for, the symbol behind it and, once a table has bound it,
/// its address. A plain value; copies carry the address. Callers depend on the order of the virtual functions.
class ZEL_API DynamicMethod : public Object {
public:
    /// "function", the name of the element that toString() writes.
    static const char TAG[9];

    /// Without names and address.
    DynamicMethod();

    /// @param name what callers ask the table for.
    /// @param method the symbol that the library exports.
    DynamicMethod(const std::string& name, const std::string& method);

    /// The address goes along.
    /// @{
    DynamicMethod(const DynamicMethod& other);
    DynamicMethod& operator=(const DynamicMethod& other);
    /// @}

    /// An element with the attributes name and method; without the address.
    std::string toString() const override;

    ~DynamicMethod() override;

    /// Whether there is an address.
    virtual bool assigned() const;

    /// Whether either name is empty.
    virtual bool empty() const;

private:
    friend class FunctionTableImpl;
    struct Layout;

    std::string name_;
    std::string method_;
    void* address_;
};

} // namespace ZEL::RT

#endif
