// Properties in text and XML form: the store that reads and writes whole forms, and a subclass of it, which is asked
// property by property, do what a map and the rules for single properties say. An input is a byte that chooses a
// reader, and a text.
#include "zel/utils/PropertiesImpl.h"
#include "zel/utils/XmlUtils.h"

#include "Target.h"
#include "support/Failure.h"

using ZEL::RT::PropertiesImpl;
using ZEL::RT::XmlUtils;
using Map = std::map<std::string, std::string>;

namespace {

struct Subclass : PropertiesImpl {};

// These return false at a property without a name, at which reading ends.
bool assign(Map& map, const std::string& name, const std::string& value) {
    return !name.empty() && (map[name] = value, true);
}

bool plainLine(Map& map, const std::string& line) {
    const std::size_t separator = line.find('=');
    return separator == std::string::npos || assign(map, line.substr(0, separator), line.substr(separator + 1));
}

bool plainText(Map& map, const std::string& text) {
    std::size_t start = 0, end;
    for (; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        if (!plainLine(map, text.substr(start, end - start)))
            return false;
    return plainLine(map, text.substr(start));
}

bool plainElement(Map& map, const std::string& element) {
    return assign(map, XmlUtils::GetAttributeValue("name", element, ""),
                  XmlUtils::GetElementValue("property", element));
}

bool plainXml(Map& map, const std::string& xml) {
    const Texts elements = XmlUtils::getElements("property", XmlUtils::GetElement("properties", xml));
    return std::all_of(elements.begin(), elements.end(), [&](auto& element) { return plainElement(map, element); });
}

bool plainEither(Map& map, const std::string& text) {
    map.clear();
    return (XmlUtils::IsXML(text) ? plainXml : plainText)(map, text);
}

struct Forms {
    Texts names;
    std::string text, xml = "<properties>";

    explicit Forms(const Map& map) {
        for (const auto& [name, value] : map) {
            names.push_back(name);
            text.append(name).append("=").append(value).append("\n");
            xml.append("<property  name=\"").append(name).append("\">").append(value).append("</property>");
        }
        xml.append("</properties>");
    }
};

void checkForms(const PropertiesImpl& store, const Forms& expected) {
    check("names", store.retrievePropertyNames(), expected.names);
    check("text", store.toString(), expected.text);
    check("XML", store.marshal(), expected.xml);
    check("emptiness", store.empty() == expected.names.empty() && store.assigned() != store.empty());
}

// Whether no name has one of the first characters, and no value one of the second: a form reads back then.
bool isFree(const Map& map, const char* ofNames, const char* ofValues) {
    constexpr std::size_t absent = std::string::npos;
    return std::all_of(map.begin(), map.end(), [&](auto& property) {
        return property.first.find_first_of(ofNames) == absent && property.second.find_first_of(ofValues) == absent;
    });
}

const struct {
    void (PropertiesImpl::*load)(const std::string&);
    bool (*plain)(Map&, const std::string&);
} readers[] = {{&PropertiesImpl::loadFromText, plainText},
               {&PropertiesImpl::loadFromXML, plainXml},
               {&PropertiesImpl::assignPropertyFromText, plainLine},
               {&PropertiesImpl::assignPropertyFromXML, plainElement},
               {&PropertiesImpl::unmarshal, plainEither}};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string refusal =
        "InvalidArgumentException ZEL -1006 code: The arguments specified in the operation "
        "were invalid common/utils/PropertiesImpl::assignProperty() @42";
    if (size == 0)
        return 0;
    const auto [load, plain] = readers[*data % std::size(readers)];
    const std::string text(data + 1, data + size);

    PropertiesImpl whole;
    Subclass asked;
    Map map{{"k", "0"}};
    const std::string expected = plain(map, text) ? "" : refusal;
    const Forms forms(map);
    for (PropertiesImpl* const store : {&whole, static_cast<PropertiesImpl*>(&asked)}) {
        store->assignProperty("k", "0");
        check("failure", failureOf([&, by = load] { (store->*by)(text); }), expected);
        checkForms(*store, forms);
    }
    for (const auto& [name, value] : map)
        check("value", whole.retrieveProperty(name, "none"), value);

    PropertiesImpl readBack;
    if (isFree(map, "=\n", "\n")) {
        readBack.loadFromText(forms.text);
        checkForms(readBack, forms);
    }
    if (isFree(map, "<>\"", "<>\"")) {
        readBack.unmarshal(forms.xml);
        checkForms(readBack, forms);
    }
    return 0;
}
