#include <cstdio>
#include <iostream>
#include <string>

#include <zel/zel.h>

using ZEL::EXCEPTIONS::InvalidArgumentException;

namespace {

int portOf(const ZEL::I::IProperties& settings) {
    ZEL::Tracer trace("portOf", true); // traces "Entering" now and "Leaving" at the end, with time and thread
    const std::string text = settings.retrieveProperty("port", "");
    trace.printf("the port is '%s'", text.c_str());

    const int port = ZEL::RT::StringUtils::AsInteger(text); // throws for a text that is no number
    if (port < 1 || port > 65535) {
        // Your own catalogue, code and text; the place is filled in by throwException, which also traces the exception.
        InvalidArgumentException e("APP", -1, "badPort", "A port lies between 1 and 65535", nullptr, -1, nullptr);
        e.assignProperty("Port", text);
        throwException(e, "first_steps", __LINE__, "portOf");
    }
    return port;
}

void run() {
    // A properties store: names and values are text, kept in the order of the names.
    const auto settings = ZEL::createProperties();
    settings->assignProperty("port", "70000");
    settings->assignProperty("host", "localhost");
    std::cout << settings->toString();

    // An exception, traced: the trace is always on, and kept in memory until it is sent somewhere.
    try {
        portOf(*settings);
    } catch (const ZEL::EXCEPTIONS::ZelException& e) {
        std::cout << e.getExceptionName() << " at " << e.getExecutionPoint() << ": " << e.what() << ", but Port is "
                  << e.retrieveProperty("Port") << "\n";
        settings->assignProperty("port", "8080");
    }
    ZEL::TRACE::setTraceToStream(&std::cout); // prints what is in memory
    ZEL::TRACE::setTraceDefault();            // from here on, into memory again

    // A file, locked: while the lock lives, no other process that uses locks has the file open.
    const auto file = ZEL::RT::getLocalFile("first_steps.xml");
    {
        auto lock = file->writeLock();
        file->save(lock, *settings);
    }

    // A second object for the same file. update() reads only when the file has changed since this object saw it.
    const auto sameFile = ZEL::RT::getLocalFile("first_steps.xml");
    const auto copy = ZEL::createProperties();
    if (sameFile->update(*copy))
        std::cout << copy->marshal() << "\n";
}

} // namespace

int main() {
    int status = 0;
    try {
        run();
    } catch (const ZEL::EXCEPTIONS::ZelException& e) {
        std::cerr << "first_steps: " << e.what() << " (" << e.getExecutionPoint() << ")\n";
        status = 1;
    }
    std::remove("first_steps.xml");
    return status;
}
