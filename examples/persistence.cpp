// A list of members that several processes keep in one file.
#include <cstdio>
#include <iostream>
#include <string>

#include <zel/zel.h>

using ZEL::RT::getLocalFile;
using ZEL::RT::ILocalFile;

namespace {

// Reads, changes and writes under one exclusive lock: for all other processes that is one step.
void join(ILocalFile& file, const std::string& name) {
    const auto lock = file.writeLock(); // waits while another process has it; makes the file
    const auto members = ZEL::createProperties();
    members->unmarshal(file.retrieve(lock));
    members->assignProperty(name, "member");
    file.save(lock, *members);
} // the lock goes with its last pointer

void run() {
    const auto file = getLocalFile("members.xml");
    join(*file, "anna");
    join(*file, "bert");

    // An object remembers what it saw last. This one has seen nothing yet.
    const auto watcher = getLocalFile("members.xml");
    const auto seen = ZEL::createProperties();
    std::cout << std::boolalpha << "changed: " << watcher->update(*seen) << "\n" << seen->toString();
    std::cout << "changed: " << watcher->update(*seen) << "\n"; // looks at the disk once a second at most

    join(*file, "carl");
    {
        const auto lock = watcher->readLock(); // shared with other readers
        std::cout << "changed: " << watcher->update(lock, *seen) << "\n" << seen->toString(); // looks every time
    }
    std::remove("members.xml");
    try {
        getLocalFile("members.xml")->readLock();
    } catch (const ZEL::EXCEPTIONS::IOException& e) {
        std::cout << e.getEntryCode() << ": " << e.what() << ", " << e.getFileName() << "\n";
    }
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
