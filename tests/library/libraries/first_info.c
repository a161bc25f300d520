/* Says only its version. */
#include "zel/api/zel_info.h"

void zel_getLibraryInfo(zel_LibraryInfo* info) { info->version = "5"; }
