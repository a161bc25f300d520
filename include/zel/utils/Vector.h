/// @file
/// The library's vector.
#ifndef ZEL_UTILS_VECTOR_H
#define ZEL_UTILS_VECTOR_H

#include <vector>

namespace ZEL {

/// Everything that the standard vector offers.
template <class T> using Vector = std::vector<T>;

} // namespace ZEL

#endif
