/** @file
 * Marks what the shared library exports; everything without the mark is hidden.
 * Usable from C and C++.
 */
#ifndef ZEL_EXPORT_H
#define ZEL_EXPORT_H

/** Ahead of what callers may link to. A class that is thrown or cast across libraries carries it as a whole, so that
 * its type information is exported, too. */
#define ZEL_API __attribute__((visibility("default")))

/** Keeps a private member function of an exported class inside. */
#define ZEL_LOCAL __attribute__((visibility("hidden")))

#endif
