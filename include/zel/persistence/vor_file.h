/** @file
 * Whole files under advisory locks: open with retries, read, replace, append, and learn whether somebody else
 * changed the file.
 *
 * Rules that all functions share:
 * - 0 is success. A null path, handle, record or out-pointer is answered with 1 and nothing is done.
 * - Nothing is thrown. After a failure errno holds the system's reason; after a success it is what it was before.
 * - A signal that interrupts a call is not a failure: the call is made again.
 * - A handle is used by one thread at a time. Its lock belongs to the process: it keeps other processes out, not
 *   other threads, and closing ANY descriptor of the same file anywhere in the process drops it.
 * - The waits of vor_safeOpenFile are its only cancellation points. A thread cancelled there gives everything back.
 *   All the other work is done to its end before a pending cancellation takes effect. (C callers whose own frames
 *   have something to release compile with -fexceptions and use pthread_cleanup_push.)
 * - If VOR_FILELOCK_OVERRIDE is in the environment, with any value, at the first successful open of the process,
 *   then this process never locks a file. Processes with raised privileges ignore the variable.
 */
#ifndef ZEL_PERSISTENCE_VOR_FILE_H
#define ZEL_PERSISTENCE_VOR_FILE_H

#include "zel/export.h"

#include <stdint.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** What a file looked like at some moment. */
typedef struct VOR_FileStats {
    uint32_t size;             /**< Bytes; 0xFFFFFFFF for any file that is larger. */
    uint32_t modificationTime; /**< Whole seconds since the epoch. */
    uint32_t checkTime;        /**< Second since the epoch in which this record was taken or last checked. */
} VOR_FileStats;

#ifdef __cplusplus
static_assert(sizeof(VOR_FileStats) == 12, "callers of every word size share this record");
#endif

/** An open file with its lock; made by vor_safeOpenFile and released by vor_safeCloseFile. */
typedef struct VOR_FileHandle VOR_FileHandle;

/**
 * Opens a file and locks all of it, without waiting for the lock other than by retrying.
 * @param path     relative to the working directory, unless it begins with "/".
 * @param mode     1: read only, shared lock. 2: read and write, exclusive lock. 3: as 2, and a missing file is created
 *                 with permissions 0666 less the umask.
 * @param retries  further attempts after a failed one, each after half a second; 0 or less for none. A missing or
 *                 forbidden file is not tried again.
 * @param handle   receives the handle, which the caller closes; untouched on failure.
 * @return 0, or
 *         1 unknown mode, or the system calls an argument invalid,
 *         2 out of memory,
 *         8 access denied,
 *         9 the file does not exist,
 *         14 the file cannot be opened for another reason,
 *         16 the lock is refused: another process holds it (errno EAGAIN or EACCES) or it cannot be set,
 *         21 and 15 the same two cases when closing the file failed as well.
 */
ZEL_API int vor_safeOpenFile(const char* path, int mode, int retries, VOR_FileHandle** handle);

/**
 * Drops the lock, closes the file and frees the handle.
 * @return 0; 18 if the lock could not be dropped (the file is still open) or 16 if the file could not be closed: the
 *         handle stays the caller's, who may try again.
 */
ZEL_API int vor_safeCloseFile(VOR_FileHandle* handle);

/**
 * Reads the whole file and turns each CR LF into LF; other carriage returns stay.
 * @param handle   stays open; its position is behind what was read.
 * @param readMode 1: the size is where a seek to the end arrives. 2: the size is found by reading the file through,
 *                 for files that do not report theirs. Any other: the size is taken as 0.
 * @param buffer   receives the contents, to be released with vor_safeFreeBuffer; null on failure.
 * @param length   receives the number of bytes; 0 on failure. Only this tells where the text ends: the zero byte
 *                 stands behind the bytes as they were read, and what lies between is left over from them.
 * @return 0 also for a file that turned out shorter; 2 out of memory or more than fits in 32 bits, 10 a seek failed,
 *         11 a read failed.
 */
ZEL_API int vor_safeReadContents(VOR_FileHandle* handle, int readMode, char** buffer, unsigned int* length);

/**
 * Writes with a single system call and forces the contents to disk.
 * @param handle    stays open; its position is behind what was written.
 * @param writeMode 1: replace the contents. 2: append; forced to disk only by the first append of each second of the
 *                  clock. Any other: write at the current position.
 * @param buffer    the bytes to write, as they are: line ends are only changed by reading.
 * @param length    their number; 0 with mode 1 empties the file.
 * @return 0 also if the system took fewer bytes; 12 a write or sync failed, 19 the file could not be truncated, 20 a
 *         seek failed.
 */
ZEL_API int vor_safeWriteContents(VOR_FileHandle* handle, int writeMode, const char* buffer, unsigned int length);

/** Forces the contents to disk. @return 0, or 12 on failure. */
ZEL_API int vor_safeSyncFile(VOR_FileHandle* handle);

/** Describes the file at a path. @return 0, or -1 on failure: the record is then untouched. */
ZEL_API int vor_safeFileStats(const char* path, VOR_FileStats* stats);

/** Describes an open file. @return 0, or -1 on failure: the record is then untouched. */
ZEL_API int vor_safeHandleStats(VOR_FileHandle* handle, VOR_FileStats* stats);

/** Sets *exists to 1 if the file at a path can be examined, else to 0. @return 0 in both cases. */
ZEL_API int vor_safeFileExists(const char* path, int* exists);

/**
 * Compares sizes and modification times. Two empty files are equal whatever their times: touching an empty file does
 * not change it. checkTime plays no part.
 * @return 0 if the records count as equal, 1 if they differ.
 */
ZEL_API int vor_safeCompareStats(const VOR_FileStats* a, const VOR_FileStats* b);

/**
 * Tells whether the file at a path differs from a record, which is then refreshed.
 * @return 1 if it differs, or cannot be examined (the record is then untouched); 0 if not (untouched as well).
 */
ZEL_API int vor_safeFileStatsAreStale(const char* path, VOR_FileStats* stored);

/** As vor_safeFileStatsAreStale, for an open file. */
ZEL_API int vor_safeHandleStatsAreStale(VOR_FileHandle* handle, VOR_FileStats* stored);

/** Changes the permissions of a file. @return what chmod returns. */
ZEL_API int vor_safeChmod(const char* path, mode_t mode);

/*
 * The four functions that the ones above do their system work with. They are called through their symbols, so that a
 * program may put its own in their place.
 */

/**
 * One attempt of vor_safeOpenFile into a handle that the caller provides.
 * @return 0 or a status of vor_safeOpenFile other than 2.
 */
ZEL_API int internal_OpenFile(const char* path, int mode, VOR_FileHandle* handle);

/** Drops the lock and closes the file, but does not free the handle. @return 0, 16 or 18 as vor_safeCloseFile. */
ZEL_API int internal_CloseFile(VOR_FileHandle* handle);

/** vor_safeReadContents without the treatment of line ends: the zero byte stands at buffer[length]. */
ZEL_API int internal_readContents(VOR_FileHandle* handle, int readMode, char** buffer, unsigned int* length);

/** Sleeps half a second, signals notwithstanding. A cancellation point. */
ZEL_API void internal_sleepForAWhile(void);

#ifdef __cplusplus
}
#endif

#endif
