#include "zel/utils/PropertiesImpl.h"
#include "zel/utils/XmlUtils.h"

#include <string_view>

#include <gtest/gtest.h>
#include <string.h>

using ZEL::RT::XmlUtils;
using Texts = std::vector<std::string>;

static std::size_t scannedBytes = 0;
constexpr std::size_t absent = std::string::npos;

// Stands before the C library's: counts how far the library looks.
extern "C" void* memmem(const void* text, std::size_t size, const void* pattern, std::size_t length) noexcept {
    const std::string_view searched(static_cast<const char*>(text), size);
    const std::size_t found = searched.find(std::string_view(static_cast<const char*>(pattern), length));
    scannedBytes += found == absent ? size : found + length;
    return found == absent ? nullptr : const_cast<char*>(searched.data() + found);
}

namespace {

// All else about forms and searches is xml_fuzz's.
TEST(Xml, AttributesAsAList) {
    EXPECT_EQ(XmlUtils::ToElement("x", "v", Texts{}) + XmlUtils::ToElement("x", "v", Texts{""}), "<x>v</x><x  >v</x>");
}

TEST(Xml, NoStretchIsSearchedAgainAndAgain) {
    const auto many = [](const std::string& text) {
        std::string result;
        while (result.size() < 200000)
            result += text;
        return result;
    };
    for (const std::string& xml :
         {many("<i>1</i>"), many("<i >1</i>"), many("<i/>"), many("<i/>") + "<i>1</i>",
          "<i>1</i>" + many("<i/>") + "</i>", many("<i >1</i>") + "/>", many("<i>"), many("<a/>c") + "<a/>b>"})
        for (const char* name : {"i", "a/>b"}) { // with the latter, elements are found far ahead
            scannedBytes = 0;
            XmlUtils::getElements(name, xml);
            EXPECT_TRUE(scannedBytes >= xml.size() && scannedBytes <= 6 * xml.size()) << name << xml.substr(0, 9);
        }
    const std::string xml = "<properties>" + many("<property name=\"1\">1</property>") + "</properties>";
    scannedBytes = 0;
    ZEL::RT::PropertiesImpl().loadFromXML(xml);
    EXPECT_LE(scannedBytes, 8 * xml.size());
}

} // namespace
