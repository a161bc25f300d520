/* The flat functions from C, step by step. Each step is a function of its own that returns 0 or the status of the call
 * that failed; steps[] has them in the order in which they run. */
#include <stdio.h>
#include <string.h>
#include <zel/vor.h>

/* A key, held where it is overwritten before its memory goes to anybody else. */
static int byteArray(void) {
    static const unsigned char key[16] = {0x3C, 0x19, 0xF4, 0x00, 0xB2};
    VOR_ByteArray array;
    unsigned int first, second;
    int status = vor_initializeByteArray(&array, sizeof key, key);

    if (status != 0)
        return status;
    if (!vor_containsByteArray(&array)) {
        fprintf(stderr, "there is no memory for the key\n");
        return -1;
    }
    first = array.size;
    status = vor_setByteArrayFromString(&array, "short"); /* fits: the same buffer, the key erased */
    second = array.size;
    vor_clearByteArray(&array); /* erases, then frees */
    if (status == 0)
        printf("byte array: %u bytes, then %u, then %s\n", first, second, array.data == NULL ? "none" : "some");
    return status;
}

typedef struct Counter {
    void* mutex;
    int count;
} Counter;

static void* countTo1000(void* argument) {
    Counter* const counter = argument;
    int i;

    for (i = 0; i < 1000; ++i) {
        vor_lockMutex(counter->mutex);
        counter->count += 1;
        vor_unlockMutex(counter->mutex);
    }
    return NULL;
}

/* Two threads count with one counter. */
static int mutex(void) {
    Counter counter = {NULL, 0};
    pthread_t threads[2];
    int started, joined;
    int status = vor_createMutex(&counter.mutex);

    for (started = 0; status == 0 && started < 2; started += status == 0)
        status = vor_startThread(countTo1000, &counter, &threads[started]);
    for (joined = 0; joined < started; ++joined) {
        const int waited = vor_waitThread(threads[joined], 0);
        if (status == 0)
            status = waited;
    }
    vor_deleteMutex(&counter.mutex);
    if (status == 0)
        printf("mutex: %d threads counted to %d\n", joined, counter.count);
    return status;
}

/* A file written and read back under one lock. */
static int file(void) {
    static const char path[] = "flat.txt";
    static const char text[] = "written under a lock";
    VOR_FileHandle* handle = NULL;
    char* contents = NULL;
    unsigned int length = 0;
    int closed;
    int status = vor_safeOpenFile(path, 3, 10, &handle); /* 3: read and write, made when missing */

    if (status != 0)
        return status;
    status = vor_safeWriteContents(handle, 1, text, sizeof text - 1); /* 1: in place of what it held */
    if (status == 0)
        status = vor_safeReadContents(handle, 1, &contents, &length);
    if (status == 0) {
        printf("file: %u bytes read back\n", length);
        vor_safeFreeBuffer(contents);
    }
    closed = vor_safeCloseFile(handle);
    remove(path);
    return status != 0 ? status : closed;
}

/* The mathematical library of the system, found where the loader looks, and one of its functions called. */
static int library(void) {
    double (*cosine)(double) = NULL;
    void* const handle = vor_loadLibrary("libm.so.6");
    void* const symbol = vor_loadSymbol(handle, "cos"); /* of no library: null */

    if (symbol == NULL) {
        fprintf(stderr, "there is no cos in libm.so.6\n");
        if (handle != NULL)
            vor_unloadLibrary(handle);
        return -1;
    }
    memcpy(&cosine, &symbol, sizeof cosine); /* C has no cast from an object to a function */
    printf("library: cos(0) is %.0f\n", cosine(0.0));
    return vor_unloadLibrary(handle);
}

/* At least 8 bytes, a special character, a digit and a letter. */
static int passPhrase(void) {
    static const zel_PasswordPolicy policy = {8, 0, 1, 1, 0};
    const int weak = zel_verifyPassword("guessed", &policy);
    const int strong = zel_verifyPassword("4-better-words", &policy);

    printf("pass phrase: %s, %s\n", weak ? "accepted" : "refused", strong ? "accepted" : "refused");
    return weak == 0 && strong == 1 ? 0 : -1;
}

static const struct {
    const char* name;
    int (*run)(void);
} steps[] = {
    {"byte array", byteArray}, {"mutex", mutex}, {"file", file}, {"library", library}, {"pass phrase", passPhrase},
};

int main(void) {
    size_t i;

    for (i = 0; i < sizeof steps / sizeof steps[0]; ++i) {
        const int status = steps[i].run();
        if (status != 0) {
            fprintf(stderr, "flat: %s: status %d\n", steps[i].name, status);
            return 1;
        }
    }
    return 0;
}
