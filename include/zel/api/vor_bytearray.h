/** @file
 * Flat functions: byte arrays, for contents that may be secret.
 *
 * No buffer is given back or filled anew before its old contents are overwritten with zeros. Results are 0 for success
 * and 1 for a null record; functions without a result ignore one. Memory that runs out is not reported: the array then
 * keeps the size that was asked for and has no buffer, and vor_containsByteArray answers 0. Nothing throws, nothing
 * blocks; a record is used by one thread at a time.
 *
 * A null source of bytes stands for zeros, a null text for the empty one. Texts are stored without their terminating
 * zero, which does not count, but every buffer has a zero byte behind its contents. Of a text's length the low 32 bits
 * count.
 */
#ifndef ZEL_API_VOR_BYTEARRAY_H
#define ZEL_API_VOR_BYTEARRAY_H

#include "zel/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Bytes and their number. The empty array is {0, NULL}.
 * Every array that was filled is released once, with vor_clearByteArray. Copying the record itself does not copy the
 * bytes: only one of the two records may then be released or filled anew.
 */
typedef struct VOR_ByteArray {
    unsigned int size;   /**< Bytes in use. */
    unsigned char* data; /**< Heap memory of at least size + 1 bytes that belongs to the array, or null. */
} VOR_ByteArray;

#ifdef __cplusplus
static_assert(sizeof(VOR_ByteArray) == 2 * sizeof(void*), "callers allocate this record themselves");
#endif

/**
 * Fills a fresh record with a copy of size bytes; size 0 makes it empty.
 * What the record held before is not looked at: for an array that is in use there is vor_setByteArray.
 */
ZEL_API int vor_initializeByteArray(VOR_ByteArray* array, unsigned int size, const unsigned char* data);

/** Fills a fresh record with a copy of a text. */
ZEL_API int vor_initializeByteArrayFromString(VOR_ByteArray* array, const char* text);

/** 1 if there is a buffer and a size other than 0; else 0, also for a null record. */
ZEL_API int vor_containsByteArray(const VOR_ByteArray* array);

/** Overwrites the contents with zeros; size and buffer stay. */
ZEL_API void vor_shredByteArray(VOR_ByteArray* array);

/** Overwrites and frees the buffer; the array is empty afterwards. An array without a buffer stays as it is. */
ZEL_API void vor_clearByteArray(VOR_ByteArray* array);

/**
 * Replaces the contents by a copy of size bytes; size 0 clears the array.
 * Up to the current size the buffer stays where it is. Beyond it the buffer is replaced, even by one that is no larger,
 * for an array that shrank does not remember what its buffer could hold.
 * The old contents are erased first and the new ones copied then: from a source that begins in the array's own
 * bytes, or at the terminator, come zeros, as many as were asked for.
 */
ZEL_API int vor_setByteArray(VOR_ByteArray* array, unsigned int size, const unsigned char* data);

/** Replaces the contents by a copy of a text, as vor_setByteArray does. */
ZEL_API int vor_setByteArrayFromString(VOR_ByteArray* array, const char* text);

/**
 * Replaces the contents of one array by a copy of another's, as vor_setByteArray does: copied onto itself, an array
 * becomes zeros. 1 if either is null; the target then stays as it is.
 */
ZEL_API int vor_copyByteArray(VOR_ByteArray* target, const VOR_ByteArray* source);

#ifdef __cplusplus
}
#endif

#endif
