// A key that leaves no trace in memory, and a point in time.
#include <iostream>
#include <string>

#include <zel/vor.h>
#include <zel/zel.h>

namespace {

void run() {
    const unsigned char bytes[] = {0x01, 0xAB, 0x00, 0xFF};
    const auto key = ZEL::createByteArray(sizeof bytes, bytes);
    std::cout << "key: " << key->toReadable() << ", " << key->getSize() << " bytes\n";

    const ZEL::RT::SmartPointer<ZEL::DATA::IByteArray> copy(key->clone());
    std::cout << "the copy is " << (*copy == *key ? "equal" : "different") << "\n";
    key->setData(2, bytes); // the old bytes are erased, and here the buffer stays
    std::cout << "key: " << key->toReadable() << ", ahead of the copy: " << (*key < *copy ? "yes" : "no") << "\n";

    std::string phrase = copy->toString(); // what is copied out is for you to erase
    ZEL::RT::StringUtils::shredString(phrase);

    vor_safeSetenv("TZ", "UTC0"); // dates are local
    std::cout << ZEL::Date::getShortString(1324266296) << "\n"
              << ZEL::Date::getShortString(1324296000) << "\n"; // noon has the hour 0
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
