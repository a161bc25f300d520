// A failure that gathers facts on its way up, and two ways to tell failures apart.
#include <cerrno>
#include <iostream>
#include <string>
#include <system_error>

#include <zel/zel.h>

using namespace ZEL::EXCEPTIONS;

namespace {

// Catalogue, code, name and text of a message. Exceptions borrow it: it lives as long as the program.
const ZEL::RT::LocalText noSuchUser("APP", -1, "noSuchUser", "There is no such user");

void find(const std::string& user) {
    throwException(ObjectNotFoundException("user", user, &noSuchUser, nullptr, -1, nullptr), "users", __LINE__, "find");
}

void signIn(const std::string& user) {
    try {
        find(user);
    } catch (ZelException& e) {
        e.assignProperty("Step", "signIn"); // for every copy of this exception
        throw;
    }
}

void run() {
    try {
        signIn("anna");
    } catch (const ObjectException& e) { // by class
        std::cout << e.getExceptionName() << " at " << e.getExecutionPoint() << "\n"
                  << e.getCatalogName() << " " << e.getEntryCode() << ": " << e.what() << "\n"
                  << e.getObjectType() << " " << e.getObjectName() << ", step " << e.retrieveProperty("Step") << "\n";
    }
    try {
        ZEL::RT::getLocalFile("missing")->readLock();
    } catch (const ZelException& e) { // by code, for those who do not know the class
        const int reason = errno;     // still the system's
        if (!e.instanceOf(-9))
            throw;
        std::cout << e.what() << " " << e.retrieveProperty("FileName") << ": "
                  << std::generic_category().message(reason) << "\n";
    }
}

} // namespace

int main() {
    try {
        run();
        return 0;
    } catch (const std::exception& e) { // which every exception of the library is, too
        std::cerr << e.what() << "\n";
        return 1;
    }
}
