#include "bench.h"

#include <string>

#include <dlfcn.h>
#include <zel/zel.h>

namespace {

using namespace bench;
using ZEL::RT::DynamicLibraryImpl;
using ZEL::RT::Library;

const std::string symbol = "vor_safeOpenFile";

const Rows rows([] {
    // The library looks itself up.
    static const DynamicLibraryImpl library(Library("zel-rt", ZEL_BENCH_FOLDER));
    static void* const handle = ::dlopen(ZEL_BENCH_FOLDER "/libzel-rt.so", RTLD_NOW);
    row("getSymbol, 3 records", each([] { keep(library.getSymbol(symbol)); }))
        .limit("dlsym", each([] { keep(::dlsym(handle, symbol.c_str())); }), 3.4);
});

} // namespace
