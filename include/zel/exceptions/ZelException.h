/// @file
/// Root of the exception hierarchy.
#ifndef ZEL_EXCEPTIONS_ZELEXCEPTION_H
#define ZEL_EXCEPTIONS_ZELEXCEPTION_H

#include "zel/exceptions/IExceptionData.h"
#include "zel/export.h"
#include "zel/memory/SmartPointer.h"

#include <exception>
#include <string>

namespace ZEL {

namespace RT {
class ILocalizable;
}

namespace EXCEPTIONS {

/// Root of all exceptions of the suite: a class name and code, a message out of a catalogue, the place and time of
/// the failure, and named properties.
///
/// Every construction and every copy writes the exception to the trace, and so does setSourceLocation(). Copies and
/// clones share one property store: what one assigns, all retrieve. Making, copying and throwing leave errno alone.
/// An object is for one thread at a time; copies may go to other threads. Virtual functions in slot order.
class ZEL_API ZelException : public std::exception {
public:
    /// @param name the class's name; null counts as "".
    /// @param code the class's code, negative.
    /// @param text the message, borrowed: it must outlive this exception and all its copies. Null for no message:
    ///     catalogue name, entry name and text are then "", and the entry code 0.
    /// @param file, function static text, borrowed; null when unknown.
    /// @param line null or negative when unknown.
    ZelException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                 const char* function);

    /// The same with the parts of the message given one by one. None may be null; one that is counts as "".
    ZelException(const char* name, int code, const char* catalogName, int entryCode, const char* entryName,
                 const char* entryText, const char* file, int line, const char* function);

    /// Borrows the same text, keeps the time, shares the properties.
    ZelException(const ZelException& other);

    ~ZelException() override;

    /// @return the characters of getErrorText(), which live as long as the exception.
    const char* what() const noexcept override;

    /// @return a new copy of the object's own class, which the caller deletes.
    virtual ZelException* clone() const;

    /// @return whether \p code is this class's or that of a class that it counts as. Not everywhere the answer that
    /// the class tree suggests; clients rely on the answers as they are.
    virtual bool instanceOf(int code) const;

    /// @return whether \p name is what this class answers to or that of a class that it counts as. Not everywhere
    /// the class's own name; clients rely on the answers as they are.
    virtual bool instanceOf(const std::string& name) const;

    /// @return the class's code: negative, -1 for the root.
    virtual int getExceptionCode() const;

    /// @return the name that the class stores, which is not everywhere its own.
    virtual std::string getExceptionName() const;

    /// @return the message's code in its catalogue, such as -1001.
    virtual int getEntryCode() const;

    /// @return the message's symbolic name, such as "code".
    virtual const std::string& getEntryName() const;

    /// @return the message's catalogue, such as "ZEL".
    virtual const std::string& getCatalogName() const;

    /// @return the text of the ILocalizable the exception was built from; without one the entry's NAME. For the
    /// message use getErrorText() or what().
    virtual const std::string& getEntryText() const;

    /// @return when the exception was built, in seconds since the epoch.
    virtual long getErrorTime() const;

    /// @return the message.
    virtual const std::string& getErrorText() const;

    /// @return null until set.
    virtual const char* getSourceFile() const;

    /// @return -1 until set.
    virtual int getSourceLine() const;

    /// @return null until set.
    virtual const char* getSourceFunction() const;

    /// @return the place as text: file, "::", function, "()", " @" and the line, each part only when it is known;
    /// "Unknown Location" when neither file nor function is.
    virtual std::string getExecutionPoint() const;

    /// @return the value of the property, or "" when there is none.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name.
    virtual std::string retrieveProperty(const std::string& name) const;

    /// Sets a property for this exception and all its copies.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name.
    virtual void assignProperty(const std::string& name, const std::string& value);

    /// Sets the place of the failure and traces the exception. Never throws: a failure while tracing is dropped.
    /// A LockException and a BadAllocException are not traced again here, since tracing itself may raise them.
    /// @param file, function static text, borrowed; null leaves the earlier value.
    /// @param line a value that is not positive leaves the earlier one.
    void setSourceLocation(const char* file, int line, const char* function) const;

private:
    struct Layout;

    ZEL_LOCAL void trace() const;

    const RT::ILocalizable* text_;
    mutable const char* sourceFunction_ = nullptr;
    mutable const char* sourceFile_ = nullptr;
    mutable int sourceLine_ = -1;
    std::string exceptionName_;
    int exceptionCode_;
    std::string catalogName_;
    std::string entryName_;
    int entryCode_ = 0;
    std::string entryText_;
    long errorTime_;
    RT::SmartPointer<IExceptionData> properties_;
};

} // namespace EXCEPTIONS
} // namespace ZEL

#endif
