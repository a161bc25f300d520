/* Its initialiser and its finaliser are the program's. */
void initialiserHook(void) __attribute__((weak));
void finaliserHook(void) __attribute__((weak));

__attribute__((constructor)) static void initialise(void) {
    if (initialiserHook)
        initialiserHook();
}

__attribute__((destructor)) static void finalise(void) {
    if (finaliserHook)
        finaliserHook();
}
