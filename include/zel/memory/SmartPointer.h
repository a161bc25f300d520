/// @file
/// Shared ownership of an object.
#ifndef ZEL_MEMORY_SMARTPOINTER_H
#define ZEL_MEMORY_SMARTPOINTER_H

#include "zel/export.h"
#include "zel/threads/AtomicInt.h"

#include <type_traits>
#include <utility>

namespace ZEL::RT {

/// Passes when \p p is not null.
/// @throws ZEL::EXCEPTIONS::ClassCastException entry -1005 "Cast conversion failed".
ZEL_API void checkCast(const void* p);

/// Passes when \p p is not null.
/// @throws ZEL::EXCEPTIONS::NullPointerException entry -1004 "A NULL pointer was encountered during the operation".
ZEL_API void checkDeref(const void* p);

/// Shared-ownership handle: the object's address and that of the counter that all its handles share.
///
/// Handles to one object may be copied and released by different threads at once; one handle, like the object itself,
/// is for one thread at a time. The last handle to go deletes the object through the type it was taken over with or
/// converted to, whose destructor is therefore virtual where the types differ.
template <class T> class SmartPointer {
public:
    /// Null: no object and no counter.
    SmartPointer() noexcept = default;

    /// Takes over \p object with a count of 1; a null object makes a null pointer. When no counter can be made, the
    /// object is deleted and the failure passes out.
    explicit SmartPointer(T* object) : object_(object) {
        if (object == nullptr)
            return;
        try {
            counter_ = AtomicInt::create(1);
        } catch (...) {
            delete object;
            throw;
        }
    }

    /// Shares the object.
    /// @throws ZEL::EXCEPTIONS::LockException entry -1012 if the count cannot be locked.
    SmartPointer(const SmartPointer& other) : object_(other.object_), counter_(other.counter_) { share(); }

    /// Takes over the other's share and leaves it null. No lock is taken.
    SmartPointer(SmartPointer&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)), counter_(std::exchange(other.counter_, nullptr)) {}

    /// Shares the object of a pointer to a type that converts to this one.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    SmartPointer(const SmartPointer<U>& other) : object_(other.object_), counter_(other.counter_) {
        share();
    }

    /// Takes over the share of such a pointer and leaves it null.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    SmartPointer(SmartPointer<U>&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)), counter_(std::exchange(other.counter_, nullptr)) {}

    ~SmartPointer() { release(); }

    /// Lets go of the object and shares the other's, or takes over its share. Assigning a pointer to itself is allowed.
    /// @{
    SmartPointer& operator=(const SmartPointer& other) {
        SmartPointer(other).swap(*this);
        return *this;
    }

    SmartPointer& operator=(SmartPointer&& other) noexcept {
        SmartPointer(std::move(other)).swap(*this);
        return *this;
    }
    /// @}

    /// @return a pointer to the same object as \p U, sharing the count.
    /// @throws ZEL::EXCEPTIONS::ClassCastException when the object is no \p U, or there is none.
    template <class U> SmartPointer<U> cast() const {
        SmartPointer<U> result;
        result.object_ = dynamic_cast<U*>(object_);
        checkCast(result.object_);
        result.counter_ = counter_;
        try {
            result.share();
        } catch (...) {
            result.counter_ = nullptr;
            throw;
        }
        return result;
    }

    /// @throws ZEL::EXCEPTIONS::NullPointerException on a null pointer.
    T* operator->() const {
        checkDeref(object_);
        return object_;
    }

    /// @throws ZEL::EXCEPTIONS::NullPointerException on a null pointer.
    T& operator*() const {
        checkDeref(object_);
        return *object_;
    }

    /// The object's address, or null; the object stays with its handles.
    T* get() const noexcept { return object_; }

    /// Whether there is an object.
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// Lets go of the object: this pointer is null afterwards.
    void reset() noexcept { SmartPointer().swap(*this); }

    /// Lets go of the object and takes over another.
    void reset(T* object) { SmartPointer(object).swap(*this); }

    /// Exchanges the shares; no count changes and no lock is taken.
    void swap(SmartPointer& other) noexcept {
        std::swap(object_, other.object_);
        std::swap(counter_, other.counter_);
    }

private:
    template <class U> friend class SmartPointer;

    void share() {
        if (counter_ != nullptr)
            counter_->increment();
    }

    void release() noexcept {
        if (counter_ == nullptr)
            return;
        if (decrement() != 0)
            return;
        AtomicInt::destroy(counter_);
        delete object_; // NOLINT(clang-analyzer-cplusplus.NewDelete): only the last one to count down comes here
    }

    // A counter that cannot be locked keeps its object alive: a leak is the lesser harm.
    long decrement() noexcept {
        try {
            return counter_->decrement();
        } catch (...) {
            return -1;
        }
    }

    T* object_ = nullptr;
    AtomicInt* counter_ = nullptr;
};

/// Whether both point at the same address, be it as different types.
/// @{
template <class T, class U> bool operator==(const SmartPointer<T>& a, const SmartPointer<U>& b) noexcept {
    return a.get() == b.get();
}

template <class T, class U> bool operator!=(const SmartPointer<T>& a, const SmartPointer<U>& b) noexcept {
    return a.get() != b.get();
}
/// @}

} // namespace ZEL::RT

#endif
