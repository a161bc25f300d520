/// @file
/// What a refused argument tells its caller.
#ifndef ZEL_TESTS_SUPPORT_REFUSAL_H
#define ZEL_TESTS_SUPPORT_REFUSAL_H

#include "zel/exceptions/InvalidArgumentException.h"

#include <string>

/// All that the InvalidArgumentException of an operation carries, in one line; "" if it throws none.
template <class Operation> std::string refusalOf(Operation&& operation) {
    try {
        operation();
        return "";
    } catch (const ZEL::EXCEPTIONS::InvalidArgumentException& e) {
        return e.getCatalogName() + ' ' + std::to_string(e.getEntryCode()) + ' ' + e.getEntryName() + ": " + e.what() +
               ' ' + e.getSourceFile() + ':' + std::to_string(e.getSourceLine()) + ' ' + e.getSourceFunction();
    }
}

#endif
