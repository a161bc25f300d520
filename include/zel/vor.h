/** @file
 * Every flat function and its records, for C99 and C++17.
 *
 * Success is 0. A failure is a small number of the family or, for mutexes and threads, the system's error code. A null
 * argument is answered like this, and nothing else is done:
 * - byte arrays: 1; a null source of bytes stands for zeros
 * - mutexes: -41
 * - threads: -1 for a null routine, a null place for the handle and the handle 0, of which vor_testThread answers 0
 * - files: 1
 * - pass phrases: -1
 * - libraries: null, 0 for a search, -1 for a handle to unload
 * - wrappers of the C runtime: null, or what their header says
 * - functions without a result: nothing
 *
 * What a function hands out belongs to the caller, who gives it back once, with the function that is made for it:
 * - a byte array that was filled: vor_clearByteArray
 * - vor_createMutex: vor_deleteMutex
 * - vor_startThread: vor_waitThread
 * - vor_safeOpenFile: vor_safeCloseFile
 * - vor_safeReadContents and vor_safeToLower: vor_safeFreeBuffer
 * - vor_formatLibraryName and vor_findLibrary: free
 * - vor_loadLibrary and vor_loadLibraryFromPath: vor_unloadLibrary
 * - vor_safeGetenv: nothing, as the text is the environment's own
 *
 * Three calls may block: vor_lockMutex while another thread holds the mutex, vor_waitThread until the thread ends, and
 * vor_safeOpenFile half a second for each retry. Everything else takes as long as the disk does, and loading or
 * unloading a library as long as its initialisers and finalisers do.
 *
 * Nothing throws. But a thread that is cancelled while it waits in vor_waitThread, or between the retries of
 * vor_safeOpenFile, is unwound through them. Where threads are cancelled, these two are never called from a C++
 * function that is noexcept, nor from a destructor.
 *
 * Any thread may call any function. A byte array, like a file handle, is for one thread at a time.
 */
#ifndef ZEL_VOR_H
#define ZEL_VOR_H

#include "zel/api/vor_bytearray.h"
#include "zel/api/vor_mutex.h"
#include "zel/api/vor_thread.h"
#include "zel/api/zel_info.h"
#include "zel/api/zel_password.h"
#include "zel/library/vor_library.h"
#include "zel/persistence/vor_file.h"
#include "zel/utils/vor_runtime.h"

#endif
