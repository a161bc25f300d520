#ifndef ZEL_COMMON_LIBRARY_LOADERLOCK_H
#define ZEL_COMMON_LIBRARY_LOADERLOCK_H

namespace ZEL {

// Held around everything that loads or unloads a library, and taken ahead of the manager's mutex. While initialisers
// and finalisers run, the system's loader holds a lock of its own. They may ask the manager, whose mutex another thread
// may hold while it waits for the loader: with this lock in front of both, only one thread at a time gets that far.
// Recursive; there from before the first initialiser until after the last exit handler.
class LoaderLock {
public:
    LoaderLock();
    ~LoaderLock();
    LoaderLock(const LoaderLock&) = delete;
    LoaderLock& operator=(const LoaderLock&) = delete;

    // For the child of a fork, whose only thread cannot unlock what any thread of its parent locked.
    static void renew();
};

} // namespace ZEL

#endif
