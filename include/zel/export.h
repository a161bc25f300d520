/** @file
 * Marks what the shared library exports; everything without the mark is hidden.
 * Usable from C and C++.
 */
#ifndef ZEL_EXPORT_H
#define ZEL_EXPORT_H

#define ZEL_API __attribute__((visibility("default")))

/* Keeps a private member function of an exported class inside. */
#define ZEL_LOCAL __attribute__((visibility("hidden")))

#endif
