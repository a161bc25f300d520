#include "bench.h"
#include "inputs.h"

#include <ctime>
#include <exception>
#include <string>

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

// With the facts that an exception of the library has beyond its class and place.
struct Failure : virtual boost::exception, virtual std::exception {};
using Catalogue = boost::error_info<struct CatalogueTag, std::string>;
using EntryCode = boost::error_info<struct EntryCodeTag, int>;
using EntryName = boost::error_info<struct EntryNameTag, std::string>;
using Message = boost::error_info<struct MessageTag, std::string>;
using Time = boost::error_info<struct TimeTag, std::time_t>;

void throwBoost() {
    try {
        BOOST_THROW_EXCEPTION(Failure() << boost::errinfo_file_name(inputs::fileName) << Catalogue("ZEL")
                                        << EntryCode(inputs::code) << EntryName("code") << Message(inputs::message)
                                        << Time(std::time(nullptr)));
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
