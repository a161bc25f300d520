#include "zel/library/DllManager.h"

#include "zel/threads/MutexGrabber.h"
#include "zel/tracer/Tracer.h"

#include "library/LoaderLock.h"

#include <atomic>
#include <cstddef>
#include <new>

#include <pthread.h>

namespace ZEL::RT {

namespace {

// Whether theOne exists. Under the loader lock, so that nobody is in the register when it goes.
bool open = false;

// Whether a thread is adding to the register: the child of a fork cannot use it then.
std::atomic<bool> changing{false};

class Changing {
public:
    Changing() { changing = true; }
    ~Changing() { changing = false; }
    Changing(const Changing&) = delete;
    Changing& operator=(const Changing&) = delete;
};

} // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct DllManager::Layout {
    static_assert(offsetof(DllManager, libraries_) == 0);
    static_assert(offsetof(DllManager, mutex_) == sizeof(Libraries));
};
#pragma GCC diagnostic pop

// Whatever other threads held at the fork, and however long they would have held it, the child goes on.
struct DllManager::Fork {
    static const int handled;

    static void child() {
        LoaderLock::renew();
        if (!open)
            return;
        new (&theOne.mutex_) Mutex;
        if (changing) { // not even fit to be destroyed
            new (&theOne.libraries_) Libraries;
            changing = false;
        }
    }
};

const int DllManager::Fork::handled = ::pthread_atfork(nullptr, nullptr, child);

DllManager DllManager::theOne;

DllManager::DllManager() {
    const LoaderLock loader;
    open = true;
}

// The libraries go one by one behind the closed register: their finalisers may still ask for others.
DllManager::~DllManager() {
    Libraries released;
    const LoaderLock loader;
    open = false;
    released.swap(libraries_);
}

SmartPointer<const DynamicLibraryImpl> DllManager::loadLibrary(const std::string& name, const std::string& path) {
    return theOne.load(Library(name, path));
}

SmartPointer<const DynamicLibraryImpl> DllManager::loadLibrary(const Library& library) { return theOne.load(library); }

// The initialisers of the library that is loaded here may come back for it. Theirs is then the object that everybody
// gets, and the one made here goes again.
SmartPointer<const DynamicLibraryImpl> DllManager::load(const Library& library) {
    Tracer trace("DllManager::load", true);
    const LoaderLock loader;
    if (!open)
        return SmartPointer<const DynamicLibraryImpl>(new DynamicLibraryImpl(library));
    const MutexGrabber grabber(mutex_);
    const auto known = libraries_.find(library);
    if (known != libraries_.end())
        return known->second;
    const SmartPointer<const DynamicLibraryImpl> loaded(new DynamicLibraryImpl(library));
    const Changing scope;
    return libraries_.emplace(library, loaded).first->second;
}

void DllManager::unloadLibrary(const SmartPointer<const DynamicLibraryImpl>& library) { theOne.unload(library); }

void DllManager::unloadLibrary(const std::string& name) { theOne.unload(name); }

void DllManager::unload(const SmartPointer<const DynamicLibraryImpl>&) { Tracer trace("DllManager::unload", true); }

void DllManager::unload(const std::string&) { Tracer trace("DllManager::unload", true); }

} // namespace ZEL::RT
