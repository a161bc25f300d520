#include "bench.h"
#include "inputs.h"

#include <exception>

#include <Poco/Exception.h>
#include <boost/exception/all.hpp>

namespace {

using namespace bench;

void throwPoco() {
    try {
        throw Poco::OpenFileException(inputs::message, inputs::fileName, inputs::code);
    } catch (const Poco::IOException& e) {
        keep(e);
    }
}

struct Failure : virtual boost::exception, virtual std::exception {};
using EntryCode = boost::error_info<struct EntryCodeTag, int>;
using Message = boost::error_info<struct MessageTag, const char*>;

void throwBoost() {
    try {
        BOOST_THROW_EXCEPTION(Failure() << boost::errinfo_file_name(inputs::fileName) << EntryCode(inputs::code)
                                        << Message(inputs::message));
    } catch (const Failure& e) {
        keep(e);
    }
}

const Peers peers([] {
    find("throw and catch an IOException, 24 records")
        .peer("POCO", each(throwPoco), 1.8)
        .peer("boost::exception", each(throwBoost), 1.25);
});

} // namespace
