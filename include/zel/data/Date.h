/// @file
/// Point in time.
#ifndef ZEL_DATA_DATE_H
#define ZEL_DATA_DATE_H

#include "zel/export.h"

#include <string>

namespace ZEL {

/// A point in time in whole seconds since the epoch, and its short local form.
/// An object is not locked; the static functions may be called from any thread, also in the child of a fork.
class ZEL_API Date {
public:
    /// Now.
    Date();
    virtual ~Date();

    /// Seconds since the epoch.
    /// @{
    void setValue(long value);
    long getValue();
    /// @}

    /// The local time of \p t in a 12-hour form such as "12/19/11  3:44:56 AM": month and hour padded with a blank,
    /// day, year, minutes and seconds with a zero. Noon and midnight both print hour " 0". A time whose year the
    /// system cannot express prints as " 1/00/00  0:00:00 AM".
    /// @param t seconds since the epoch; -1 stands for now.
    static std::string getShortString(long t);

    /// The same as getShortString(): there is no longer form.
    static std::string getLongString(long t);

private:
    long value_;
};

} // namespace ZEL

#endif
