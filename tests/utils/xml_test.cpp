#include "zel/utils/PropertiesImpl.h"
#include "zel/utils/XmlUtils.h"

#include "support/Generator.h"

#include <algorithm>
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

TEST(Xml, FormsValuesAndAttributes) {
    EXPECT_EQ(XmlUtils::ToElement("p", "", XmlUtils::ToAttribute("a", "\"")), "<p  a=\"\"\"></p>");
    EXPECT_EQ(XmlUtils::ToElement("x", "<&>", Texts{"p", "q"}) + XmlUtils::ToElement("x", "v", Texts{}) +
                  XmlUtils::ToElement("x", "v", Texts{""}),
              "<x  p q><&></x><x>v</x><x  >v</x>");
    for (const char* text : {"  <a>  ", "<>", "\r\n<a></b>\n"})
        EXPECT_TRUE(XmlUtils::IsXML(text)) << text;
    for (const char* text : {"", " ", "<", ">", "<a", "a>", "\t<a>", "<a>\t"})
        EXPECT_FALSE(XmlUtils::IsXML(text)) << text;
    EXPECT_EQ(XmlUtils::GetElementValue("a", "<l><a x><b/> 1</a></l>"), "<b/> 1");
    EXPECT_EQ(XmlUtils::GetElementValue("a", "<a x=\"1>2\"/>") + XmlUtils::GetElementValue("a", "<b>1</b>"), "");
    EXPECT_EQ(XmlUtils::GetAttributeValue("id", "<e xid=\"7\" id=\"8\"/>", "default"), "7");
    EXPECT_EQ(XmlUtils::GetAttributeValue("id", "<e>id=\"\"</e>", "default"), "");
    for (const char* xml : {"<e id='8'/>", "<e id = \"8\"/>", "<e id=\"8", ""})
        EXPECT_EQ(XmlUtils::GetAttributeValue("id", xml, "default"), "default") << xml;
}

// The searches as they are described to callers, without any memory of what was seen.
std::string plainElement(const std::string& name, const std::string& xml) {
    std::size_t start = absent;
    for (const char* end : {">", " ", "/>"})
        start = start != absent ? start : xml.find("<" + name + end);
    if (start == absent)
        return "";
    const std::string closing = "</" + name + ">";
    const std::size_t end = xml.find(closing, start), selfClosing = xml.find("/>", start);
    if (end != absent && end > start)
        return xml.substr(start, end + closing.size() - start);
    const bool closed = selfClosing > start && selfClosing < std::min(xml.find('<', start + 1), xml.size());
    return closed ? xml.substr(start, selfClosing + 2 - start) : "";
}

Texts plainElements(const std::string& name, std::string rest) {
    Texts elements;
    for (std::string element; !(element = plainElement(name, rest)).empty(); elements.push_back(element))
        rest.erase(0, rest.find(element) + element.size());
    return elements;
}

TEST(Xml, GeneratedTextsGiveWhatThePlainSearchesGive) {
    for (const std::string name :
         {"a", "ab", "", "/", "//", "a/", "/a", "a>b", "a/>b", "/>", ">", "<a", "<", "a ", "a b"}) {
        const std::string plain = "<" + name + ">", closing = "</" + name + ">";
        Generator generated{{"<", ">", "/", " ", "a", "b", "/>", "<a>", "x=\"1\"", name, plain, plain, "<" + name + " ",
                             "<" + name + " ", "<" + name + "/>", closing, closing, closing}};
        std::size_t found = 0;
        for (int round = 0; round < 4000; ++round) {
            const std::string xml = generated(13);
            const Texts expected = plainElements(name, xml);
            ASSERT_EQ(XmlUtils::getElements(name, xml), expected) << name << " in " << xml;
            ASSERT_EQ(XmlUtils::GetElement(name, xml), expected.empty() ? "" : expected.front()) << xml;
            found += expected.size();
        }
        EXPECT_GT(found, 1000u) << name;
    }
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
