/// @file
/// Functions of a library, bound together.
#ifndef ZEL_LIBRARY_FUNCTIONTABLEIMPL_H
#define ZEL_LIBRARY_FUNCTIONTABLEIMPL_H

#include "zel/exceptions/Object.h"
#include "zel/export.h"
#include "zel/library/DynamicLibraryImpl.h"
#include "zel/library/DynamicMethod.h"
#include "zel/memory/SmartPointer.h"
#include "zel/utils/Vector.h"

#include <string>

namespace ZEL::RT {

/// A table of functions: described by addMethod(), bound to a library by load(), asked by retrieveFunction().
///
/// The table does not keep the library loaded: whoever calls its functions holds the pointer to the library. Not
/// locked: a bound table may be asked by several threads, while addMethod(), load() and clear() need it for themselves,
/// although the latter two are constant. Callers depend on the order of the virtual functions.
class ZEL_API FunctionTableImpl : public Object {
public:
    /// "functions"
    static const char TAG[10];

    /// @param tableName kept, and of no further effect.
    explicit FunctionTableImpl(const std::string& tableName);

    /// The text TAG, whatever is in the table.
    std::string toString() const override;

    ~FunctionTableImpl() override;

    /// Whether the last load() bound every entry and no clear() came after it.
    virtual bool assigned() const;

    /// Whether there are no entries.
    virtual bool empty() const;

    /// Appends a copy, of whatever kind: of several entries of one name the first is found.
    void addMethod(const DynamicMethod& method);

    /// Looks up every entry's symbol in the library, in order, until one is missing. The entries before that one then
    /// have their new addresses, it has none, and those behind it keep what they had. A null library changes no entry.
    /// @return whether the table is bound as a whole, which an empty one is to any library.
    bool load(const SmartPointer<const DynamicLibraryImpl>& library) const;

    /// Whether there is an entry of exactly this name, bound or not.
    bool containsFunction(const std::string& name) const;

    /// The address of the first entry of this name, to be cast to the function's type by the caller; null if it has no
    /// address or there is no such entry. Also answers when the table is not bound as a whole.
    void* retrieveFunction(const std::string& name) const;

    /// Marks the table as not bound; the entries keep their addresses.
    void clear() const;

private:
    struct Layout;

    ZEL_LOCAL const DynamicMethod* find(const std::string& name) const;

    mutable Vector<DynamicMethod> methods_;
    std::string tableName_;
    mutable bool assigned_;
};

} // namespace ZEL::RT

#endif
