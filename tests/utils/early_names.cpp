// A library whose static initialisers use the separators of names.
#include "zel/utils/UrnUtils.h"

using ZEL::RT::UrnUtils;

ZEL_API extern const std::string earlyNames;
const std::string earlyNames = UrnUtils::ToURN("f", "h", 1, "p", "x", "y") + UrnUtils::UserSeparator;
