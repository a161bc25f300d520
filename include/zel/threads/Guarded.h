/// @file
/// Which lock a field or a function needs, said so that Clang can check it (-Wthread-safety). Nothing to other
/// compilers, and nothing in the built library.
#ifndef ZEL_THREADS_GUARDED_H
#define ZEL_THREADS_GUARDED_H

/// What the others are made of.
#if defined(__clang__)
#define ZEL_THREAD_SAFETY(attribute) __attribute__((attribute))
#else
#define ZEL_THREAD_SAFETY(attribute)
#endif

#define ZEL_CAPABILITY ZEL_THREAD_SAFETY(capability("mutex"))                      ///< A class that is a lock.
#define ZEL_SCOPED_CAPABILITY ZEL_THREAD_SAFETY(scoped_lockable)                   ///< A class that holds a lock.
#define ZEL_GUARDED_BY(mutex) ZEL_THREAD_SAFETY(guarded_by(mutex))                 ///< A field touched under a lock.
#define ZEL_REQUIRES(...) ZEL_THREAD_SAFETY(requires_capability(__VA_ARGS__))      ///< Called under these locks.
#define ZEL_ACQUIRE(...) ZEL_THREAD_SAFETY(acquire_capability(__VA_ARGS__))        ///< Takes a lock, the object's own.
#define ZEL_RELEASE(...) ZEL_THREAD_SAFETY(release_capability(__VA_ARGS__))        ///< Gives it back.
#define ZEL_RETURN_CAPABILITY(mutex) ZEL_THREAD_SAFETY(lock_returned(mutex))       ///< Returns a lock by reference.
#define ZEL_NO_THREAD_SAFETY_ANALYSIS ZEL_THREAD_SAFETY(no_thread_safety_analysis) ///< Beyond what Clang can follow.

#endif
