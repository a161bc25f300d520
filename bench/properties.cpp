#include "bench.h"
#include "inputs.h"

#include <string_view>
#include <utility>
#include <vector>

#include <zel/zel.h>

namespace {

using namespace bench;
using inputs::Map;
using ZEL::RT::PropertiesImpl;

using Form = const std::string& (*)(std::size_t count);

Body load(Form form, std::size_t count) {
    return each(
        [ form, count ]() -> auto& { return form(count); },
        [](const std::string& text) {
            PropertiesImpl store;
            store.unmarshal(text);
            keep(store);
        });
}

// A store of that size; made at first use and kept.
const PropertiesImpl& filled(std::size_t count) {
    static std::map<std::size_t, PropertiesImpl> stores;
    PropertiesImpl& store = stores[count];
    if (store.empty())
        store.unmarshal(inputs::text(count));
    return store;
}

Body storeText(std::size_t count) {
    return each(
        [count]() -> auto& { return filled(count); }, [](const PropertiesImpl& store) { keep(store.storeAsText()); });
}

Body storeXml(std::size_t count) {
    return each(
        [count]() -> auto& { return filled(count); }, [](const PropertiesImpl& store) { keep(store.storeAsXML()); });
}

using Found = std::vector<std::pair<std::string_view, std::string_view>>;

// Where the names and values of so many properties are; made at first use and kept.
const Found& found(std::size_t count) {
    static std::map<std::size_t, Found> founds;
    Found& properties = founds[count];
    if (properties.empty())
        properties.assign(inputs::properties(count).begin(), inputs::properties(count).end());
    return properties;
}

// A map of properties that have been found already, in order.
Body buildMap(std::size_t count) {
    return each(
        [count]() -> auto& { return found(count); },
        [](const Found& properties) {
            Map map;
            for (const auto& [name, value] : properties)
                map.emplace_hint(map.end(), name, value);
            keep(map);
        });
}

// The properties of a map one after the other into a text that grows.
Body append(std::size_t count, std::string_view head, std::string_view middle, std::string_view tail) {
    return each(
        [count]() -> auto& { return inputs::properties(count); },
        [=](const Map& properties) {
            std::string text;
            for (const auto& [name, value] : properties)
                text.append(head).append(name).append(middle).append(value).append(tail);
            keep(text);
        });
}

const Rows rows([] {
    const std::size_t hundredThousand = 100'000;
    const std::size_t million = 1'000'000;
    row("XML load, 100,000 properties", load(inputs::xml, hundredThousand));
    row("XML load, 1,000,000 properties", load(inputs::xml, million))
        .limit("100,000", load(inputs::xml, hundredThousand), 15);
    row("XML store, 100,000 properties", storeXml(hundredThousand))
        .limit("walk, append", append(hundredThousand, "<property  name=\"", "\">", "</property>"), 2.1);
    row("text load, 100,000 lines", load(inputs::text, hundredThousand))
        .limit("building the map", buildMap(hundredThousand), 1.2);
    row("text store, 100,000 lines", storeText(hundredThousand))
        .limit("walk, append", append(hundredThousand, "", "=", "\n"), 1.2);
});

const Rows sizes([] {
    for (const std::size_t count : {10u, 100u, 1'000u, 10'000u, 100'000u, 1'000'000u}) {
        const std::string properties = " of " + std::to_string(count);
        const auto xmlSize = [count] { return inputs::xml(count).size(); };
        const auto textSize = [count] { return inputs::text(count).size(); };
        row("growth, XML load" + properties, load(inputs::xml, count)).growth("XML load", xmlSize);
        row("growth, XML store" + properties, storeXml(count)).growth("XML store", xmlSize);
        row("growth, text load" + properties, load(inputs::text, count)).growth("text load", textSize);
        row("growth, text store" + properties, storeText(count)).growth("text store", textSize);
    }
});

} // namespace
