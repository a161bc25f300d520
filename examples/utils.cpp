// From a line of settings to a properties store, its two external forms, and a resource name.
#include <iostream>
#include <string>

#include <zel/zel.h>

using ZEL::RT::StringUtils;
using ZEL::RT::UrnUtils;
using ZEL::RT::XmlUtils;

namespace {

void run() {
    const auto settings = ZEL::createProperties();
    for (const std::string& setting : StringUtils::Tokenize("port=8080; host=example.org; verbose=y", ";")) {
        const auto parts = StringUtils::Tokenize(StringUtils::Trim(setting), "=");
        settings->assignProperty(parts.at(0), parts.at(1));
    }
    std::cout << settings->toString();
    const std::string xml = settings->marshal();
    std::cout << xml << "\n";

    // Numbers and truth values throw for what they cannot read; a missing property has the value asked with.
    const int port = StringUtils::AsInteger(settings->retrieveProperty("port", "80"));
    if (StringUtils::AsBoolean(settings->retrieveProperty("verbose", "no")))
        std::cout << "the next port is " << StringUtils::ToString(port + 1) << "\n";

    // Fragments of XML are found by their text; of several elements the first is meant.
    const std::string first = XmlUtils::GetElement("property", xml);
    std::cout << XmlUtils::GetAttributeValue("name", first, "") << " is the first property\n";

    const std::string name = UrnUtils::ToURN("https", settings->retrieveProperty("host", ""), "docs/index");
    std::cout << name << ": " << UrnUtils::GetFormat(name) << ", " << UrnUtils::GetPath(name)
              << (UrnUtils::Matches("https://anything/docs", name) ? ", a document" : "") << "\n";
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
