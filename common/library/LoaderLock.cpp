#include "library/LoaderLock.h"

#include <pthread.h>

namespace ZEL {

namespace {

constexpr pthread_mutex_t unlocked = PTHREAD_RECURSIVE_MUTEX_INITIALIZER_NP;
pthread_mutex_t mutex = unlocked;

} // namespace

LoaderLock::LoaderLock() { ::pthread_mutex_lock(&mutex); }

LoaderLock::~LoaderLock() { ::pthread_mutex_unlock(&mutex); }

void LoaderLock::renew() { mutex = unlocked; }

} // namespace ZEL
