// Both forms are written and read in two ways. A subclass is asked property by property through its virtual functions,
// over copies of what it might change meanwhile. The class itself has nobody to ask: it walks the map and the text
// directly, in views, so that a store of any size costs two allocations to write and a node with its texts to read.
#include "zel/utils/PropertiesImpl.h"

#include "zel/exceptions/InvalidArgumentException.h"
#include "zel/utils/XmlUtils.h"

#include "exceptions/Failure.h"
#include "utils/XmlScan.h"

#include <cstddef>
#include <string_view>
#include <typeinfo>
#include <vector>

namespace ZEL::RT {

namespace {

using EXCEPTIONS::Failure;

constexpr const char* source = "common/utils/PropertiesImpl";
constexpr const char* invalid = "The arguments specified in the operation were invalid";

constexpr Failure retrieveUnnamed{-1006, invalid, 30, "retrieveProperty"};
constexpr Failure assignUnnamed{-1006, invalid, 42, "assignProperty"};

constexpr const char* nameAttribute = "name";

// What surrounds name and value in either form; for XML exactly what XmlUtils composes, the two blanks included.
struct Frame {
    std::string_view head;
    std::string_view middle;
    std::string_view tail;
};
constexpr Frame textFrame{"", "=", "\n"};
constexpr Frame xmlFrame{"<property  name=\"", "\">", "</property>"};

void checkName(std::string_view name, const Failure& failure) {
    if (name.empty())
        EXCEPTIONS::raise<EXCEPTIONS::InvalidArgumentException>(source, failure);
}

// A map is walked once, since each step waits for the one before: the properties are listed on the way to the size, and
// written from the list.
template <const Frame& frame, class Map>
std::string store(const Map& properties, std::string_view head, std::string_view tail) {
    std::vector<const typename Map::value_type*> list;
    list.reserve(properties.size());
    std::size_t size = head.size() + tail.size();
    for (const auto& property : properties) {
        list.push_back(&property);
        size += frame.head.size() + property.first.size() + frame.middle.size() + property.second.size() +
                frame.tail.size();
    }

    std::string text(size, '\0');
    char* at = text.data();
    const auto write = [&at](std::string_view piece) { at += piece.copy(at, piece.size()); };
    write(head);
    for (const auto* const property : list) {
        write(frame.head);
        write(property->first);
        write(frame.middle);
        write(property->second);
        write(frame.tail);
    }
    write(tail);
    return text;
}

// Hands the property in a line of text form, if it is one, to assign.
template <class Assign> void readLine(std::string_view line, Assign&& assign) {
    const std::size_t separator = line.find('=');
    if (separator != std::string_view::npos)
        assign(line.substr(0, separator), line.substr(separator + 1));
}

template <class Assign> void readText(std::string_view text, Assign&& assign) {
    std::size_t end;
    while ((end = text.find('\n')) != std::string_view::npos) {
        readLine(text.substr(0, end), assign);
        text.remove_prefix(end + 1);
    }
    readLine(text, assign);
}

// The elements that the store wrote have their name in the same place; in others it is looked for.
std::string_view nameOf(std::string_view element) {
    if (element.substr(0, xmlFrame.head.size()) != xmlFrame.head)
        return attributeValue(nameAttribute, element).value_or("");
    element.remove_prefix(xmlFrame.head.size());
    const std::size_t end = element.find('"');
    return end != std::string_view::npos ? element.substr(0, end) : std::string_view();
}

// An element that the finder gave is what a second search for it in its own text finds, so its value is at hand.
template <class Assign> void readElements(std::string_view root, Assign&& assign) {
    ElementFinder finder(PropertiesImpl::PROPERTY, root);
    for (std::string_view element = finder.next(); !element.empty(); element = finder.next())
        assign(nameOf(element), elementValue(element));
}

// Assigns to the map like assignProperty, but from views. What was stored comes in order and goes behind the last name,
// which takes one comparison; for any other name the map looks itself.
template <class Map> auto assignTo(Map& properties) {
    return [&properties](std::string_view name, std::string_view value) {
        checkName(name, assignUnnamed);
        const std::size_t before = properties.size();
        const auto place = properties.emplace_hint(properties.end(), name, value);
        if (properties.size() == before)
            place->second = value;
    };
}

} // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct PropertiesImpl::Layout {
    static_assert(offsetof(PropertiesImpl, properties_) == sizeof(void*));
};
#pragma GCC diagnostic pop

const char PropertiesImpl::TAG[] = "properties";
const char PropertiesImpl::PROPERTY[] = "property";

PropertiesImpl::PropertiesImpl() = default;

PropertiesImpl::~PropertiesImpl() = default;

std::string PropertiesImpl::toString() const { return storeAsText(); }

Vector<std::string> PropertiesImpl::retrievePropertyNames() const {
    Vector<std::string> names;
    names.reserve(properties_.size());
    for (const auto& property : properties_)
        names.push_back(property.first);
    return names;
}

std::string PropertiesImpl::retrieveProperty(const std::string& name, const std::string& defaultValue) const {
    checkName(name, retrieveUnnamed);
    const auto found = properties_.find(name);
    return found != properties_.end() ? found->second : defaultValue;
}

void PropertiesImpl::assignProperty(const std::string& name, const std::string& value) {
    checkName(name, assignUnnamed);
    properties_.insert_or_assign(name, value);
}

void PropertiesImpl::removeProperty(const std::string& name) { properties_.erase(name); }

bool PropertiesImpl::assigned() const { return !properties_.empty(); }

bool PropertiesImpl::empty() const { return properties_.empty(); }

void PropertiesImpl::unmarshal(const std::string& text) {
    clear();
    if (XmlUtils::IsXML(text))
        loadFromXML(text);
    else
        loadFromText(text);
}

std::string PropertiesImpl::marshal() const { return storeAsXML(); }

std::string PropertiesImpl::storeAsText() const {
    if (!isOverridden())
        return store<textFrame>(properties_, "", "");
    std::string text;
    for (const std::string& name : PropertiesImpl::retrievePropertyNames())
        text.append(retrievePropertyAsText(name)).append("\n");
    return text;
}

void PropertiesImpl::clear() { properties_.clear(); }

void PropertiesImpl::loadFromText(const std::string& text) {
    if (!isOverridden())
        return readText(text, assignTo(properties_));
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the override may change the caller's text.
    const std::string copy = text;
    readText(copy, [this](std::string_view name, std::string_view value) {
        assignProperty(std::string(name), std::string(value));
    });
}

void PropertiesImpl::assignPropertyFromText(const std::string& line) {
    readLine(line, [this](std::string_view name, std::string_view value) {
        assignProperty(std::string(name), std::string(value));
    });
}

std::string PropertiesImpl::retrievePropertyAsText(const std::string& name) const {
    return name + '=' + retrieveProperty(name, std::string());
}

std::string PropertiesImpl::retrievePropertyAsXML(const std::string& name) const {
    const std::string value = retrieveProperty(name, std::string());
    return XmlUtils::ToElement(PROPERTY, value, XmlUtils::ToAttribute(nameAttribute, name));
}

std::string PropertiesImpl::storeAsXML() const {
    if (!isOverridden())
        return store<xmlFrame>(properties_, "<properties>", "</properties>");
    std::string elements;
    for (const std::string& name : PropertiesImpl::retrievePropertyNames())
        elements.append(retrievePropertyAsXML(name));
    return XmlUtils::ToElement(TAG, elements);
}

void PropertiesImpl::assignPropertyFromXML(const std::string& element) {
    const std::string name = XmlUtils::GetAttributeValue(nameAttribute, element, std::string());
    assignProperty(name, XmlUtils::GetElementValue(PROPERTY, element));
}

void PropertiesImpl::loadFromXML(const std::string& xml) {
    const std::string_view root = ElementFinder(TAG, xml).next();
    if (!isOverridden())
        return readElements(root, assignTo(properties_));
    const std::string copy(root);
    readElements(copy, [this](std::string_view name, std::string_view value) {
        assignProperty(std::string(name), std::string(value));
    });
}

// Whether there may be a subclass that wants to be asked.
bool PropertiesImpl::isOverridden() const { return typeid(*this) != typeid(PropertiesImpl); }

} // namespace ZEL::RT

namespace ZEL {

RT::SmartPointer<I::IProperties> createProperties() { return RT::SmartPointer<I::IProperties>(new RT::PropertiesImpl); }

} // namespace ZEL
