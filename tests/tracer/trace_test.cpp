#include "zel/zel.h"

#include "support/CapturedTrace.h"
#include "support/FaultShim.h"
#include "support/Sanitizers.h"
#include "support/TemporaryDirectory.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <ctime>
#include <thread>

#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

using ZEL::Tracer;
using ZEL::RT::TraceRecord;
using namespace ZEL::TRACE;

namespace {

std::string heard; // by callbacks

struct TraceWriter : ::testing::Test {
    TraceWriter() {
        CapturedTrace(); // leaves an empty ring
        heard.clear();
    }
    ~TraceWriter() override { setTraceDefault(); }
};

TEST(TraceRecord, LineHasThePartsThatAreKnown) {
    Tracer both("op", "Class", 0, false), onlyClass(nullptr, "Class", 0, false), neither(nullptr, nullptr, 0, false);
    const std::pair<TraceRecord, const char*> rows[] = {
        {{both, 42, "text"}, " Class::op() @42: text"},
        {{both, 0, "text"}, " Class::op(): text"},
        {{both, -3, "a", "b"}, " Class::op(): ab"},
        {{onlyClass, 1, ""}, " Class:: @1: "},
        {{neither, 7, "text"}, ": text"}, // a line is only shown within a location
    };
    for (const auto& [record, line] : rows)
        EXPECT_EQ(record.toString(), line);

    const long before = std::time(nullptr);
    const std::string line = TraceRecord("op", nullptr, 9, "text").toString();
    const std::string rest =
        " Thread " + std::to_string(static_cast<int>(ZEL::RT::Thread::myThreadID())) + " op() @9: text";
    EXPECT_TRUE(line == ZEL::Date::getShortString(before) + rest || line == ZEL::Date::getShortString(-1) + rest)
        << line;
}

TEST(Tracer, WritesWhatItIsGiven) {
    const CapturedTrace trace;
    {
        Tracer().write("w", 1);
        Tracer tracer("op", "Class", 5, false);
        tracer.write("a", 2);
        tracer.write("a", "b", 3);
        tracer.writeln("c", 4);
        tracer.writeln("c", nullptr, 0);
        tracer.printf("%s-%d", "f", 6);
        tracer.printf(7, "%c", 'g');
        tracer.printf(static_cast<const char*>(nullptr));
        tracer.write(TraceRecord(Tracer("other", false), 8, "h"));
    }
    EXPECT_EQ(trace.text(),
              ": w\n Class::op() @5: Entering\n Class::op() @2: a\n Class::op() @3: ab\n"
              " Class::op() @4: c\n Class::op(): c\n Class::op(): f-6\n Class::op() @7: g\n"
              " Class::op(): \n other(): Entering\n other() @8: h\n other(): Leaving\n Class::op(): Leaving\n");
}

// Every message, its 1023 characters filled up to any point, comes out as the C library formats it.
TEST(Tracer, FormatsAsTheCLibraryDoes) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
    const auto compare = [](const char* format, auto... arguments) {
        for (const std::size_t room : {1023U, 0U, 1U, 2U, 5U, 12U}) {
            const std::string text = std::string(1023 - room, 'x') + format;
            char expected[1024];
            std::snprintf(expected, sizeof expected, text.c_str(), arguments...);
            const CapturedTrace trace;
            Tracer().printf(text.c_str(), arguments...);
            EXPECT_EQ(trace.text(), ": " + std::string(expected) + "\n") << format << ", room for " << room;
        }
    };
#pragma GCC diagnostic pop
    compare("no conversion%%");
    compare("%d%%%d|%u|%x|%lu|%lx.", INT_MIN, INT_MAX, UINT_MAX, 0xFACADEU, ULONG_MAX, ULONG_MAX);
    compare("%d %u %x %lx", 0, 0U, 0U, 0UL);
    compare("<%s> and %s", "", "bytes above 127: \xE4\xFF");
    compare("%s", static_cast<const char*>(nullptr));
    compare("%s", std::string(5000, 'y').c_str());
    // What only the C library can do, after what it need not.
    compare("%s %5d|%-4u|%08x|%.2s|%+d", "a", 42, 7U, 0xABU, "text", 1);
    compare("%sd", "a");
    compare("%x %ldu", 1U, -1L);
    compare("%x %ldx", 1U, -1L);
    compare("%u %c %lld %zu %hd %ld %p", 1U, 'c', -1LL, std::size_t{3}, 4, -5L, static_cast<void*>(nullptr));
}

TEST_F(TraceWriter, RingKeepsTheLast256InOrder) {
    for (const int count : {1, 255, 256, 257, 300, 1000}) {
        std::string expected;
        for (int i = 0; i < count; ++i) {
            // Texts of all lengths, so that slots shrink and grow.
            const std::string text = std::to_string(i) + std::string(static_cast<std::size_t>(i * 37 % 2000), '.');
            Tracer().write(text, 0);
            if (i >= count - 256)
                expected += ": " + text + "\n";
        }
        std::ostringstream out;
        setTraceToStream(&out);
        setTraceDefault();
        EXPECT_EQ(out.str(), expected);
    }
}

TEST_F(TraceWriter, LongTextsTakeNoRoomBehindShortOnes) {
    const auto write = [](const std::string& text) {
        for (int i = 0; i < 256; ++i)
            Tracer().write(text, 0);
        const auto memory = ::mallinfo2();
        return memory.uordblks + memory.hblkhd;
    };
    const std::size_t before = write("short"), filled = write(std::string(100'000, 'x'));
    EXPECT_LT(write("short"), before + 1'000'000);
    if (!addressSanitizer && !threadSanitizer) { // whose memory the C library does not know
        EXPECT_GT(filled, before + 25'000'000);
    }
}

TEST_F(TraceWriter, CallbackGetsTextAndLengthButNothingThatItTracesItself) {
    Tracer().write("kept", 0);
    setTraceCallback([](const char* text, int length) {
        heard += std::string(text) + "/" + std::to_string(length) + ";";
        Tracer("nested", true).printf("dropped");
        ZEL::RT::TraceWriter::getInstance()->flushRingBuffer();
        return 17;
    });
    Tracer().write("printed", 0);
    setTraceDefault();
    EXPECT_EQ(heard, ": kept/6;: printed/9;");
}

TEST_F(TraceWriter, RecordsArePlacedByHand) {
    auto& writer = *ZEL::RT::TraceWriter::getInstance();
    const auto record = [](const char* text) { return TraceRecord(Tracer(), 0, text); };
    writer.addRecord(record("1"));
    writer.printRecord(record("nowhere to print"));
    writer.writeRecord(record("2"));
    writer.flushRingBuffer();
    std::ostringstream out;
    setTraceToStream(&out);
    writer.addRecord(record("5"));
    writer.printRecord(record("3"));
    writer.writeRecord(record("4"));
    writer.flushRingBuffer();
    EXPECT_EQ(out.str(), ": 1\n: 2\n: 3\n: 4\n: 5\n");
}

TEST_F(TraceWriter, FileIsEmptiedClosedAndLostWhenItCannotBeOpened) {
    const TemporaryDirectory directory;
    const std::string path = directory.file("trace", "old contents");
    setTraceToFile(path.c_str());
    Tracer().write("one", 0);
    EXPECT_EQ(directory.contents(path), ": one\n") << "every line is flushed";
    errno = EXDEV;
    setTraceToFile(directory.path("missing/trace").c_str());
    Tracer().write("lost", 0);
    setTraceToFile(nullptr);
    Tracer().write("lost too", 0);
    setTraceDefault();
    Tracer().write("two", 0);
    setTraceToFile(path.c_str());
    setTraceDefault();
    EXPECT_EQ(errno, EXDEV) << "tracing leaves it alone";
    EXPECT_EQ(directory.contents(path), ": two\n");
}

TEST_F(TraceWriter, StreamSettingsOfTheCallerDoNotShow) {
    std::ostringstream out;
    setTraceToStream(&out);
    out.width(30);
    Tracer().write("plain", 0);
    setTraceToStream(nullptr);
    Tracer().write("lost", 0);
    setTraceCallback(nullptr);
    Tracer().write("lost", 0);
    EXPECT_EQ(out.str(), ": plain\n");
}

TEST_F(TraceWriter, AnExceptionIsTracedUntilTheTraceFailsAndLeft) {
    setTraceCallback([](const char* text, int) {
        const std::string line = text, what = line.substr(line.rfind(": ") + 2);
        heard += what + ";";
        return what == "-9" ? throw std::runtime_error("callback") : 0;
    });
    const ZEL::EXCEPTIONS::IOException traced("file", "ZEL", -1085, "code", "text", nullptr, -1, nullptr);
    EXPECT_EQ(heard, "Entering;IOException;-9;Leaving;");
}

TEST_F(TraceWriter, ACallbackThatSwitchesClosesWhatItOpened) {
    const int unused = ::dup(0);
    ::close(unused);
    setTraceCallback([](const char*, int) { return setTraceToFile("/dev/null"), setTraceDefault(), 0; });
    Tracer().write("x", 0);
    EXPECT_EQ(::dup(0), unused);
    ::close(unused);
}

TEST_F(TraceWriter, WhatACallbackThrowsPassesOutWithLocksReleased) {
    const auto throwing = [](const char*, int) -> int { throw std::runtime_error("callback"); };
    setTraceCallback(throwing);
    EXPECT_THROW(Tracer("op", false), std::runtime_error);
    setTraceDefault();
    {
        Tracer tracer("op", false);
        EXPECT_THROW(setTraceCallback(throwing), std::runtime_error);
        EXPECT_THROW(tracer.write("x", 0), std::runtime_error);
    } // leaves in silence
    std::thread([] { setTraceDefault(); }).join();
}

// What the traced program printed with such an environment.
std::string run(const std::string& settings, const std::string& argument = "") {
    FILE* const pipe = ::popen((settings + " " ZEL_TEST_TRACED_PROGRAM " " + argument).c_str(), "r");
    std::string output;
    for (int c; (c = std::fgetc(pipe)) != EOF;)
        output += static_cast<char>(c);
    return output + (::pclose(pipe) == 0 ? "" : "FAILED");
}

TEST_F(TraceWriter, TracesFromFirstToLast) {
    const TemporaryDirectory directory;
    const std::string path = directory.file("trace", "old contents"), setting = "VOR_TRACE='" + path + "'";
    std::string all = " early library(): caught\n early library(): Leaving\n";
    for (const char* name : {"static initialiser", "main", "exit handler", "static destructor"})
        all += " " + std::string(name) + "(): Entering\n " + name + "(): Leaving\n";
    const auto isWhole = [&](const std::string& trace) {
        return trace.find(" early library(): Entering\n") == 0 && trace.find(all) != std::string::npos;
    };
    EXPECT_EQ(run(setting), "");
    EXPECT_PRED1(isWhole, directory.contents(path));
    EXPECT_PRED1(isWhole, run("VOR_TRACE=", "stdout")); // an empty value counts as unset
    directory.file("trace", "old contents");
    EXPECT_PRED1(isWhole, run("ZEL_TEST_RAISED=1 " + setting, "stdout"));
    EXPECT_EQ(directory.contents(path), "old contents") << "a caller must not choose where raised privileges write";
}

TEST_F(TraceWriter, ARingThatCannotGrowStaysWhole) {
    const std::string longText(100, 'x');
    Tracer tracer;
    for (int i = 0; i < 300; ++i)
        tracer.write(std::to_string(i), 0);
    {
        FaultShim shim({{"memory", ENOMEM, 9}});
        EXPECT_THROW(tracer.write(longText, 0), std::bad_alloc);
        Tracer("a name alone needs no memory", false);
    }
    setTraceCallback([](const char* text, int) { return (heard += text) += '\n', 0; });
    EXPECT_EQ(heard.substr(0, 12), ": 46\n: 47\n: ");
    EXPECT_NE(heard.find(": 299\n a name alone needs no memory(): Entering\n"), std::string::npos);
}

TEST(Queue, TurnsWithoutLosingOrder) {
    ZEL::Queue<int> queue;
    for (const int i : {1, 2, 3})
        queue.push(i);
    queue.turn();
    queue.turn();
    queue.push(4);
    std::string order;
    for (; !queue.empty(); queue.pop())
        order += std::to_string(queue.front());
    EXPECT_EQ(order, "3124");
}

} // namespace
