// load_plugin FOLDER: loads libplugin.so out of FOLDER and calls what is in it, and shows what happens to names that
// are not there.
//
// Ends with status 0 when every step went as its comment says, else with 1 and a message.
#include "plugin/plugin.h"

#include <iostream>
#include <stdexcept>
#include <string>

#include <zel/vor.h>
#include <zel/zel.h>

using ZEL::RT::DllManager;
using ZEL::RT::DynamicMethod;
using ZEL::RT::FunctionTableImpl;

namespace {

void title(const std::string& text) { std::cout << "\n== " << text << "\n"; }

void expect(bool asDescribed, const std::string& description) {
    if (!asDescribed)
        throw std::runtime_error("this did not happen: " + description);
    std::cout << description << "\n";
}

// An address knows no type; the one who asked for it does.
template <class F> F* function(void* address) { return reinterpret_cast<F*>(address); }

void print(const zel_LibraryInfo& info) {
    const auto line = [](const char* name, const char* text) {
        std::cout << name << (text != nullptr ? text : "(not told)") << "\n";
    };
    line("version:       ", info.version);
    line("build number:  ", info.buildNumber);
    line("build tag:     ", info.buildTag);
    line("product name:  ", info.productName);
    line("library name:  ", info.libraryName);
    line("platform tag:  ", info.platformTag);
    line("build date:    ", info.buildDate);
    line("build time:    ", info.buildTime);
    line("note:          ", info.note);
    line("release kind:  ", info.releaseKind);
}

void loadPlugin(const std::string& folder) {
    title("A library, loaded by the manager and bound by a table");
    // The manager keeps the library until the process ends. Whoever asks again gets the same.
    const auto plugin = DllManager::loadLibrary("plugin", folder);
    expect(DllManager::loadLibrary("libplugin.so", "") == plugin, "loaded once: " + plugin->getLibraryName());
    FunctionTableImpl table("plugin");
    table.addMethod(DynamicMethod("add", "plugin_add")); // the name to ask for, and the symbol behind it
    table.addMethod(DynamicMethod("greeting", "plugin_greeting"));
    expect(table.load(plugin), "bound as a whole");
    const auto add = function<decltype(plugin_add)>(table.retrieveFunction("add"));
    const auto greeting = function<decltype(plugin_greeting)>(table.retrieveFunction("greeting"));
    std::cout << "add(2, 3) = " << add(2, 3) << "\n" << greeting() << "\n";

    title("A symbol that is missing");
    FunctionTableImpl incomplete("incomplete");
    incomplete.addMethod(DynamicMethod("add", "plugin_add"));
    incomplete.addMethod(DynamicMethod("subtract", "plugin_subtract"));
    expect(!incomplete.load(plugin), "not bound: plugin_subtract is missing");
    expect(incomplete.retrieveFunction("add") != nullptr, "what came before it has its address");

    title("A library of the system, by flat functions");
    void* const mathematics = vor_loadLibrary("libm.so.6");
    const auto cosine = function<double(double)>(vor_loadSymbol(mathematics, "cos"));
    expect(cosine != nullptr, "cos is in libm.so.6");
    std::cout << "cos(0.5) = " << cosine(0.5) << "\n";
    expect(vor_unloadLibrary(mathematics) == 0, "given back");

    title("A library that is missing");
    bool caught = false;
    try {
        DllManager::loadLibrary("missing", "");
    } catch (const ZEL::EXCEPTIONS::IOException& e) {
        std::cout << "name:            " << e.getExceptionName() << "\n"
                  << "entry code:      " << e.getEntryCode() << "\n"
                  << "message:         " << e.what() << "\n"
                  << "FileName:        " << e.getFileName() << "\n"
                  << "execution point: " << e.getExecutionPoint() << "\n";
        caught = true;
    }
    expect(caught, "loading it failed as it should");

    title("What the plugin says about itself");
    zel_LibraryInfo info = {};
    function<decltype(zel_getLibraryInfo)>(plugin->getSymbol("zel_getLibraryInfo"))(&info);
    print(info);

    title("What this library says about itself");
    zel_getLibraryInfo(&info);
    print(info);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: load_plugin FOLDER\n";
        return 1;
    }
    try {
        loadPlugin(argv[1]);
        if (!(std::cout << std::flush))
            throw std::runtime_error("cannot write to standard output");
        return 0;
    } catch (const ZEL::EXCEPTIONS::ZelException& e) {
        std::cerr << "load_plugin: " << argv[1] << ": " << e.what() << " (" << e.getExecutionPoint() << ")\n";
    } catch (const std::exception& e) {
        std::cerr << "load_plugin: " << argv[1] << ": " << e.what() << "\n";
    }
    return 1;
}
