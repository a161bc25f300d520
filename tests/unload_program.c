/* Loads the library given as its argument, uses it and lets go of it, many times: each time it has to be gone, with
 * nothing left behind that a later fork or thread would run into. */
#include <dlfcn.h>
#include <pthread.h>
#include <stdio.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

typedef void (*Function)(void);

/* A function pointer out of an object pointer, without a cast that C does not know. */
static Function symbol(void* library, const char* name) {
    Function function = NULL;
    void* const address = dlsym(library, name);
    memcpy(&function, &address, sizeof function);
    return function;
}

static int use(const char* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    Function trace, identify;
    if (library == NULL)
        return fprintf(stderr, "%s\n", dlerror());
    trace = symbol(library, "_ZN3ZEL5TRACE15setTraceDefaultEv");
    identify = symbol(library, "vor_getThreadId");
    if (trace == NULL || identify == NULL)
        return fprintf(stderr, "%s\n", dlerror());
    trace();
    identify();
    dlclose(library);
    if (dlopen(path, RTLD_NOW | RTLD_NOLOAD) != NULL)
        return fprintf(stderr, "the library stays loaded\n");
    return 0;
}

static void* nothing(void* argument) { return argument; }

int main(int count, char** arguments) {
    pthread_t thread;
    int status = 0;
    int i;
    for (i = 0; i < 200 && count == 2; ++i)
        if (use(arguments[1]) != 0)
            return 1;
    if (pthread_create(&thread, NULL, nothing, NULL) != 0 || pthread_join(thread, NULL) != 0)
        return 1;
    if (fork() == 0)
        _exit(0);
    return wait(&status) > 0 && status == 0 && i == 200 ? 0 : 1;
}
