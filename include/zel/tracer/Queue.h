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
    /// Empty.
    Queue() : oldest_(items_.begin()) {}

    /// Copies the elements in their order.
    Queue(const Queue& other) : items_(other.items_), oldest_(items_.begin() + other.turned()) {}

    /// Copies the elements in their order; when there is no memory for them, this queue is what it was.
    Queue& operator=(const Queue& other) {
        const auto turned = other.turned();
        Container copy(other.items_);
        items_.swap(copy);
        oldest_ = items_.begin() + turned;
        return *this;
    }

    /// Appends behind the newest element.
    /// @{
    void push(const T& value) {
        const Straightened scope(*this);
        items_.push_back(value);
    }

    void push(T&& value) {
        const Straightened scope(*this);
        items_.push_back(std::move(value));
    }
    /// @}

    /// Removes the oldest element; there must be one.
    void pop() {
        const Straightened scope(*this);
        items_.pop_front();
    }

    /// The oldest element; there must be one.
    /// @{
    T& front() { return *oldest_; }
    const T& front() const { return *oldest_; }
    /// @}

    /// Makes the oldest element the newest, where it stands: a full queue of bounded length refills front() and
    /// turns, and needs no memory for it. Linear in the length is only the first push or pop after turning.
    void turn() {
        if (++oldest_ == items_.end())
            oldest_ = items_.begin();
    }

    /// How many elements there are, and whether there are none.
    /// @{
    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }
    /// @}

private:
    // Has the container in the order of the queue for the length of a scope, and finds the oldest element anew at its
    // end, as what happens there moves it, also when it fails.
    class Straightened {
    public:
        explicit Straightened(Queue& queue) : queue_(queue) {
            std::rotate(queue.items_.begin(), queue.oldest_, queue.items_.end());
        }
        ~Straightened() { queue_.oldest_ = queue_.items_.begin(); }
        Straightened(const Straightened&) = delete;
        Straightened& operator=(const Straightened&) = delete;

    private:
        Queue& queue_;
    };

    // How far the oldest element is from the beginning of the container.
    typename Container::difference_type turned() const { return oldest_ - items_.begin(); }

    Container items_;
    typename Container::iterator oldest_;
};

} // namespace ZEL

#endif
