#include "zel/persistence/ILocalFile.h"

#include "zel/persistence/LocalFileImpl.h"

namespace ZEL::RT {

ILocalFile::~ILocalFile() = default;

SmartPointer<ILocalFile> getLocalFile(const std::string& fileName) {
    return SmartPointer<ILocalFile>(new LocalFileImpl(fileName));
}

} // namespace ZEL::RT
