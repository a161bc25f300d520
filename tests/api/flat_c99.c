/* The flat interface as a C99 program sees it: every record and every family of functions, used from end to end. */
#include <malloc.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <zel/vor.h>

#define CHECK(condition)                                                                                               \
    ((condition) ? (void)0 : (fprintf(stderr, "flat_c99.c:%d: %s\n", __LINE__, #condition), exit(1)))

static int is(const char* text, const char* expected) { return text != NULL && strcmp(text, expected) == 0; }

static void values(void) {
    const zel_PasswordPolicy policy = {4, 0, 1, 1, 1};
    unsigned char block[] = "ab\0cd";
    VOR_ByteArray array, copy, borrowed = {0, NULL};

    CHECK(vor_initializeByteArrayFromString(&array, "abc") + vor_initializeByteArrayFromString(&copy, NULL) == 0);
    CHECK(copy.data == NULL && vor_copyByteArray(&copy, &array) == 0 && vor_containsByteArray(&copy) == 1);
    CHECK(copy.size == 3 && memcmp(copy.data, "abc", 4) == 0 && vor_setByteArrayFromString(&array, NULL) == 0);
    vor_shredByteArray(&copy);
    CHECK(copy.size == 3 && memcmp(copy.data, "\0\0\0", 4) == 0 && array.data == NULL);
    vor_clearByteArray(&copy);
    borrowed.data = block;
    CHECK(copy.size == 0 && vor_containsByteArray(&borrowed) == 0);
    borrowed.size = 2;
    CHECK(vor_setByteArray(&borrowed, 2, block + 3) == 0 && memcmp(block, "cd\0cd", 6) == 0); /* a neighbour's bytes */

    CHECK(vor_initializeByteArray(NULL, 1, block) == 1 && vor_initializeByteArrayFromString(NULL, "x") == 1);
    CHECK(vor_setByteArray(NULL, 1, block) == 1 && vor_copyByteArray(NULL, &copy) == 1);
    CHECK(vor_copyByteArray(&copy, NULL) == 1 && vor_containsByteArray(NULL) == 0);
    vor_shredByteArray(NULL);
    vor_clearByteArray(NULL);
    CHECK(zel_verifyPassword("aB1!", &policy) == 1 && strlen(zel_getSpecialCharacters()) == 32);
    CHECK(zel_verifyPassword(NULL, &policy) == -1 && zel_verifyPassword("aB1!", NULL) == -1);
}

static void* lockedUp(void* mutex) { return vor_lockMutex(mutex) + vor_unlockMutex(mutex) == 0 ? mutex : NULL; }

static void threads(void) {
    void* mutex = NULL;
    pthread_mutex_t block;
    pthread_t thread;

    CHECK(vor_initializeMutex(NULL) == -41 && vor_createMutex(NULL) == -41 && vor_destroyMutex(NULL) == -41);
    CHECK(vor_lockMutex(NULL) == -41 && vor_unlockMutex(NULL) == -41);
    vor_deleteMutex(NULL);
    vor_deleteMutex(&mutex);
    CHECK(vor_initializeMutex(&block) == 0 && vor_destroyMutex(&block) == 0);
    CHECK(vor_createMutex(&mutex) == 0 && vor_lockMutex(mutex) == 0);
    CHECK(vor_startThread(lockedUp, mutex, &thread) == 0 && vor_testThread(thread) == 1);
    CHECK(vor_unlockMutex(mutex) == 0 && vor_waitThread(thread, 5) == 0 && vor_cancelThread(thread) > 0);
    CHECK(vor_getThreadId() == (unsigned long)pthread_self());
    vor_deleteMutex(&mutex);
    CHECK(mutex == NULL);
}

__attribute__((format(printf, 3, 4))) static int format(char* text, size_t count, const char* pattern, ...) {
    int length;
    va_list arguments;
    va_start(arguments, pattern);
    length = vor_safeVsprintf(text, 1, count, pattern, arguments);
    va_end(arguments);
    return length;
}

static void texts(void) {
    char text[8] = "abc", list[] = "a.b.c";
    char* lower = vor_safeToLower("MiXed \xc4 AND LONGER THAN IT SAYS", 2);
    char* roomy = vor_safeToLower("A", 5000);
    char* state = NULL;

    CHECK(is(vor_safeStrcat(text, 8, "de", 2), "abcde") && is(vor_safeStrcpy(text, 8, "xyz", 2), "xy"));
    CHECK(vor_safeSprintf(text, 2, "%s-%d", "abc", 42) == 6 && is(text, "abc-42")); /* the size is no bound */
    CHECK(format(text, 4, "%s", "longer") == 6 && is(text, "lon") && format(NULL, 0, "%d", 123) == 3);
    CHECK(format(NULL, 4, "%d", 123) == -1 && vor_safeSprintf(NULL, 4, "%d", 1) == -1);
    CHECK(is(lower, "mixed \xc4 and longer than it says") && vor_safeFreeBuffer(lower) == 0);
    CHECK(malloc_usable_size(roomy) > 5000 && vor_safeFreeBuffer(roomy) == 0);
    CHECK(vor_safeToLower(NULL, 1) == NULL && vor_safeToLower("A", SIZE_MAX) == NULL && vor_safeFreeBuffer(NULL) == 1);
    CHECK(vor_safeCharReplace(list, '.', '/') == 2 && vor_safeCharReplace(NULL, 'a', 'b') == 0);
    CHECK(vor_safeStrtok(NULL, "/", &state) == NULL && is(vor_safeStrtok(list, "/", &state), "a"));
    CHECK(vor_safeStrtok(list, NULL, &state) == NULL && vor_safeStrtok(list, "/", NULL) == NULL);
    CHECK(vor_safeStrcmp(NULL, NULL) == 0 && vor_safeStrncmp(NULL, "", 1) < 0 && vor_safeStrcasecmp("", NULL) > 0);
    CHECK(vor_safeStrncasecmp(NULL, "", 0) < 0 && !vor_safeStrstr("a", NULL) && !vor_safeStrstr(NULL, ""));
}

static void environment(void) {
    const time_t billion = 1000000000, last = (time_t)(~0ULL >> (sizeof last == 8 ? 1 : 33));
    struct tm utc, local;
    char* value = NULL;
    size_t length = 1;

    CHECK(vor_safeSetenv("TZ", "UTC-1") == 0 && vor_safeSetenv(NULL, "") == -1 && vor_safeSetenv("TZ", NULL) == -1);
    CHECK(vor_safeGetenv(&value, NULL, "TZ") == NULL && vor_safeGetenv(&value, &length, NULL) == NULL);
    CHECK(is(vor_safeGetenv(&value, &length, "TZ"), "UTC-1") && is(value, "UTC-1") && length == 5);
    vor_safeGetenvFree(value);
    CHECK(vor_safeGetenv(&value, &length, "ZEL_UNSET") == NULL && value == NULL && length == 0);
    CHECK(vor_safeGmtime(&utc, &billion) == &utc && utc.tm_year == 101 && utc.tm_hour == 1 && utc.tm_sec == 40);
    CHECK(vor_safeLocaltime(&local, &billion) == &local && local.tm_hour == 2 && mktime(&local) == billion);
    CHECK(vor_safeGmtime(NULL, &billion) == NULL && vor_safeLocaltime(&local, NULL) == NULL);
    CHECK((vor_safeGmtime(&utc, &last) == NULL) == (sizeof last == 8)); /* the year does not fit */
}

static void files(const char* path) {
    VOR_FileHandle* file = NULL;
    VOR_FileStats stats;
    char* contents = NULL;
    unsigned int length = 0;
    int exists = 0;

    CHECK(vor_safeOpenFile(path, 3, 0, &file) == 0 && vor_safeWriteContents(file, 1, "one\r\n", 5) == 0);
    CHECK(vor_safeHandleStats(file, &stats) == 0 && stats.size == 5 && stats.checkTime >= stats.modificationTime);
    CHECK(vor_safeHandleStatsAreStale(file, &stats) == 0 && vor_safeFileStatsAreStale(path, &stats) == 0);
    CHECK(vor_safeFileStats(path, &stats) == 0 && vor_safeCompareStats(&stats, &stats) == 0);
    CHECK(internal_CloseFile(file) == 0 && internal_OpenFile(path, 2, file) == 0); /* the same handle once more */
    CHECK(vor_safeReadContents(file, 1, &contents, &length) == 0 && length == 4 && memcmp(contents, "one\n", 4) == 0);
    CHECK(vor_safeFreeBuffer(contents) == 0 && vor_safeChmod(path, 0600) == 0);
    CHECK(vor_safeSyncFile(file) == 0 && vor_safeCloseFile(file) == 0);
    CHECK(remove(path) == 0 && vor_safeFileExists(path, &exists) == 0 && exists == 0);
}

static void libraries(void) {
    zel_LibraryInfo info;
    char found[64];
    char* name = vor_formatLibraryName("foo", "lib", ".so");
    void* mathematics = vor_loadLibrary("libm.so.6");

    CHECK(is(name, "libfoo.so") && vor_safeFreeBuffer(name) == 0);
    CHECK(vor_findFileOnPath("etc", "/nowhere:/", "", found, sizeof found) == 1 && is(found, "//etc"));
    CHECK(vor_findLibrary("foo", "/nowhere") == NULL && vor_loadLibraryFromPath("foo", "/nowhere") == NULL);
    CHECK(vor_loadSymbol(mathematics, "cos") != NULL && vor_unloadLibrary(mathematics) == 0);
    zel_getLibraryInfo(&info);
    CHECK(is(info.version, zel_getVersionString()) && is(info.releaseKind, "Official Release"));
}

int main(void) {
    values();
    threads();
    texts();
    environment();
    files("flat_c99.tmp");
    libraries();
    return 0;
}
