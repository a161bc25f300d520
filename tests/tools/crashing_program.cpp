// Fills the trace, prints what is in it and dies in a trace callback, which has the trace's locks. With an argument,
// that word of the trace writer is overwritten before.
#include "zel/vor.h"
#include "zel/zel.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

using namespace ZEL;

struct Failure : EXCEPTIONS::IOException {
    using IOException::IOException;
};

VOR_ByteArray secret{0, nullptr};
void* held = nullptr;
RT::DllManager* manager = &RT::DllManager::theOne;
RT::Library library("zel-rt", "");
RT::SmartPointer<RT::PropertiesImpl> store(new RT::PropertiesImpl);
RT::SmartPointer<RT::PropertiesImpl> sharer(store);
RT::TraceRecord timeless(Tracer(nullptr, false), 0, "no time and no place");
Failure failure("gone", "ZEL", -1085, "code", "Could not \"open\" it", "common/place", 58, "open");

static void add(const RT::TraceRecord& record) {
    RT::TraceWriter::write(record);
    std::cout << record.toString() << std::endl;
}

static void die(const char* damage) {
    if (damage != nullptr)
        reinterpret_cast<std::size_t*>(RT::TraceWriter::getInstance())[std::atoi(damage)] = 4096;
    TRACE::setTraceCallback([](const char*, int) { return std::raise(SIGSEGV); });
}

int main(int, char** arguments) {
    vor_initializeByteArrayFromString(&secret, "hunter2");
    vor_createMutex(&held);
    vor_lockMutex(held);
    vor_lockMutex(held);
    for (std::size_t i = 0; i < 3; ++i)
        store->assignProperty("name " + std::to_string(i), std::string(i, 'v'));
    RT::DllManager::loadLibrary(library);
    const char* const names[] = {"name", nullptr};
    for (int i = 0; i < 255; ++i)
        add({names[i % 2], names[i / 2 % 2], i % 5 - 1, std::string(static_cast<std::size_t>(i % 40), 'x') + "\u00e4"});
    add(timeless);
    std::thread([arguments] { die(arguments[1]); }).join();
    return 0;
}
