/// @file
/// First-in-first-out queue.
#ifndef ZEL_TRACER_QUEUE_H
#define ZEL_TRACER_QUEUE_H

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>

namespace ZEL {

/// First-in-first-out adaptor over a sequence container with random access. Not locked.
template <class T, class Container = std::deque<T>> class Queue {
public:
    /// Appends behind the newest element.
    void push(const T& value) {
        straighten();
        items_.push_back(value);
    }

    void push(T&& value) {
        straighten();
        items_.push_back(std::move(value));
    }

    /// Removes the oldest element; there must be one.
    void pop() {
        straighten();
        items_.pop_front();
    }

    /// The oldest element; there must be one.
    T& front() { return items_[oldest_]; }
    const T& front() const { return items_[oldest_]; }

    /// Makes the oldest element the newest, where it stands: a full queue of bounded length refills front() and
    /// turns, and needs no memory for it. Linear in the length is only the first push or pop after turning.
    void turn() { oldest_ = oldest_ + 1 < items_.size() ? oldest_ + 1 : 0; }

    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }

private:
    void straighten() {
        if (oldest_ == 0)
            return;
        using Distance = typename Container::difference_type;
        std::rotate(items_.begin(), items_.begin() + static_cast<Distance>(oldest_), items_.end());
        oldest_ = 0;
    }

    Container items_;
    std::size_t oldest_ = 0; // index of the oldest element in items_
};

} // namespace ZEL

#endif
