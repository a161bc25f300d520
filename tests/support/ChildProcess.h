/// @file
/// Another process that a test works with or against.
#ifndef ZEL_TESTS_SUPPORT_CHILDPROCESS_H
#define ZEL_TESTS_SUPPORT_CHILDPROCESS_H

#include <functional>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

/// Forks and runs a function in the child, whose result is the exit status. The child reports once that it has come
/// to a certain point and may wait there until the parent lets it go on; nobody sleeps to be probably late enough.
class ChildProcess {
public:
    /// What the child's function may do with its parent.
    class Parent {
    public:
        explicit Parent(int line) : line_(line) {}

        /// Lets the constructor of ChildProcess return.
        void report() { (void)!::send(line_, "r", 1, MSG_NOSIGNAL); }

        /// Returns when the parent joins, or is gone.
        void reportAndWait() {
            report();
            char byte;
            (void)!::recv(line_, &byte, 1, 0);
        }

    private:
        int line_;
    };

    /// Returns when the child has reported or ended.
    explicit ChildProcess(const std::function<int(Parent&)>& body) {
        int line[2];
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, line) != 0 || (child_ = ::fork()) == -1)
            throw std::runtime_error("no child process");
        if (child_ == 0) {
            ::close(line[0]);
            Parent parent(line[1]);
            int status = 255;
            try {
                status = body(parent);
            } catch (...) {
            }
            ::_exit(status);
        }
        ::close(line[1]);
        line_ = line[0];
        char byte;
        (void)!::recv(line_, &byte, 1, 0);
    }
    ~ChildProcess() { join(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Lets the child go on, waits for its end and returns its exit status, or -1 if it did not exit.
    int join() {
        if (child_ > 0) {
            (void)!::send(line_, "g", 1, MSG_NOSIGNAL);
            int status = 0;
            result_ = ::waitpid(child_, &status, 0) == child_ && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            ::close(line_);
            child_ = 0;
        }
        return result_;
    }

private:
    pid_t child_ = -1;
    int line_ = -1;
    int result_ = -1;
};

#endif
