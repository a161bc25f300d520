// Work that is done in the child of a fork.
#ifndef ZEL_TESTS_SUPPORT_CHILD_H
#define ZEL_TESTS_SUPPORT_CHILD_H

#include <sys/wait.h>
#include <unistd.h>

// What an action returns in a child, or 1000 more than the signal that ended it: its alarm, if it hung.
template <class Action> int statusOfChild(Action action) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(20);
        ::_exit([&]() noexcept { return action(); }());
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

#endif
