/// @file
/// Writing and finding small, flat XML fragments.
#ifndef ZEL_UTILS_XMLUTILS_H
#define ZEL_UTILS_XMLUTILS_H

#include "zel/export.h"
#include "zel/utils/Vector.h"

#include <string>

namespace ZEL::RT {

/// Static operations that write XML fragments and pick them apart by searching for substrings. This is no parser: it
/// knows no entities, comments or declarations, escapes nothing and validates nothing, and stored data depends on
/// exactly these forms. Absence shows as an empty result; nothing is reported as an error. All may be called from any
/// thread.
class ZEL_API XmlUtils {
public:
    /// Whether the text, trimmed, begins with "<" and ends with ">"; what is between is not looked at.
    static bool IsXML(const std::string& text);

    /// The value between double quotes, unescaped: one that holds a double quote cannot be read back whole.
    static std::string QuotedString(const std::string& value);

    /// One attribute with the blank ahead of it, such as \c ' a="1"', so that attributes can be joined as they are.
    static std::string ToAttribute(const std::string& name, const std::string& value);

    /// An element, always with a closing tag. Attributes are set off by a blank of their own: what ToAttribute() made
    /// stands behind two blanks, and so does the first attribute of a list.
    /// @{
    static std::string ToElement(const std::string& name, const std::string& value);
    static std::string ToElement(const std::string& name, const std::string& value, const std::string& attributes);
    static std::string ToElement(const std::string& name, const std::string& value,
                                 const Vector<std::string>& attributes);
    /// @}

    /// The first element of that name, tags included, or "". An element without attributes is found ahead of one with
    /// attributes that stands before it, and that ahead of `<name/>`. The element ends at the first closing tag, even
    /// if that belongs to an inner element of the same name; without one it must be self-closing.
    static std::string GetElement(const std::string& name, const std::string& xml);

    /// What GetElement() finds without its tags, or "": the text between its first ">" and its last "<", raw.
    static std::string GetElementValue(const std::string& name, const std::string& xml);

    /// The text between the quotes of the first \c name="..." anywhere in \c xml, the end of a longer attribute name
    /// and text outside of tags included, or \c defaultValue. Pass the text of one element to search only that.
    static std::string GetAttributeValue(const std::string& name, const std::string& xml,
                                         const std::string& defaultValue);

    /// What GetElement() finds again and again in the text behind what it found before, in order. Takes time in
    /// proportion to the text.
    static Vector<std::string> getElements(const std::string& name, const std::string& xml);
};

} // namespace ZEL::RT

#endif
