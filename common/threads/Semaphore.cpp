#include "zel/threads/Semaphore.h"

#include <cerrno>

namespace ZEL {

Semaphore::Semaphore(unsigned int, unsigned int) { ::sem_init(&semaphore_, 0, 0); }

Semaphore::~Semaphore() { ::sem_destroy(&semaphore_); }

bool Semaphore::acquire(unsigned int) {
    int result;
    do
        result = ::sem_wait(&semaphore_);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

int Semaphore::release(unsigned int count) {
    int result;
    do
        result = ::sem_post(&semaphore_);
    while (count-- > 1);
    return result;
}

} // namespace ZEL
