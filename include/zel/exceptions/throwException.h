/// @file
/// The one way in which the library raises an exception.
#ifndef ZEL_EXCEPTIONS_THROWEXCEPTION_H
#define ZEL_EXCEPTIONS_THROWEXCEPTION_H

namespace ZEL::EXCEPTIONS {

/// Sets the source location on \p e, which traces it unless it is a LockException or a BadAllocException, and throws
/// a copy of static type \p T. The copy shares the properties of \p e.
/// @param e left as it is but for its location.
/// @param file, function static text, borrowed by the exception; null leaves what the exception holds.
/// @param line positive; anything else leaves what the exception holds.
/// @return never. Compiled into its caller, which saves the unwinding a frame.
template <class T>
[[noreturn, gnu::always_inline]] inline const T& throwException(const T& e, const char* file, int line,
                                                                const char* function) {
    e.setSourceLocation(file, line, function);
    throw T(e);
}

} // namespace ZEL::EXCEPTIONS

#endif
