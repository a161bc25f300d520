#include "zel/utils/PropertiesImpl.h"
#include "zel/utils/StringUtils.h"
#include "zel/utils/XmlUtils.h"

#include "support/Refusal.h"
#include "support/Slots.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

using ZEL::I::IProperties;
using ZEL::RT::PropertiesImpl;
using ZEL::RT::StringUtils;
using ZEL::RT::XmlUtils;
using Names = ZEL::Vector<std::string>;

namespace {

TEST(Properties, SlotsStayWhereCallersCompiledThem) {
    using P = PropertiesImpl;
    const std::size_t slots[] = {
        slotOf(&P::retrievePropertyNames),
        slotOf(&P::retrieveProperty),
        slotOf(&P::assignProperty),
        slotOf(&P::removeProperty),
        slotOf(&P::assigned),
        slotOf(&P::empty),
        slotOf(&P::unmarshal),
        slotOf(&P::marshal),
        slotOf(&P::storeAsText),
    };
    EXPECT_EQ(slotOf(&P::toString), 0u);
    std::size_t expected = 3; // behind toString and the destructor's two
    for (const std::size_t slot : slots)
        EXPECT_EQ(slot, expected++);
    for (const std::size_t slot : {slotOf(&P::clear), slotOf(&P::loadFromText), slotOf(&P::storeAsXML)})
        EXPECT_EQ(slot, SIZE_MAX);
    EXPECT_EQ(slotOf(&IProperties::retrievePropertyNames), 3u);
    EXPECT_EQ(slotOf(&IProperties::removeProperty), 6u);
    static_assert(sizeof(P::TAG) == 11 && sizeof(P::PROPERTY) == 9 && !std::is_copy_constructible_v<P>);
}

TEST(Properties, NamesAreUniqueAndOrderedByBytes) {
    const ZEL::RT::SmartPointer<IProperties> store = ZEL::createProperties();
    EXPECT_EQ(store->toString(), "");
    EXPECT_EQ(store->marshal(), "<properties></properties>");
    for (const char* name : {"b", "\xe4", "a", "B", "ab", "a"})
        store->assignProperty(name, std::string("of ") + name);
    store->assignProperty("b", "2");
    store->removeProperty("absent");
    store->removeProperty("");
    store->removeProperty("ab");
    EXPECT_EQ(store->retrievePropertyNames(), (Names{"B", "a", "b", "\xe4"}));
    EXPECT_EQ(store->toString(), "B=of B\na=of a\nb=2\n\xe4=of \xe4\n");
    EXPECT_EQ(store->retrieveProperty("b", "default"), "2");
    EXPECT_EQ(store->retrieveProperty("ab", "default"), "default");
}

TEST(Properties, LoadingMergesAndUnmarshallingReplaces) {
    const struct {
        const char* text;
        const char* loaded;
        bool refused;
    } rows[] = {
        {"", "", false},
        {"x=1=2\n\nnoequals\n y = 3", " y = 3\nx=1=2\n", false},
        {"k=2\r\n#x=\nk=3\r\n", "#x=\nk=3\r\n", false},
        {"a=1\n=v\nb=2", "a=1\n", true},
        {"<properties></properties>", "", false},
        {"\n<properties><property name=\"x\">1</property><property  name=\"k\"></property></properties> ", "k=\nx=1\n",
         false},
        {"<properties><property name=\"x\"/></properties>", "x=\n", false},
        {"<r><properties><other name=\"o\">1</other><property  name=\"propertyX\">1</property></properties></r>",
         "propertyX=1\n", false},
        {"<property name=\"x\">1</property>", "", false}, // no root
        {"<properties><property  name=\"a\">1</property><property>2</property></properties>", "", true},
        {"<properties><property  name=\"a\">1</property><property  name=\"\">2</property></properties>", "a=1\n", true},
    };
    for (const auto& row : rows) {
        PropertiesImpl store;
        store.assignProperty("z", "1");
        store.assignProperty("k", "1");
        EXPECT_EQ(!refusalOf([&] { store.unmarshal(row.text); }).empty(), row.refused) << row.text;
        EXPECT_EQ(store.storeAsText(), row.loaded) << row.text;
        EXPECT_EQ(store.assigned(), !store.empty());

        store.assignProperty("z", "1");
        refusalOf([&] {
            std::string_view(row.text).find('<') != std::string_view::npos ? store.loadFromXML(row.text)
                                                                           : store.loadFromText(row.text);
        });
        EXPECT_EQ(store.storeAsText(), row.loaded + std::string("z=1\n")) << row.text;
    }
}

TEST(Properties, EmptyNamesAreRefused) {
    const std::string refusal =
        "ZEL -1006 code: The arguments specified in the operation were invalid common/utils/PropertiesImpl:";
    PropertiesImpl store;
    EXPECT_EQ(refusalOf([&] { store.assignProperty("", "v"); }), refusal + "42 assignProperty");
    EXPECT_EQ(refusalOf([&] { store.assignPropertyFromText("=v"); }), refusal + "42 assignProperty");
    EXPECT_EQ(refusalOf([&] { store.assignPropertyFromXML("<property>v</property>"); }), refusal + "42 assignProperty");
    EXPECT_EQ(refusalOf([&] { store.retrieveProperty("", "d"); }), refusal + "30 retrieveProperty");
    EXPECT_EQ(refusalOf([&] { store.retrievePropertyAsText(""); }), refusal + "30 retrieveProperty");
    EXPECT_EQ(refusalOf([&] { store.retrievePropertyAsXML(""); }), refusal + "30 retrieveProperty");
    EXPECT_TRUE(store.empty());
}

// Hears of everything, and changes the store that is being enumerated.
class Meddler : public PropertiesImpl {
public:
    std::string retrieveProperty(const std::string& name, const std::string& defaultValue) const override {
        const std::string value = PropertiesImpl::retrieveProperty(name, defaultValue);
        if (meddle)
            const_cast<Meddler*>(this)->clear();
        return "(" + value + ")";
    }
    void assignProperty(const std::string& name, const std::string& value) override {
        PropertiesImpl::assignProperty("my " + name, value);
        std::fill(source.begin(), source.end(), '?');
    }
    std::string storeAsText() const override { return "[" + PropertiesImpl::storeAsText() + "]"; }

    std::string source;
    bool meddle = false;
};

TEST(Properties, OverridesAreHeard) {
    Meddler store;
    store.loadFromText("b=2\na=1");
    EXPECT_EQ(store.toString(), "[my a=(1)\nmy b=(2)\n]");
    EXPECT_EQ(store.marshal(), "<properties><property  name=\"my a\">(1)</property>"
                               "<property  name=\"my b\">(2)</property></properties>");
    EXPECT_EQ(store.retrievePropertyAsText("q"), "q=()");
    store.meddle = true;
    EXPECT_EQ(store.toString(), "[my a=(1)\nmy b=()\n]");
    store.meddle = false;
    store.source = "c=3\nd=4";
    store.loadFromText(store.source);
    store.source = "<properties><property name=\"e\">5</property><property name=\"f\">6</property></properties>";
    store.loadFromXML(store.source);
    EXPECT_EQ(store.toString(), "[my c=(3)\nmy d=(4)\nmy e=(5)\nmy f=(6)\n]");
}

class Subclass : public PropertiesImpl {};

TEST(Properties, WholeFormsAreReadLikeTheirParts) {
    std::mt19937 random(1);
    const std::string lines[] = {"a", "b", "ab", "=", "\n", "c=", "\nd=1\n", "<", "\"", "</property>", "\xff", " "};
    const std::string tags[] = {"<property name=\"a\">",
                                "<property  name=\"b\">",
                                "<property>",
                                "<property/>",
                                "</property>",
                                "<property name=\"c\"/>",
                                "</properties>",
                                "name=\"",
                                "\"",
                                ">",
                                "<",
                                "d"};
    const auto pick = [&random](auto& pieces) {
        std::string text;
        for (std::size_t length = random() % 16; length != 0; --length)
            text += pieces[random() % std::size(pieces)];
        return text;
    };
    for (int round = 0; round < 5000; ++round) {
        PropertiesImpl whole, parts;
        Subclass asked;
        const std::string text = "x=y\n" + pick(lines);
        const std::string fromParts = refusalOf([&] {
            for (const std::string& line : StringUtils::Tokenize(text, "\n"))
                parts.assignPropertyFromText(line);
        });
        ASSERT_EQ(refusalOf([&] { whole.loadFromText(text); }), fromParts) << text;
        ASSERT_EQ(refusalOf([&] { asked.loadFromText(text); }), fromParts) << text;
        ASSERT_EQ(whole.storeAsText(), parts.storeAsText()) << text;

        const std::string xml = "<properties>" + pick(tags) + "</property></properties>";
        const std::string fromElements = refusalOf([&] {
            for (const std::string& element :
                 XmlUtils::getElements("property", XmlUtils::GetElement("properties", xml)))
                parts.assignPropertyFromXML(element);
        });
        ASSERT_EQ(refusalOf([&] { whole.loadFromXML(xml); }), fromElements) << xml;
        ASSERT_EQ(refusalOf([&] { asked.loadFromXML(xml); }), fromElements) << xml;
        ASSERT_EQ(whole.storeAsText(), parts.storeAsText()) << xml;
        ASSERT_EQ(whole.storeAsText(), asked.storeAsText()) << xml;
        ASSERT_EQ(whole.storeAsXML(), asked.storeAsXML()) << xml;
    }
}

} // namespace
