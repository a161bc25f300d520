/** @file
 * Every flat function and its records, for C99 and C++17.
 *
 * Conventions of all families:
 * - Success is 0. A failure is a small number of the family or, for mutexes and threads, the system's error code. A
 * null argument is answered with the family's own number and nothing else is done: mutexes     -41 threads     -1 (a
 * null routine or place for the handle; the handle 0, where 0 stands for no thread) files       1 runtime     a null
 * pointer, 1 from vor_safeFreeBuffer, -1 from those that return a count or write text Functions without a result do
 * nothing.
 * - What a function hands out belongs to the caller, who gives it back once, with the function made for it:
 *       vor_createMutex                      vor_deleteMutex
 *       vor_startThread                      vor_waitThread
 *       vor_safeOpenFile                     vor_safeCloseFile
 *       vor_safeReadContents, vor_safeToLower    vor_safeFreeBuffer
 *       vor_safeGetenv                       nothing: the text is the environment's own
 * - These may block: vor_lockMutex, for as long as another thread holds the mutex; vor_waitThread, until the thread
 * ends; vor_safeOpenFile, half a second for each retry. All else takes as long as the disk does.
 * - Nothing throws. Yet a thread may be cancelled while it waits in vor_waitThread or between the retries of
 *   vor_safeOpenFile, and is then unwound through them: do not call these two from a C++ function declared noexcept,
 * nor from a destructor, in a thread that may be cancelled.
 * - Any thread may call any function; a file handle, and what localtime and gmtime return, is for one thread at a time.
 */
#ifndef ZEL_VOR_H
#define ZEL_VOR_H

#include "zel/api/vor_mutex.h"
#include "zel/api/vor_thread.h"
#include "zel/persistence/vor_file.h"
#include "zel/utils/vor_runtime.h"

#endif
