/* Says everything about itself. */
#include "zel/api/zel_info.h"

void zel_getLibraryInfo(zel_LibraryInfo* info) {
    const zel_LibraryInfo all = {"7.1",          "1234",        "9",        "Product", "Full",
                                 "linux_test_r", "Jan  1 2020", "00:00:01", "note",    "Test Release"};
    *info = all;
}
