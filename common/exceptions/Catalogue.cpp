#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

bool answersTo(Row row, int code) {
    for (; row != Row::None; row = catalogue(row).codeParent)
        if (catalogue(row).code == code)
            return true;
    return false;
}

bool answersTo(Row row, const std::string& name) {
    for (; row != Row::None; row = catalogue(row).nameParent)
        if (name == catalogue(row).accepted)
            return true;
    return false;
}

} // namespace ZEL::EXCEPTIONS
