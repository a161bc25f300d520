#include "bench.h"
#include "inputs.h"

#include <Poco/AutoPtr.h>
#include <Poco/Logger.h>
#include <Poco/NullChannel.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/null_sink.h>

namespace {

using namespace bench;

// Below the logger's level nothing goes to the sink; the ring of 256 records takes all.
spdlog::logger& spdlogLogger() {
    static spdlog::logger* const logger = [] {
        auto* made = new spdlog::logger("bench", std::make_shared<spdlog::sinks::null_sink_mt>());
        made->enable_backtrace(256);
        return made;
    }();
    return *logger;
}

void spdlogRecord(spdlog::string_view_t text) {
    spdlogLogger().log(spdlog::source_loc{__FILE__, __LINE__, inputs::scope}, spdlog::level::trace, text);
}

void spdlogScope() {
    spdlogRecord("Entering");
    spdlogRecord("Leaving");
}

void spdlogLongLines() {
    spdlogRecord(inputs::longLine);
    spdlogRecord(inputs::longLine);
}

void spdlogFormat() {
    spdlogLogger().log(spdlog::source_loc{__FILE__, __LINE__, inputs::scope}, spdlog::level::trace,
                       "Error {} opening file {}", inputs::code, inputs::fileName);
}

Poco::Logger& pocoLogger() {
    static Poco::Logger& logger = Poco::Logger::create("bench", Poco::AutoPtr<Poco::NullChannel>(new Poco::NullChannel),
                                                       Poco::Message::PRIO_TRACE);
    return logger;
}

void pocoScope() {
    pocoLogger().trace("Entering", __FILE__, __LINE__);
    pocoLogger().trace("Leaving", __FILE__, __LINE__);
}

const Peers peers([] {
    find("trace scope").peer("spdlog", each(spdlogScope), 0.55).peer("POCO", each(pocoScope), 0.25);
    find("trace scope, two threads").peer("spdlog", onTwoThreads(each(spdlogScope)), 0.65);
    find("two records of 120 characters").peer("spdlog", each(spdlogLongLines), 0.55);
    find("printf of a number and a text").peer("spdlog", each(spdlogFormat), 0.65);
});

} // namespace
