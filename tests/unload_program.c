/* Loads the library given as its argument, uses it and lets go of it, many times: each time it has to be gone, with
 * nothing left behind that a later fork or thread would run into. */
#include <dlfcn.h>
#include <pthread.h>
#include <stdio.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

static const char* const used[] = {"_ZN3ZEL5TRACE15setTraceDefaultEv", "vor_getThreadId"};

static int use(const char* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    void (*function)(void);
    int i;
    for (i = 0; i < 2; ++i) {
        void* const address = library == NULL ? NULL : dlsym(library, used[i]);
        if (address == NULL)
            return fprintf(stderr, "%s\n", dlerror());
        memcpy(&function, &address, sizeof function); /* C knows no cast from an object to a function */
        function();
    }
    dlclose(library);
    return dlopen(path, RTLD_NOW | RTLD_NOLOAD) == NULL ? 0 : fprintf(stderr, "the library stays loaded\n");
}

static void* nothing(void* argument) { return argument; }

int main(int count, char** arguments) {
    pthread_t thread;
    int status = count == 2 ? 0 : 1;
    int i;
    for (i = 0; i < 200 && status == 0; ++i)
        status = use(arguments[1]);
    if (status != 0 || pthread_create(&thread, NULL, nothing, NULL) != 0 || pthread_join(thread, NULL) != 0)
        return 1;
    if (fork() == 0)
        _exit(0);
    return wait(&status) > 0 && status == 0 ? 0 : 1;
}
