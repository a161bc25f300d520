#include "zel/utils/XmlUtils.h"

#include "utils/XmlScan.h"

namespace ZEL::RT {

bool XmlUtils::IsXML(const std::string& text) {
    // Trimmed as StringUtils::Trim does it, without the copy that a whole store would be.
    const std::size_t first = text.find_first_not_of(" \r\n");
    return first != std::string::npos && text[first] == '<' && text[text.find_last_not_of(" \r\n")] == '>';
}

std::string XmlUtils::QuotedString(const std::string& value) { return '"' + value + '"'; }

std::string XmlUtils::ToAttribute(const std::string& name, const std::string& value) {
    return ' ' + name + '=' + QuotedString(value);
}

std::string XmlUtils::ToElement(const std::string& name, const std::string& value) {
    return ToElement(name, value, std::string());
}

std::string XmlUtils::ToElement(const std::string& name, const std::string& value, const std::string& attributes) {
    std::string element;
    element.reserve(2 * name.size() + value.size() + attributes.size() + 6);
    element.append("<").append(name);
    if (!attributes.empty())
        element.append(" ").append(attributes);
    return element.append(">").append(value).append("</").append(name).append(">");
}

std::string XmlUtils::ToElement(const std::string& name, const std::string& value,
                                const Vector<std::string>& attributes) {
    std::string joined;
    for (const std::string& attribute : attributes)
        joined.append(" ").append(attribute);
    return ToElement(name, value, joined);
}

std::string XmlUtils::GetElement(const std::string& name, const std::string& xml) {
    return std::string(ElementFinder(name, xml).next());
}

std::string XmlUtils::GetElementValue(const std::string& name, const std::string& xml) {
    return std::string(elementValue(ElementFinder(name, xml).next()));
}

std::string XmlUtils::GetAttributeValue(const std::string& name, const std::string& xml,
                                        const std::string& defaultValue) {
    return std::string(attributeValue(name, xml).value_or(defaultValue));
}

Vector<std::string> XmlUtils::getElements(const std::string& name, const std::string& xml) {
    Vector<std::string> elements;
    ElementFinder finder(name, xml);
    for (std::string_view element = finder.next(); !element.empty(); element = finder.next())
        elements.emplace_back(element);
    return elements;
}

} // namespace ZEL::RT
