// XML utilities: the searches that remember what they saw find what the plain ones do, and what is written is composed
// as described. An input is a row with tabs between: name, value or attributes, XML text.
#include "zel/utils/StringUtils.h"
#include "zel/utils/XmlUtils.h"

#include "Target.h"

using ZEL::RT::StringUtils;
using ZEL::RT::XmlUtils;

namespace {

constexpr std::size_t absent = std::string::npos;

bool has(const std::string& text, const std::string& part) { return text.find(part) != absent; }

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

std::string plainValue(const std::string& element) {
    const std::size_t start = element.find('>') + 1, end = element.rfind('<');
    return start < end && end != absent ? element.substr(start, end - start) : "";
}

std::string plainAttribute(const std::string& name, const std::string& xml, const std::string& defaultValue) {
    const std::size_t found = xml.find(name + "=\""), start = found + name.size() + 2;
    const std::size_t end = found != absent ? xml.find('"', start) : absent;
    return end != absent ? xml.substr(start, end - start) : defaultValue;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [name, value, xml] = fields<3>(data, size);

    const Texts elements = plainElements(name, xml);
    const std::string element = elements.empty() ? "" : elements.front();
    check("getElements", XmlUtils::getElements(name, xml), elements);
    check("GetElement", XmlUtils::GetElement(name, xml), element);
    check("GetElementValue", XmlUtils::GetElementValue(name, xml), plainValue(element));
    check("GetAttributeValue", XmlUtils::GetAttributeValue(name, xml, value), plainAttribute(name, xml, value));
    const std::string trimmed = StringUtils::Trim(xml);
    check("IsXML",
          XmlUtils::IsXML(xml) == (StringUtils::StartsWith(trimmed, "<") && StringUtils::EndsWith(trimmed, ">")));

    const std::string attribute = XmlUtils::ToAttribute(name, value), plain = XmlUtils::ToElement(name, xml);
    const std::string closing = "</" + name + ">";
    check("ToAttribute", attribute, " " + name + "=\"" + value + "\"");
    check("ToElement", plain, "<" + name + ">" + xml + closing);
    check("ToElement with attributes", XmlUtils::ToElement(name, xml, value),
          "<" + name + (value.empty() ? "" : " ") + value + ">" + xml + closing);
    check("ToElement with a list", XmlUtils::ToElement(name, xml, Texts{value, name}),
          "<" + name + "  " + value + " " + name + ">" + xml + closing);

    check("attribute read back", has(value, "\"") || XmlUtils::GetAttributeValue(name, attribute, "none") == value);
    const bool readable = !has(name, "<") && !has(name, ">") && !has(xml, closing);
    check("element read back", !readable || XmlUtils::GetElementValue(name, plain) == xml);
    return 0;
}
