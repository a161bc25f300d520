#include "bench.h"

#include <string>

#include <absl/strings/escaping.h>

namespace {

const bench::Peers peers([] {
    std::string bytes(1 << 10, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 37);
    bench::find("hexadecimal of 1 KiB")
        .peer("absl::BytesToHexString", bench::each([bytes] { bench::keep(absl::BytesToHexString(bytes)); }), 0.75);
});

} // namespace
