#include "tracer/LastingNames.h"

#include <cstddef>
#include <cstring>
#include <functional>
#include <new>
#include <set>
#include <string>
#include <string_view>

#include <dlfcn.h>

namespace ZEL::RT {

namespace {

using Names = std::set<std::string, std::less<>>;

Names* names = nullptr; // never destroyed

const char* copyOf(std::string_view name) {
    try {
        if (names == nullptr)
            names = new Names;
        const auto known = names->find(name);
        return (known != names->end() ? known : names->emplace(name).first)->c_str();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

const char* LastingNames::of(const char* name) {
    dl_find_object object;
    if (::_dl_find_object(const_cast<char*>(name), &object) != 0)
        return name;
    // Whoever unloads libraries behind our back may leave names that point into the next one.
    const char* const end = static_cast<const char*>(object.dlfo_map_end);
    return copyOf({name, ::strnlen(name, static_cast<std::size_t>(end - name))});
}

void LastingNames::renew() { names = nullptr; }

} // namespace ZEL::RT
