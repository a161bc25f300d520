/** @file
 * What a library of the suite says about itself.
 *
 * Every library of the suite exports a zel_getLibraryInfo, under this name and with this record, and is asked for it
 * when it is loaded. A program that links to several of them calls the one that comes first; to ask a certain library,
 * look the symbol up in its handle.
 */
#ifndef ZEL_API_ZEL_INFO_H
#define ZEL_API_ZEL_INFO_H

#include "zel/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Texts of the library, which are neither changed nor freed; null where the library says nothing. */
typedef struct zel_LibraryInfo {
    const char* version;     /**< such as "2.0.2.6"; traced when the library is loaded */
    const char* buildNumber; /**< such as "1274432"; traced behind the version */
    const char* buildTag;    /**< such as "77"; means what each library wants it to */
    const char* productName; /**< the suite that the library is part of */
    const char* libraryName; /**< the library within it, such as "ZEL-RT" */
    const char* platformTag; /**< system, compiler generation, processor and kind of build */
    const char* buildDate;   /**< such as "Dec 19 2011", as the compiler writes it */
    const char* buildTime;   /**< such as "03:44:56" */
    const char* note;        /**< anything else; "N/A" in this library */
    const char* releaseKind; /**< such as "Official Release" */
} zel_LibraryInfo;

#ifdef __cplusplus
static_assert(sizeof(zel_LibraryInfo) == 10 * sizeof(const char*), "the record is shared among libraries");
#endif

/** Fills the record, which must not be null. Callers that ask other libraries set it to null before: not all fill it.
 */
ZEL_API void zel_getLibraryInfo(zel_LibraryInfo* info) __attribute__((nonnull));

/** The version of this library, whichever zel_getLibraryInfo comes first in the process. */
ZEL_API const char* zel_getVersionString(void);

#ifdef __cplusplus
}
#endif

#endif
