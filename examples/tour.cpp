// tour FILE: what the library does with a file, step by step. FILE holds properties, either as lines of the form
// name=value or as the XML that this program prints. FILE itself is only read.
//
// Ends with status 0 when every step went as its comment says, else with 1 and a message.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

#include <zel/zel.h>

using ZEL::EXCEPTIONS::IOException;
using ZEL::RT::getLocalFile;

namespace {

// A new folder that goes with everything in it when the program leaves the scope.
class TemporaryFolder {
public:
    TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "tour.XXXXXX").string()) {
        if (mkdtemp(path_.data()) == nullptr)
            throw std::runtime_error("cannot make a temporary folder like " + path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

void title(const std::string& text) { std::cout << "\n== " << text << "\n"; }

void expect(bool asDescribed, const std::string& description) {
    if (!asDescribed)
        throw std::runtime_error("this did not happen: " + description);
    std::cout << description << "\n";
}

void describe(const ZEL::EXCEPTIONS::ZelException& e) {
    std::cout << "name:            " << e.getExceptionName() << "\n"
              << "class code:      " << e.getExceptionCode() << "\n"
              << "entry code:      " << e.getEntryCode() << "\n"
              << "message:         " << e.what() << "\n"
              << "FileName:        " << e.retrieveProperty("FileName") << "\n"
              << "execution point: " << e.getExecutionPoint() << "\n";
}

void tour(const std::string& path) {
    const auto store = ZEL::createProperties();
    {
        // The lock is shared with other readers, keeps writers out, and is dropped at the end of its scope. Reading
        // through the lock says why a file cannot be read; retrieve() of the file would return an empty text.
        const auto file = getLocalFile(path);
        const auto lock = file->readLock();
        std::string text;
        lock->readContents(text);
        store->unmarshal(text);
    }
    title("The properties in " + path);
    std::cout << store->toString();

    title("The same as XML");
    std::cout << store->marshal() << "\n";

    title("A copy, changed by somebody else");
    const TemporaryFolder folder;
    const auto copy = getLocalFile(folder.file("copy.xml"));
    {
        auto lock = copy->writeLock(); // exclusive; it creates the file
        copy->save(lock, *store);
        expect(!copy->update(lock, *store), "the copy has not changed since it was saved");
    }
    const auto other = getLocalFile(copy->getFileName());
    {
        // Reading, changing and writing under one exclusive lock, so that no other process's change is lost.
        auto lock = other->writeLock();
        const auto theirs = ZEL::createProperties();
        other->update(lock, *theirs);
        theirs->assignProperty("tour", theirs->retrieveProperty("tour", "") + "changed by somebody else");
        other->save(lock, *theirs);
    }
    {
        auto lock = copy->readLock();
        expect(copy->update(lock, *store), "the first object noticed the change");
        const std::string change = store->retrieveProperty("tour", "");
        expect(!change.empty(), "and refreshed the store: tour=" + change);
    }

    title("A file that is missing");
    bool caught = false;
    try {
        getLocalFile(folder.file("missing"))->readLock();
    } catch (const IOException& e) {
        describe(e);
        caught = true;
    }
    expect(caught, "opening it failed as it should");

    // The library traced all of this. Until a destination is chosen, here or by the environment variable VOR_TRACE, it
    // keeps the last 256 records in memory.
    title("What the library did, out of its ring buffer");
    ZEL::TRACE::setTraceToStream(&std::cout);
    ZEL::TRACE::setTraceDefault();
    if (!(std::cout << std::flush))
        throw std::runtime_error("cannot write to standard output");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: tour FILE\n";
        return 1;
    }
    try {
        tour(argv[1]);
        return 0;
    } catch (const ZEL::EXCEPTIONS::ZelException& e) {
        std::cerr << "tour: " << argv[1] << ": " << e.what() << " (" << e.getExecutionPoint() << ")\n";
    } catch (const std::exception& e) {
        std::cerr << "tour: " << argv[1] << ": " << e.what() << "\n";
    }
    return 1;
}
