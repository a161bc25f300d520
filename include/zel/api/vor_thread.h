/** @file
 * Flat functions: threads.
 *
 * Handles are the system's; 0 stands for no thread. A handle that vor_waitThread joined belongs to a thread that is
 * gone: it is never handed to the system again, until the system gives the same value to a new thread that
 * vor_startThread started, or that calls vor_getThreadId. Nothing throws; every function may be called from any
 * thread.
 */
#ifndef ZEL_API_VOR_THREAD_H
#define ZEL_API_VOR_THREAD_H

#include "zel/export.h"

#include <pthread.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The calling thread's handle as a number. */
ZEL_API unsigned long vor_getThreadId(void);

/**
 * Starts routine(arg) in a new joinable thread and stores its handle in *thread.
 * Result: 0; -1 for a null routine or a null thread pointer; else the system's error code, *thread unchanged.
 */
ZEL_API int vor_startThread(void* (*routine)(void*), void* arg, pthread_t* thread);

/**
 * Blocks until the thread ends and discards its result. A cancellation point, so callers may be unwound through it.
 * The timeout is accepted and ignored.
 * Result: 0; -1 for the handle 0; ESRCH for a thread that was already joined; else the system's error code.
 */
ZEL_API int vor_waitThread(pthread_t thread, long timeout);

/** 1 while the thread exists, that is, until it is joined; 0 for a thread that is gone and for the handle 0. */
ZEL_API int vor_testThread(pthread_t thread);

/**
 * Requests the thread's cancellation.
 * Result: 0; -1 for the handle 0; ESRCH for a thread that is gone.
 */
ZEL_API int vor_cancelThread(pthread_t thread);

#ifdef __cplusplus
}
#endif

#endif
