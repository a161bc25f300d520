/* The flat interface as a C99 program sees it: every record and every family of functions, used from end to end. */
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <zel/vor.h>

#define CHECK(condition) ((condition) ? (void)0 : failed(__LINE__, #condition))

static void failed(int line, const char* condition) {
    fprintf(stderr, "flat_c99.c:%d: %s\n", line, condition);
    exit(1);
}

static void mutexes(void) {
    void* mutex = NULL;
    void* same;
    pthread_mutex_t block;

    CHECK(vor_createMutex(&mutex) == 0 && mutex != NULL);
    same = mutex;
    CHECK(vor_createMutex(&mutex) == 0 && mutex == same);
    CHECK(vor_lockMutex(mutex) == 0 && vor_lockMutex(mutex) == 0);
    CHECK(vor_unlockMutex(mutex) == 0 && vor_unlockMutex(mutex) == 0);
    vor_deleteMutex(&mutex);
    CHECK(mutex == NULL);

    CHECK(vor_initializeMutex(&block) == 0 && vor_lockMutex(&block) == 0);
    CHECK(vor_unlockMutex(&block) == 0 && vor_destroyMutex(&block) == 0);

    CHECK(vor_createMutex(NULL) == -41 && vor_initializeMutex(NULL) == -41 && vor_lockMutex(NULL) == -41);
    CHECK(vor_unlockMutex(NULL) == -41 && vor_destroyMutex(NULL) == -41);
    vor_deleteMutex(NULL);
}

typedef struct Shared {
    void* mutex;
    int sum;
    unsigned long lastThread;
} Shared;

static void* addThousand(void* argument) {
    Shared* shared = argument;
    int i;
    for (i = 0; i < 1000; ++i) {
        vor_lockMutex(shared->mutex);
        shared->sum += 1;
        shared->lastThread = vor_getThreadId();
        vor_unlockMutex(shared->mutex);
    }
    return NULL;
}

static void threads(void) {
    Shared shared = {NULL, 0, 0};
    pthread_t first, second;

    CHECK(vor_createMutex(&shared.mutex) == 0);
    CHECK(vor_startThread(addThousand, &shared, &first) == 0);
    CHECK(vor_testThread(first) == 1);
    CHECK(vor_waitThread(first, 0) == 0);
    CHECK(shared.lastThread == (unsigned long)first && shared.lastThread != vor_getThreadId());
    CHECK(vor_testThread(first) == 0 && vor_cancelThread(first) > 0 && vor_waitThread(first, 0) > 0);

    CHECK(vor_startThread(addThousand, &shared, &first) == 0);
    CHECK(vor_startThread(addThousand, &shared, &second) == 0);
    CHECK(vor_waitThread(first, 5) == 0 && vor_waitThread(second, 5) == 0);
    CHECK(shared.sum == 3000);
    vor_deleteMutex(&shared.mutex);

    CHECK(vor_startThread(NULL, NULL, &first) == -1 && vor_waitThread(0, 0) == -1);
    CHECK(vor_testThread(0) == 0 && vor_cancelThread(0) == -1);
}

__attribute__((format(printf, 3, 4))) static int format(char* text, size_t size, const char* pattern, ...) {
    int length;
    va_list arguments;
    va_start(arguments, pattern);
    length = vor_safeVsprintf(text, size, size, pattern, arguments);
    va_end(arguments);
    return length;
}

static void runtime(void) {
    const time_t billion = 1000000000;
    struct tm utc, local;
    char text[8] = "abc";
    char list[] = "a,b.c";
    char* state = NULL;
    char* value = NULL;
    char* lower;
    size_t length = 1;

    CHECK(vor_safeStrcat(text, sizeof text, "defghij", 7) == text && strcmp(text, "abcdefg") == 0);
    CHECK(vor_safeStrcpy(text, sizeof text, "xyz", 2) == text && strcmp(text, "xy") == 0);
    CHECK(vor_safeStrcpy(NULL, 1, "x", 1) == NULL && vor_safeStrcat(text, 0, "x", 1) == NULL);
    CHECK(vor_safeSprintf(text, sizeof text, "%d", 42) == 2 && strcmp(text, "42") == 0);
    CHECK(format(text, sizeof text, "%s", "0123456789") == 10 && strcmp(text, "0123456") == 0);

    CHECK(strcmp(vor_safeStrtok(list, ",.", &state), "a") == 0 && strcmp(vor_safeStrtok(NULL, ",.", &state), "b") == 0);
    CHECK(vor_safeStrcmp("a", "b") < 0 && vor_safeStrncmp("ab", "ac", 1) == 0);
    CHECK(vor_safeStrcasecmp("AB", "ab") == 0 && vor_safeStrncasecmp("ABx", "aby", 2) == 0);
    CHECK(strcmp(vor_safeStrstr("haystack", "st"), "stack") == 0 && vor_safeStrstr("haystack", "x") == NULL);
    vor_safeStrcpy(text, sizeof text, "a.b.c", 5);
    CHECK(vor_safeCharReplace(text, '.', '/') == 2 && strcmp(text, "a/b/c") == 0);

    lower = vor_safeToLower("MiXed", 5);
    CHECK(lower != NULL && strcmp(lower, "mixed") == 0);
    CHECK(vor_safeFreeBuffer(lower) == 0 && vor_safeFreeBuffer(NULL) == 1);

    CHECK(vor_safeSetenv("ZEL_FLAT_C99", "set") == 0);
    CHECK(vor_safeGetenv(&value, &length, "ZEL_FLAT_C99") == value && strcmp(value, "set") == 0 && length == 3);
    vor_safeGetenvFree(value);
    CHECK(vor_safeGetenv(&value, &length, "ZEL_FLAT_C99_UNSET") == NULL && value == NULL && length == 0);

    CHECK(vor_safeGmtime(&utc, &billion) == &utc && utc.tm_year == 101 && utc.tm_hour == 1 && utc.tm_sec == 40);
    CHECK(vor_safeLocaltime(&local, &billion) == &local && mktime(&local) == billion);
    CHECK(vor_safeGmtime(NULL, &billion) == NULL && vor_safeLocaltime(NULL, &billion) == NULL);
}

static void checkContents(VOR_FileHandle* file, int readMode, const char* expected) {
    char* contents = NULL;
    unsigned int length = 0;
    CHECK(vor_safeReadContents(file, readMode, &contents, &length) == 0);
    CHECK(length == strlen(expected) && memcmp(contents, expected, length) == 0);
    CHECK(vor_safeFreeBuffer(contents) == 0);
}

static void files(const char* path) {
    VOR_FileHandle* file = NULL;
    VOR_FileStats seen, now;
    int exists = 1;

    remove(path);
    CHECK(vor_safeFileExists(path, &exists) == 0 && exists == 0);
    CHECK(vor_safeOpenFile(path, 1, 3, &file) == 9 && file == NULL);
    CHECK(vor_safeFileStats(path, &seen) == -1);

    CHECK(vor_safeOpenFile(path, 3, 0, &file) == 0 && file != NULL);
    CHECK(vor_safeWriteContents(file, 1, "one\r\n", 5) == 0);
    CHECK(vor_safeHandleStats(file, &seen) == 0 && seen.size == 5);
    CHECK(seen.modificationTime != 0 && seen.checkTime >= seen.modificationTime);
    CHECK(vor_safeHandleStatsAreStale(file, &seen) == 0);
    CHECK(vor_safeWriteContents(file, 2, "two", 3) == 0 && vor_safeSyncFile(file) == 0);
    checkContents(file, 1, "one\ntwo");
    checkContents(file, 2, "one\ntwo");
    checkContents(file, 0, "");

    now = seen;
    CHECK(vor_safeCompareStats(&seen, &now) == 0);
    CHECK(vor_safeFileStatsAreStale(path, &now) == 1 && now.size == 8);
    CHECK(vor_safeCompareStats(&seen, &now) == 1 && vor_safeFileStatsAreStale(path, &now) == 0);

    CHECK(vor_safeChmod(path, 0600) == 0 && vor_safeChmod("", 0600) == -1);
    CHECK(internal_CloseFile(file) == 0 && internal_OpenFile(path, 2, file) == 0); /* the same handle once more */
    CHECK(vor_safeWriteContents(file, 1, "", 0) == 0);
    checkContents(file, 1, "");
    CHECK(vor_safeCloseFile(file) == 0);

    CHECK(vor_safeOpenFile(path, 4, 0, &file) == 1 && vor_safeOpenFile(NULL, 1, 0, &file) == 1);
    CHECK(vor_safeCloseFile(NULL) == 1 && vor_safeSyncFile(NULL) == 1 && vor_safeWriteContents(NULL, 1, "", 0) == 1);
    remove(path);
}

static void values(void) {
    const zel_PasswordPolicy policy = {4, 0, 1, 1, 1};
    VOR_ByteArray array, copy = {0, NULL};

    CHECK(vor_initializeByteArrayFromString(&array, "abc") == 0 && vor_copyByteArray(&copy, &array) == 0);
    CHECK(vor_containsByteArray(&copy) == 1 && copy.size == 3 && memcmp(copy.data, "abc", 4) == 0);
    vor_shredByteArray(&copy);
    CHECK(copy.size == 3 && copy.data[0] == 0);
    vor_clearByteArray(&copy);
    CHECK(vor_setByteArray(&array, 0, NULL) == 0 && array.data == NULL && vor_copyByteArray(&array, NULL) == 1);

    CHECK(zel_verifyPassword("aB1!", &policy) == 1 && zel_verifyPassword("aB1", &policy) == 0);
    CHECK(zel_verifyPassword(NULL, &policy) == -1 && strlen(zel_getSpecialCharacters()) == 32);
}

static void libraries(void) {
    char found[64];
    zel_LibraryInfo info;
    char* name = vor_formatLibraryName("foo", "lib", ".so");
    void* mathematics = vor_loadLibrary("libm.so.6");

    CHECK(name != NULL && strcmp(name, "libfoo.so") == 0);
    free(name);
    CHECK(vor_findFileOnPath("etc", "/nowhere:/", "", found, sizeof found) == 1 && strcmp(found, "//etc") == 0);
    CHECK(vor_findLibrary("foo", "/nowhere") == NULL && vor_loadLibraryFromPath("foo", "/nowhere") == NULL);
    CHECK(mathematics != NULL && vor_loadSymbol(mathematics, "cos") != NULL);
    CHECK(vor_unloadLibrary(mathematics) == 0 && vor_unloadLibrary(NULL) == -1);

    zel_getLibraryInfo(&info);
    CHECK(strcmp(info.version, zel_getVersionString()) == 0 && strcmp(info.releaseKind, "Official Release") == 0);
}

int main(void) {
    values();
    mutexes();
    threads();
    runtime();
    files("flat_c99.tmp");
    libraries();
    return 0;
}
