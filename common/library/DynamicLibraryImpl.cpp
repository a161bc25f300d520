#include "zel/library/DynamicLibraryImpl.h"

#include "zel/api/zel_info.h"
#include "zel/exceptions/IOException.h"
#include "zel/library/vor_library.h"
#include "zel/tracer/Tracer.h"

#include "exceptions/Failure.h"
#include "threads/CancellationShield.h"
#include "tracer/TraceScope.h"

#include <cinttypes>
#include <cstddef>

#include <dlfcn.h>
#include <link.h>

namespace ZEL::RT {

namespace {

using EXCEPTIONS::Failure;

constexpr char source[] = "common/library/DynamicLibrary";
constexpr Failure loadFailed{-1071, "Failed to load shared library", 18, "DynamicLibraryImpl"};

std::uintptr_t number(const void* address) { return reinterpret_cast<std::uintptr_t>(address); }

const char* orNotAvailable(const char* text) { return text != nullptr ? text : "N/A"; }

// Whether the symbol at the address is the library's own: looking a symbol up also finds those of the libraries that it
// depends on, and this one, which has an information function, is usually among them.
bool exportsItself(void* handle, const void* address) {
    const link_map* library = nullptr;
    Dl_info symbol;
    void* owner = nullptr;
    return ::dlinfo(handle, RTLD_DI_LINKMAP, &library) == 0 &&
           ::dladdr1(address, &symbol, &owner, RTLD_DL_LINKMAP) != 0 && owner == library;
}

// Closes a handle that an object still under construction holds when its constructor fails.
class Closer {
public:
    explicit Closer(void* const& handle) : handle_(&handle) {}
    ~Closer() {
        if (handle_ != nullptr && *handle_ != nullptr)
            vor_unloadLibrary(*handle_);
    }
    Closer(const Closer&) = delete;
    Closer& operator=(const Closer&) = delete;

    void release() { handle_ = nullptr; }

private:
    void* const* handle_;
};

} // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct DynamicLibraryImpl::Layout {
    static_assert(offsetof(DynamicLibraryImpl, library_) == 0);
    static_assert(offsetof(DynamicLibraryImpl, handle_) == sizeof(Library));
};
#pragma GCC diagnostic pop

DynamicLibraryImpl::DynamicLibraryImpl(const Library& library) : library_(library), handle_(nullptr) {
    Closer closer(handle_);
    if (!load())
        EXCEPTIONS::raise<EXCEPTIONS::IOException>(source, loadFailed, library_.file_);
    closer.release();
}

// Whatever happens to the trace, the library goes; and nothing may leave a destructor, not even the unwinding of a
// cancelled thread.
DynamicLibraryImpl::~DynamicLibraryImpl() {
    const CancellationShield shield;
    try {
        Tracer trace("DynamicLibraryImpl::~DynamicLibraryImpl", true);
        unload();
    } catch (...) {
        if (handle_ != nullptr)
            vor_unloadLibrary(handle_);
    }
}

bool DynamicLibraryImpl::load() {
    Tracer trace("DynamicLibraryImpl::load", true);
    if (handle_ != nullptr)
        return true;
    handle_ = library_.load();
    trace.printf("Library %s loaded into handle 0x%" PRIxPTR, library_.file_.c_str(), number(handle_));
    if (handle_ == nullptr)
        return false;
    void* const address = getSymbol("zel_getLibraryInfo");
    if (address != nullptr && exportsItself(handle_, address)) {
        zel_LibraryInfo info = {};
        reinterpret_cast<void (*)(zel_LibraryInfo*)>(address)(&info);
        trace.printf("Loaded library version %s.%s", orNotAvailable(info.version), orNotAvailable(info.buildNumber));
    }
    return true;
}

bool DynamicLibraryImpl::unload() {
    Tracer trace("DynamicLibraryImpl::unload", true);
    if (handle_ != nullptr) {
        trace.printf("Unloading library %s", library_.name_.c_str());
        vor_unloadLibrary(handle_);
        handle_ = nullptr;
    }
    return true;
}

void* DynamicLibraryImpl::getSymbol(const std::string& name) const {
    TraceScope trace("DynamicLibraryImpl::getSymbol");
    void* const address = vor_loadSymbol(handle_, name.c_str());
    trace.leave("Loaded method %s from library %s at 0x%" PRIxPTR, name.c_str(), library_.name_.c_str(),
                number(address));
    return address;
}

std::string DynamicLibraryImpl::getLibraryName() const { return library_.getName(); }

} // namespace ZEL::RT
