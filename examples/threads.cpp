// Two threads take numbers out of a queue and add them up.
#include <iostream>
#include <queue>
#include <stdexcept>

#include <zel/zel.h>

namespace {

struct Work {
    ZEL::Semaphore numbersLeft{0, 0}; // counts what is in the queue
    ZEL::Mutex mutex;                 // of the rest
    std::queue<int> numbers;
    long sum = 0;
};

void* addUp(void* argument) {
    Work& work = *static_cast<Work*>(argument);
    while (work.numbersLeft.acquire(0)) { // waits without holding anything, so it may be cancelled here
        const ZEL::MutexGrabber grabber(work.mutex);
        const int number = work.numbers.front();
        work.numbers.pop();
        if (number == 0) // no more work
            break;
        work.sum += number;
    }
    return nullptr;
}

void put(Work& work, int number) {
    {
        const ZEL::MutexGrabber grabber(work.mutex);
        work.numbers.push(number);
    }
    work.numbersLeft.release(1);
}

void run() {
    Work work;
    ZEL::RT::Thread threads[] = {{addUp, &work}, {addUp, &work}};
    for (ZEL::RT::Thread& thread : threads)
        if (thread.start() != 0) // a code, never an exception
            throw std::runtime_error("no thread");
    for (int number = 1; number <= 100; ++number)
        put(work, number);
    put(work, 0);
    put(work, 0);
    for (ZEL::RT::Thread& thread : threads)
        thread.wait(0);
    std::cout << "the sum is " << work.sum << "\n" << (threads[0].isActive() ? "active" : "gone") << "\n";
}

} // namespace

int main() {
    try {
        run();
        return 0;
    } catch (const std::exception& e) {
        std::cerr << e.what() << "\n";
        return 1;
    }
}
