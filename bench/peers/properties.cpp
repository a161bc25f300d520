#include "bench.h"
#include "inputs.h"

#include <map>
#include <sstream>

#include <Poco/AutoPtr.h>
#include <Poco/Util/PropertyFileConfiguration.h>
#include <Poco/Util/XMLConfiguration.h>
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <pugixml.hpp>

namespace {

using namespace bench;
using inputs::Map;

// The document, and its properties in a map, whose end is where names in order belong.
Body loadByPugixml(std::size_t count) {
    return each(
        [count]() -> auto& { return inputs::xml(count); },
        [](const std::string& xml) {
            pugi::xml_document document;
            document.load_buffer(xml.data(), xml.size(), pugi::parse_minimal);
            Map map;
            for (const pugi::xml_node property : document.child("properties").children("property"))
                map.emplace_hint(map.end(), property.attribute("name").value(), property.child_value());
            keep(map);
        });
}

struct Writer : pugi::xml_writer {
    void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
    std::string text;
};

// The way back from the map: into a document, and from there into a text.
Body storeByPugixml(std::size_t count) {
    return each(
        [count]() -> auto& { return inputs::properties(count); },
        [](const Map& properties) {
            pugi::xml_document document;
            pugi::xml_node root = document.append_child("properties");
            for (const auto& [name, value] : properties) {
                pugi::xml_node property = root.append_child("property");
                property.append_attribute("name").set_value(name.c_str());
                property.append_child(pugi::node_pcdata).set_value(value.c_str());
            }
            Writer writer;
            document.save(writer, "", pugi::format_raw | pugi::format_no_declaration);
            keep(writer.text);
        });
}

template <class Configuration> Body loadByPoco(const std::string& (*form)(std::size_t), std::size_t count) {
    return each(
        [ form, count ]() -> auto& { return form(count); },
        [](const std::string& text) {
            std::istringstream stream(text);
            const Poco::AutoPtr<Configuration> configuration(new Configuration(stream));
            keep(configuration);
        });
}

Body loadByBoost(std::size_t count) {
    return each(
        [count]() -> auto& { return inputs::xml(count); },
        [](const std::string& xml) {
            std::istringstream stream(xml);
            boost::property_tree::ptree tree;
            boost::property_tree::read_xml(stream, tree);
            keep(tree);
        });
}

using Lines = Poco::Util::PropertyFileConfiguration;

// A configuration of that size; made at first use and kept.
const Lines& filled(std::size_t count) {
    static std::map<std::size_t, Poco::AutoPtr<Lines>> configurations;
    Poco::AutoPtr<Lines>& configuration = configurations[count];
    if (!configuration) {
        std::istringstream stream(inputs::text(count));
        configuration = new Lines(stream);
    }
    return *configuration;
}

Body storeByPoco(std::size_t count) {
    return each(
        [count]() -> auto& { return filled(count); },
        [](const Lines& configuration) {
            std::ostringstream stream;
            configuration.save(stream);
            keep(stream.str());
        });
}

const Peers peers([] {
    const std::size_t count = 100'000;
    find("XML load, 100,000 properties")
        .peer("pugixml and std::map", loadByPugixml(count), 1.0)
        .peer("POCO XMLConfiguration", loadByPoco<Poco::Util::XMLConfiguration>(inputs::xml, count), 0.3)
        .peer("boost::property_tree", loadByBoost(count), 0.3);
    find("XML load, 1,000,000 properties").peer("pugixml and std::map", loadByPugixml(10 * count), 1.1);
    find("XML store, 100,000 properties").peer("pugixml", storeByPugixml(count), 0.35);
    find("text load, 100,000 lines")
        .peer("POCO PropertyFileConfiguration", loadByPoco<Lines>(inputs::text, count), 0.25);
    find("text store, 100,000 lines").peer("POCO PropertyFileConfiguration", storeByPoco(count), 0.22);
});

} // namespace
