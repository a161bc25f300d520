/// @file
/// Whether the environment may be trusted.
#ifndef ZEL_COMMON_UTILS_SECUREPROCESS_H
#define ZEL_COMMON_UTILS_SECUREPROCESS_H

namespace ZEL {

/// True in a process that runs with more rights than its caller has (set-user-id, set-group-id, file capabilities):
/// its environment comes from the caller and must not name files to write or rules to bend.
bool isSecureProcess();

} // namespace ZEL

#endif
