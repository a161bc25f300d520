/** @file
 * Flat functions: recursive mutexes.
 *
 * A mutex is a block of sizeof(pthread_mutex_t) bytes (24 on ia32). Results are 0 for success, -41 for a null
 * argument, else the system's error code. Nothing throws; every function may be called from any thread.
 */
#ifndef ZEL_API_VOR_MUTEX_H
#define ZEL_API_VOR_MUTEX_H

#include "zel/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Makes the caller's block a recursive mutex: its owner may lock again and must unlock as often. */
ZEL_API int vor_initializeMutex(void* mutex);

/**
 * Allocates and initialises a mutex; vor_deleteMutex releases it.
 * A pointer that is already set is left as it is, and the result is 0. When memory runs out the result is -41 and
 * *mutex stays null. When the system refuses the mutex, *mutex is the block and the result its error code.
 */
ZEL_API int vor_createMutex(void** mutex);

/** Blocks until the calling thread owns the mutex. Not a cancellation point. */
ZEL_API int vor_lockMutex(void* mutex);

/** Undoes one lock of the calling thread; EPERM when it does not own the mutex. */
ZEL_API int vor_unlockMutex(void* mutex);

/** Gives the mutex back to the system but not its memory; EBUSY while it is locked. */
ZEL_API int vor_destroyMutex(void* mutex);

/**
 * Destroys and frees a mutex that vor_createMutex made and sets *mutex to null.
 * A mutex that cannot be destroyed, because it is locked, stays allocated and *mutex keeps its value.
 */
ZEL_API void vor_deleteMutex(void** mutex);

#ifdef __cplusplus
}
#endif

#endif
