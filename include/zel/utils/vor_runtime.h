/** @file
 * Wrappers of the C runtime's string, environment and time functions, with null arguments and bounds pinned down.
 *
 * Nothing here throws, locks or blocks. A null argument for which a function states no result of its own gives null
 * from a function that returns a pointer, and does nothing otherwise. A "size" is a destination's capacity in bytes,
 * its terminating NUL included; a "count" is a number of characters.
 */
#ifndef ZEL_UTILS_VOR_RUNTIME_H
#define ZEL_UTILS_VOR_RUNTIME_H

#include "zel/export.h"

#include <stdarg.h>
#include <stddef.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Releases memory that a function of this library handed out.
 * @return 0, or 1 if the buffer is null. */
ZEL_API int vor_safeFreeBuffer(void* buffer);

/** A lower-case copy of a text, by the rules of the current locale.
 * @param text terminated by a NUL.
 * @param length the text's length without its NUL; the copy ends with the text, whatever the length says.
 * @return the copy, to be released with vor_safeFreeBuffer; null if there is no memory for it. */
ZEL_API char* vor_safeToLower(const char* text, size_t length);

/** Copies at most count characters, as many as fit, and terminates them. Where src is shorter, NULs make up the count.
 * @return dst; null, with dst untouched, if dst or src is null or size or count is 0. With a size of 1 there is room
 * for no character, and dst is returned as it was. */
ZEL_API char* vor_safeStrcpy(char* dst, size_t size, const char* src, size_t count);

/** Appends at most count characters, as many as fit, and terminates them.
 * @return dst; null, with dst untouched, if dst or src is null or size or count is 0. A dst that is full, or has no
 * NUL within size, is returned as it was. */
ZEL_API char* vor_safeStrcat(char* dst, size_t size, const char* src, size_t count);

/** Formats into dst without any bound: size is accepted and ignored, so dst must hold whatever comes out.
 * @return the number of characters written without the NUL; negative on failure, -1 if dst or format is null. */
ZEL_API int vor_safeSprintf(char* dst, size_t size, const char* format, ...) __attribute__((format(printf, 3, 4)));

/** Formats at most count bytes, the NUL included, into dst.
 * @param dst may be null if count is 0, which only measures.
 * @param size accepted and ignored.
 * @param count the capacity of dst in bytes.
 * @param format as for printf; null is a failure.
 * @param args used up, as by vsnprintf.
 * @return the number of characters that the whole text needs without the NUL; negative on failure, -1 if format is
 * null, or dst is and count is not 0. */
ZEL_API int vor_safeVsprintf(char* dst, size_t size, size_t count, const char* format, va_list args)
    __attribute__((format(printf, 4, 0)));

/** The next token of text, cut out of it in place: pass the text first, then null. *state carries the position. */
ZEL_API char* vor_safeStrtok(char* text, const char* delimiters, char** state);

/** Compare like strcmp, strncmp, strcasecmp and strncasecmp. A null text is less than any text and equal to null. @{ */
ZEL_API int vor_safeStrcmp(const char* a, const char* b);
ZEL_API int vor_safeStrncmp(const char* a, const char* b, size_t count);
ZEL_API int vor_safeStrcasecmp(const char* a, const char* b);
ZEL_API int vor_safeStrncasecmp(const char* a, const char* b, size_t count);
/** @} */

/** The first place of needle in haystack, or null. */
ZEL_API char* vor_safeStrstr(const char* haystack, const char* needle);

/** Replaces every from by to, in place.
 * @return how many there were. */
ZEL_API int vor_safeCharReplace(char* text, char from, char to);

/** The value of an environment variable, borrowed from the environment: a later vor_safeSetenv may end its life.
 * @param value receives the same as is returned: the value, or null if the variable is not set.
 * @param length receives the value's length; 0 for a variable that is not set or is empty.
 * @param name without "=". */
ZEL_API char* vor_safeGetenv(char** value, size_t* length, const char* name);

/** Does nothing, as vor_safeGetenv makes no copy; it lets callers release what they got. */
ZEL_API void vor_safeGetenvFree(char* value);

/** Sets an environment variable. Each call's text becomes part of the environment and is never given back.
 * @return 0; -1 if name or value is null, there is no memory, or the environment refuses the text. */
ZEL_API int vor_safeSetenv(const char* name, const char* value);

/** Break a time down by local time and by UTC, by way of the buffer that localtime and gmtime share among all threads:
 * concurrent calls must be kept apart by the caller.
 * @return out; null if out or time is null, or the year does not fit. @{ */
ZEL_API struct tm* vor_safeLocaltime(struct tm* out, const time_t* time);
ZEL_API struct tm* vor_safeGmtime(struct tm* out, const time_t* time);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
