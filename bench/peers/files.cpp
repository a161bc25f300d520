#include "bench.h"
#include "inputs.h"

#include <string>

#include <Poco/FileStream.h>

namespace {

using namespace bench;

Body readByPoco(std::size_t bytes) {
    return each([bytes] {
        const inputs::Lock lock(inputs::file(bytes));
        Poco::FileInputStream stream(inputs::file(bytes));
        stream.seekg(0, std::ios::end);
        std::string contents(static_cast<std::size_t>(stream.tellg()), '\0');
        stream.seekg(0);
        stream.read(contents.data(), static_cast<std::streamsize>(contents.size()));
        keep(contents);
    });
}

const Peers peers([] {
    find("read under lock, 1 MiB").peer("POCO FileStream", readByPoco(1 << 20), 0.35);
    find("read under lock, 256 MiB").peer("POCO FileStream", readByPoco(256 << 20), 0.6);
});

} // namespace
