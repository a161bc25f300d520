#include "zel/exceptions/IExceptionData.h"

#include "exceptions/ExceptionDataImpl.h"

namespace ZEL::EXCEPTIONS {

IExceptionData::~IExceptionData() = default;

RT::SmartPointer<IExceptionData> createExceptionData() {
    return RT::SmartPointer<IExceptionData>(new ExceptionDataImpl);
}

} // namespace ZEL::EXCEPTIONS
