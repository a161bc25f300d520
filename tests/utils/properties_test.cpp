#include "zel/utils/PropertiesImpl.h"
#include "zel/utils/StringUtils.h"
#include "zel/utils/XmlUtils.h"

#include "support/Failure.h"
#include "support/Generator.h"
#include "support/Slots.h"

#include <algorithm>

#include <gtest/gtest.h>

using ZEL::I::IProperties;
using ZEL::RT::PropertiesImpl;
using ZEL::RT::StringUtils;
using ZEL::RT::XmlUtils;
using Names = ZEL::Vector<std::string>;

namespace {

TEST(Properties, SlotsStayWhereCallersCompiledThem) {
    using P = PropertiesImpl;
    std::size_t expected = 3; // behind toString and the destructor's two
    for (const std::size_t slot :
         {slotOf(&P::retrievePropertyNames), slotOf(&P::retrieveProperty), slotOf(&P::assignProperty),
          slotOf(&P::removeProperty), slotOf(&P::assigned), slotOf(&P::empty), slotOf(&P::unmarshal),
          slotOf(&P::marshal), slotOf(&P::storeAsText)})
        EXPECT_EQ(slot, expected++);
    EXPECT_TRUE(slotOf(&P::toString) == 0 && slotOf(&P::clear) == SIZE_MAX &&
                slotOf(&IProperties::removeProperty) == 6);
}

TEST(Properties, NamesAreUniqueAndOrderedByBytes) {
    const ZEL::RT::SmartPointer<IProperties> store = ZEL::createProperties();
    EXPECT_EQ(store->toString() + store->marshal(), "<properties></properties>");
    for (const char* name : {"b", "\xe4", "a", "B", "ab", "a", "b"})
        store->assignProperty(name, "of " + std::to_string(store->retrievePropertyNames().size()));
    for (const char* name : {"absent", "", "ab"})
        store->removeProperty(name);
    EXPECT_EQ(store->retrievePropertyNames(), (Names{"B", "a", "b", "\xe4"}));
    EXPECT_EQ(store->toString() + store->retrieveProperty("b", "default") + store->retrieveProperty("ab", "default"),
              "B=of 3\na=of 5\nb=of 5\n\xe4=of 1\nof 5default");
}

TEST(Properties, UnmarshallingReplacesWhatWasThere) {
    const struct {
        const char *text, *loaded;
        bool refused = false;
    } rows[] = {
        {"x=1=2\n\nnoequals\n y = 3", " y = 3\nx=1=2\n"},
        {"k=2\r\n#x=\nk=3\r\n", "#x=\nk=3\r\n"},
        {"a=1\n=v\nb=2", "a=1\n", true},
        {"\n<properties><property name=\"x\">1</property><property  name=\"k\"></property></properties> ", "k=\nx=1\n"},
        {"<properties><property name=\"x\"/></properties>", "x=\n"},
        {"<r><properties><o name=\"o\">1</o><property  name=\"propertyX\">1</property></properties>", "propertyX=1\n"},
        {"<property name=\"x\">1</property>", ""}, // no root
        {"<properties><property  name=\"a\">1</property><property>2</property></properties>", "", true},
        {"<properties><property  name=\"a\">1</property><property  name=\"\">2</property></properties>", "a=1\n", true},
    };
    for (const auto& row : rows) {
        PropertiesImpl store;
        store.loadFromText("z=1\nk=1");
        EXPECT_EQ(!failureOf([&] { store.unmarshal(row.text); }).empty(), row.refused) << row.text;
        EXPECT_EQ(store.storeAsText(), row.loaded) << row.text;
        EXPECT_TRUE(store.empty() == (*row.loaded == '\0') && store.assigned() != store.empty()) << row.text;
    }
}

// Hears of everything, and changes the store that is enumerated and the text that is read.
struct Meddler : PropertiesImpl {
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
    store.source = "b=2\na=1";
    store.loadFromText(store.source);
    EXPECT_EQ(store.marshal(), "<properties><property  name=\"my a\">(1)</property>"
                               "<property  name=\"my b\">(2)</property></properties>");
    store.meddle = true;
    EXPECT_EQ(store.toString(), "[my a=(1)\nmy b=()\n]");
    EXPECT_EQ(store.retrievePropertyAsText("q"), "q=()");
    store.source = "<properties><property name=\"e\">5</property><property name=\"f\">6</property></properties>";
    store.loadFromXML(store.source);
    store.meddle = false;
    EXPECT_EQ(store.toString(), "[my e=(5)\nmy f=(6)\n]");
}

TEST(Properties, WholeFormsAreReadLikeTheirParts) {
    struct Subclass : PropertiesImpl {};
    const std::string refusal = "InvalidArgumentException ZEL -1006 code: The arguments specified in the operation "
                                "were invalid common/utils/PropertiesImpl::";
    EXPECT_EQ(failureOf([] { PropertiesImpl().assignProperty("", "v"); }), refusal + "assignProperty() @42");
    EXPECT_EQ(failureOf([] { PropertiesImpl().retrievePropertyAsXML(""); }), refusal + "retrieveProperty() @30");

    Generator lines{{"a", "b", "ab", "=", "\n", "c=", "\nd=1\n", "<", "\"", "</property>", "\xff", " "}};
    Generator tags{{"<property name=\"a\">", "<property  name=\"b\">", "<property name=\"c\"/>", "<property>",
                    "<property/>", "</property>", "</properties>", "name=\"", "\"", ">", "<", "d"}};
    for (int round = 0; round < 5000; ++round) {
        PropertiesImpl whole, parts;
        Subclass asked;
        const auto compare = [&](const std::string& text, const Names& pieces, auto load, auto assign) {
            const auto assignAll = [&] {
                std::for_each(pieces.begin(), pieces.end(), [&](auto& p) { (parts.*assign)(p); });
            };
            const std::string expected = failureOf(assignAll);
            for (PropertiesImpl* const store : {&whole, static_cast<PropertiesImpl*>(&asked)}) {
                ASSERT_EQ(failureOf([&] { (store->*load)(text); }), expected) << text;
                ASSERT_EQ(store->storeAsText(), parts.storeAsText()) << text;
            }
            ASSERT_EQ(whole.storeAsXML(), asked.storeAsXML()) << text;
        };
        const std::string text = "x=y\n" + lines(15), xml = "<properties>" + tags(15) + "</property></properties>";
        compare(text, StringUtils::Tokenize(text, "\n"), &PropertiesImpl::loadFromText,
                &PropertiesImpl::assignPropertyFromText);
        compare(xml, XmlUtils::getElements("property", XmlUtils::GetElement("properties", xml)),
                &PropertiesImpl::loadFromXML, &PropertiesImpl::assignPropertyFromXML);
    }
}

} // namespace
