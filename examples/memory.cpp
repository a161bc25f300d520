// An object that several parts of a program share, and what happens where there is none.
#include <iostream>
#include <map>
#include <string>

#include <zel/zel.h>

using namespace ZEL::EXCEPTIONS;
using ZEL::RT::SmartPointer;

namespace {

struct Session : ZEL::Object {
    std::string toString() const override { return "a session"; }
    ~Session() override { std::cout << "the session ends\n"; }
};

struct AdminSession : Session {
    std::string toString() const override { return "an administrator's session"; }
};

void run() {
    std::map<std::string, SmartPointer<Session>> sessions;
    sessions["anna"] = SmartPointer<Session>(new AdminSession); // takes it over: nobody calls delete
    {
        const SmartPointer<Session> anna = sessions["anna"]; // shares it
        sessions.erase("anna");
        std::cout << "still there: " << anna->toString() << "\n";

        const auto admin = anna.cast<AdminSession>(); // shares it as what it really is
        try {
            anna.cast<ZEL::I::IProperties>();
        } catch (const ClassCastException& e) {
            std::cout << "no store: " << e.what() << "\n";
        }
        std::cout << "the last two pointers go\n";
    }
    try {
        sessions["bert"]->toString();
    } catch (const NullPointerException& e) { // in place of a crash
        std::cout << "no session: " << e.what() << "\n";
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
