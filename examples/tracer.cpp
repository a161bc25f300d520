// What a traced function leaves behind: first in memory, then as it happens.
#include <iostream>

#include <zel/zel.h>

namespace {

void convert(int celsius) {
    ZEL::Tracer trace("convert", "Weather", __LINE__, true); // static names; true: with time and thread
    trace.printf("%d degrees Celsius", celsius);
    trace.write(ZEL::RT::StringUtils::ToString(celsius * 9 / 5 + 32), " degrees Fahrenheit", __LINE__);
}

int print(const char* line, int length) {
    std::cout.write(line, length) << "\n";
    return 0; // ignored
}

void run() {
    convert(21);
    std::cout << "-- from memory:\n";
    ZEL::TRACE::setTraceCallback(print);

    std::cout << "-- as it happens:\n";
    {
        ZEL::Tracer trace("forecast", false); // without time and thread
        trace.writeln("only", " this", 0);
    }
    ZEL::TRACE::setTraceDefault(); // into memory again
}

} // namespace

int main() {
    try {
        run();
        return 0;
    } catch (const std::exception& e) {
        std::cerr << e.what() << "\n";
        return 1;
    }
}
