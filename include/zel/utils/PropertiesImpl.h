/// @file
/// Store of named text values.
#ifndef ZEL_UTILS_PROPERTIESIMPL_H
#define ZEL_UTILS_PROPERTIESIMPL_H

#include "zel/export.h"
#include "zel/utils/IProperties.h"
#include "zel/utils/Vector.h"

#include <functional>
#include <map>
#include <string>

namespace ZEL::RT {

/// The properties store, with two external forms.
///
/// Text: one property a line, name, "=", value and a line feed. There are no comments, and nothing is trimmed or
/// escaped: blanks and carriage returns belong to name and value, and a line feed in either does not read back.
///
/// XML: `<properties>` with one `<property  name="...">` for each, the value as its content, nothing between them
/// and nothing escaped: a double quote in a name, or a closing tag in a value, does not read back.
///
/// A subclass that overrides retrieveProperty() or assignProperty() is heard by all that writes or reads either form.
/// Virtual functions in slot order.
class ZEL_API PropertiesImpl : public I::IProperties {
public:
    static const char TAG[11];     ///< "properties", the root element of the XML form.
    static const char PROPERTY[9]; ///< "property", the element of each property within it.

    PropertiesImpl();
    PropertiesImpl(const PropertiesImpl&) = delete;
    PropertiesImpl& operator=(const PropertiesImpl&) = delete;

    /// The same as storeAsText().
    std::string toString() const override;
    ~PropertiesImpl() override;

    Vector<std::string> retrievePropertyNames() const override;
    std::string retrieveProperty(const std::string& name, const std::string& defaultValue) const override;
    void assignProperty(const std::string& name, const std::string& value) override;
    void removeProperty(const std::string& name) override;

    /// Whether there is any property.
    virtual bool assigned() const;
    /// Whether there is none.
    virtual bool empty() const;

    /// Replaces the content by what \c text holds in XML form if it looks like XML, else in text form.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException as loadFromXML() and loadFromText() do.
    void unmarshal(const std::string& text) override;
    /// The same as storeAsXML().
    std::string marshal() const override;

    /// All properties in text form, in order.
    virtual std::string storeAsText() const;

    /// Removes every property.
    void clear();

    /// Assigns every property in a text form, beside those that are there. A line without "=" is ignored.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for a line that begins with "="; the lines before
    /// it are assigned by then.
    void loadFromText(const std::string& text);

    /// Assigns the property in one line of text form.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 if it begins with "=".
    void assignPropertyFromText(const std::string& line);

    /// One property in text form without its line feed; an absent one has an empty value.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name.
    std::string retrievePropertyAsText(const std::string& name) const;

    /// One property's element; an absent one has an empty value.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an empty name.
    std::string retrievePropertyAsXML(const std::string& name) const;

    /// All properties in XML form, in order.
    std::string storeAsXML() const;

    /// Assigns the property in one element.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 if its name is missing or empty.
    void assignPropertyFromXML(const std::string& element);

    /// Assigns every property within the first `<properties>` element, beside those that are there. Other elements
    /// are ignored, and without a root nothing is assigned.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1006 for an element without a name; those before it
    /// are assigned by then.
    void loadFromXML(const std::string& xml);

private:
    using Map = std::map<std::string, std::string, std::less<>>;
    struct Layout;

    bool isOverridden() const;

    Map properties_;
};

} // namespace ZEL::RT

#endif
