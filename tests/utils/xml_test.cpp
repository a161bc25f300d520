#include "zel/utils/PropertiesImpl.h"
#include "zel/utils/XmlUtils.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>
#include <string.h>

using ZEL::RT::XmlUtils;

namespace {

std::size_t scannedBytes = 0;

} // namespace

// Stands before the C library's: counts how far the library looks.
extern "C" void* memmem(const void* text, std::size_t size, const void* pattern, std::size_t length) noexcept {
    const char* const begin = static_cast<const char*>(text);
    const char* const wanted = static_cast<const char*>(pattern);
    const char* const found = std::search(begin, begin + size, wanted, wanted + length);
    scannedBytes += found == begin + size ? size : static_cast<std::size_t>(found - begin) + length;
    return found == begin + size ? nullptr : const_cast<char*>(found);
}

namespace {

using Texts = std::vector<std::string>;

TEST(Xml, Forms) {
    EXPECT_EQ(XmlUtils::QuotedString("a\"b"), "\"a\"b\"");
    EXPECT_EQ(XmlUtils::ToAttribute("k", ""), " k=\"\"");
    EXPECT_EQ(XmlUtils::ToElement("p", ""), "<p></p>");
    EXPECT_EQ(XmlUtils::ToElement("p", "v", XmlUtils::ToAttribute("a", "1")), "<p  a=\"1\">v</p>");
    EXPECT_EQ(XmlUtils::ToElement("x", "<&>", Texts{"p", "q"}), "<x  p q><&></x>");
    EXPECT_EQ(XmlUtils::ToElement("x", "v", Texts{}), "<x>v</x>");
    EXPECT_EQ(XmlUtils::ToElement("x", "v", Texts{""}), "<x  >v</x>");
    for (const char* text : {"  <a>  ", "<>", "\r\n<a></b>\n"})
        EXPECT_TRUE(XmlUtils::IsXML(text)) << text;
    for (const char* text : {"", " ", "<", ">", "<a", "a>", "\t<a>", "<a>\t"})
        EXPECT_FALSE(XmlUtils::IsXML(text)) << text;
}

TEST(Xml, WhatIsFoundFirst) {
    const struct {
        const char* xml;
        const char* element;
        const char* value;
        std::size_t count;
    } rows[] = {
        {"<ab>1</ab><a>2</a>", "<a>2</a>", "2", 1},
        {"<a x=\"1\">1</a><a>2</a>", "<a>2</a>", "2", 1}, // the plain form goes first
        {"<a/><a >2</a>", "<a >2</a>", "2", 1},
        {"<l><a>1</a><a> 2 </a></l>", "<a>1</a>", "1", 2},
        {"<a><a>x</a></a>", "<a><a>x</a>", "<a>x", 1},
        {"<a x=\"1>2\"/><b/><a x=\"3\"/>", "<a x=\"1>2\"/>", "", 2},
        {"<a x=\"1\"><b/>", "", "", 0},
        {"<b>1</b>", "", "", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(XmlUtils::GetElement("a", row.xml), row.element) << row.xml;
        EXPECT_EQ(XmlUtils::GetElementValue("a", row.xml), row.value) << row.xml;
        EXPECT_EQ(XmlUtils::getElements("a", row.xml).size(), row.count) << row.xml;
    }
    EXPECT_EQ(XmlUtils::GetAttributeValue("id", "<e xid=\"7\" id=\"8\"/>", "default"), "7");
    EXPECT_EQ(XmlUtils::GetAttributeValue("id", "<e>id=\"\"</e>", "default"), "");
    for (const char* xml : {"<e id='8'/>", "<e id = \"8\"/>", "<e id=\"8", ""})
        EXPECT_EQ(XmlUtils::GetAttributeValue("id", xml, "default"), "default") << xml;
}

// The searches as they are described to callers, without any memory of what was seen.
std::string plainElement(const std::string& name, const std::string& xml) {
    constexpr std::size_t absent = std::string::npos;
    const std::string closing = "</" + name + ">";
    std::size_t start = xml.find("<" + name + ">");
    if (start == absent)
        start = xml.find("<" + name + " ");
    if (start == absent)
        start = xml.find("<" + name + "/>");
    if (start == absent)
        return "";
    const std::size_t end = xml.find(closing, start);
    if (end != absent && end > start)
        return xml.substr(start, end + closing.size() - start);
    const std::size_t next = std::min(xml.find('<', start + 1), xml.size());
    const std::size_t selfClosing = xml.find("/>", start);
    if (selfClosing == absent || selfClosing <= start || selfClosing >= next)
        return "";
    return xml.substr(start, selfClosing + 2 - start);
}

Texts plainElements(const std::string& name, const std::string& xml) {
    Texts elements;
    std::string rest = xml;
    for (std::string element = plainElement(name, rest); !element.empty(); element = plainElement(name, rest)) {
        elements.push_back(element);
        rest = rest.substr(rest.find(element) + element.size());
    }
    return elements;
}

TEST(Xml, GeneratedTextsGiveWhatThePlainSearchesGive) {
    const std::string names[] = {"a",    "ab", "",  "/",  "//", "a/", "/a", "a>b",
                                 "a/>b", "/>", ">", "<a", "<",  "a ", "a b"};
    const std::string pieces[] = {"<",  ">",   "/",    " ",   "a",    "b",   "/>",
                                  "</", "<a>", "</a>", "<a ", "<a/>", "<b>", "x=\"1\""};
    std::mt19937 random(1);
    for (const std::string& name : names) {
        const std::string own[] = {"<" + name + ">", "<" + name + " ", "<" + name + "/>", "</" + name + ">", name};
        std::size_t found = 0;
        for (int round = 0; round < 4000; ++round) {
            std::string xml;
            for (std::size_t length = random() % 14; length != 0; --length)
                xml += random() % 2 == 0 ? own[random() % std::size(own)] : pieces[random() % std::size(pieces)];
            const Texts expected = plainElements(name, xml);
            ASSERT_EQ(XmlUtils::getElements(name, xml), expected) << name << " in " << xml;
            ASSERT_EQ(XmlUtils::GetElement(name, xml), expected.empty() ? "" : expected.front()) << xml;
            found += expected.size();
        }
        EXPECT_GT(found, 1000u) << name;
    }
}

constexpr std::size_t TIMES = 20000;

std::string repeated(const char* text) {
    std::string result;
    for (std::size_t i = 0; i < TIMES; ++i)
        result += text;
    return result;
}

TEST(Xml, NoStretchIsSearchedAgainAndAgain) {
    const struct {
        const char* name;
        std::string xml;
        std::size_t count;
    } rows[] = {
        {"i", repeated("<i>1</i>"), TIMES},
        {"i", repeated("<i >1</i>"), TIMES}, // the plain form never comes
        {"i", repeated("<i/>"), TIMES},      // nor does a closing tag
        {"i", repeated("<i/>") + "<i>1</i>", 1},
        {"i", "<i>1</i>" + repeated("<i/>") + "</i>", 2},
        {"i", repeated("<i >1</i>") + "/>", TIMES},
        {"i", repeated("<i>"), 0},
        {"a/>b", repeated("<a/>c") + "<a/>b>", TIMES + 1}, // each is found far ahead of where it was looked for
    };
    for (const auto& row : rows) {
        scannedBytes = 0;
        EXPECT_EQ(XmlUtils::getElements(row.name, row.xml).size(), row.count) << row.xml.substr(0, 20);
        EXPECT_GE(scannedBytes, row.xml.size());
        EXPECT_LE(scannedBytes, 6 * row.xml.size()) << row.xml.substr(0, 20);
    }

    ZEL::RT::PropertiesImpl store;
    for (std::size_t i = 0; i < TIMES; ++i)
        store.assignProperty(std::to_string(i), "value");
    const std::string xml = store.storeAsXML();
    scannedBytes = 0;
    store.loadFromXML(xml);
    EXPECT_LE(scannedBytes, 8 * xml.size());
}

} // namespace
