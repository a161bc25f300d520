#include <stdio.h>
#include <string.h>
#include <zel/vor.h>

static const char path[] = "first_steps.txt";
static void* mutex = NULL;

/* Appends a line under an exclusive lock. Returns 0 or the status of the call that failed. */
static int append(const char* line) {
    VOR_FileHandle* file = NULL;
    int written, closed;

    /* Mode 3: read and write, made when missing. A file that is locked is tried 10 times more, every half second. */
    const int opened = vor_safeOpenFile(path, 3, 10, &file);
    if (opened != 0)
        return opened;
    written = vor_safeWriteContents(file, 2, line, (unsigned int)strlen(line)); /* mode 2: at the end */
    closed = vor_safeCloseFile(file);                                           /* drops the lock, frees the handle */
    return written != 0 ? written : closed;
}

static int print(void) {
    VOR_FileHandle* file = NULL;
    char* contents = NULL;
    unsigned int length = 0;
    int read, closed;

    const int opened = vor_safeOpenFile(path, 1, 10, &file); /* mode 1: read only, lock shared with other readers */
    if (opened != 0)
        return opened;
    read = vor_safeReadContents(file, 1, &contents, &length);
    if (read == 0) {
        fwrite(contents, 1, length, stdout); /* only length tells where the text ends */
        vor_safeFreeBuffer(contents);
    }
    closed = vor_safeCloseFile(file);
    return read != 0 ? read : closed;
}

/* File locks keep processes apart. The threads of one process share them, so a mutex keeps these apart. */
static void* worker(void* status) {
    vor_lockMutex(mutex);
    *(int*)status = append("written by a thread\n");
    vor_unlockMutex(mutex);
    return NULL;
}

int main(void) {
    VOR_FileStats seen;
    pthread_t thread;
    int inThread = 0;
    int status = append("written by main\n");

    if (status == 0)
        status = vor_safeFileStats(path, &seen);
    if (status == 0)
        status = vor_createMutex(&mutex);
    if (status == 0)
        status = vor_startThread(worker, &inThread, &thread);
    if (status == 0)
        status = vor_waitThread(thread, 0);
    if (status == 0)
        status = inThread;
    if (status == 0 && vor_safeFileStatsAreStale(path, &seen)) {
        printf("the file has changed and now has %lu bytes:\n", (unsigned long)seen.size);
        status = print();
    }
    vor_deleteMutex(&mutex);
    remove(path);

    if (status != 0)
        fprintf(stderr, "first_steps: status %d\n", status);
    return status != 0;
}
