// What a failing operation tells its caller.
#ifndef ZEL_TESTS_SUPPORT_FAILURE_H
#define ZEL_TESTS_SUPPORT_FAILURE_H

#include "zel/exceptions/ZelException.h"

#include <string>

// All that the exception of an operation carries, in one line; "" if it throws none.
template <class Operation> std::string failureOf(Operation&& operation) {
    try {
        return operation(), "";
    } catch (const ZEL::EXCEPTIONS::ZelException& e) {
        return e.getExceptionName() + ' ' + e.getCatalogName() + ' ' + std::to_string(e.getEntryCode()) + ' ' +
               e.getEntryName() + ": " + e.what() + ' ' + e.getExecutionPoint();
    }
}

#endif
