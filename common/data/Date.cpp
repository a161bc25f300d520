#include "zel/data/Date.h"

#include "zel/threads/MutexGrabber.h"
#include "zel/utils/vor_runtime.h"

#include "threads/ImmortalMutex.h"

#include <ctime>
#include <memory>

#include <pthread.h>

namespace ZEL {

namespace {

// The system converts local times in one buffer of its own.
ImmortalMutex dateMutex;

// Made when the library is loaded; on first use for those who come earlier.
[[maybe_unused]] const Mutex& madeAtLoad = dateMutex.get();

// No thread may be inside the conversion at a fork: besides ours the system's own lock would stay locked in the child.
// The lock is never held for long and nobody else's code runs under it, so a fork can wait for it.
[[maybe_unused]] const int forkHandled =
    ::pthread_atfork([]() ZEL_NO_THREAD_SAFETY_ANALYSIS { dateMutex.get().lock(0); },
                     []() ZEL_NO_THREAD_SAFETY_ANALYSIS { dateMutex.get().unlock(); }, [] { dateMutex.renew(); });

constexpr std::size_t textSize = 32;

} // namespace

Date::Date() : value_(std::time(nullptr)) {}

Date::~Date() = default;

void Date::setValue(long value) { value_ = value; }

long Date::getValue() { return value_; }

std::string Date::getShortString(long t) {
    const std::time_t time = t == -1 ? std::time(nullptr) : t;
    const std::unique_ptr<std::tm> local(new std::tm());
    char text[textSize];
    const MutexGrabber grabber(dateMutex.get());
    vor_safeLocaltime(local.get(), &time);
    const int year = (local->tm_year % 100 + 100) % 100; // years before 1900 count from below
    vor_safeSprintf(text, sizeof text, "%2d/%02d/%02d %2d:%02d:%02d %cM", local->tm_mon + 1, local->tm_mday, year,
                    local->tm_hour % 12, local->tm_min, local->tm_sec, local->tm_hour > 11 ? 'P' : 'A');
    return text;
}

std::string Date::getLongString(long t) { return getShortString(t); }

} // namespace ZEL
