/* Tells the program when it comes and when it goes, by texts of its own. */
void hook(const char* event);

__attribute__((constructor)) static void come(void) { hook("coming"); }
__attribute__((destructor)) static void go(void) { hook("going"); }
