#include "zel/utils/PropertiesImpl.h"

#include "support/Failure.h"
#include "support/Slots.h"

#include <algorithm>

#include <gtest/gtest.h>

using ZEL::I::IProperties;
using ZEL::RT::PropertiesImpl;
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

// What is read from text, of either form, is properties_fuzz's.
TEST(Properties, HaveNames) {
    const std::string refusal = "InvalidArgumentException ZEL -1006 code: The arguments specified in the operation "
                                "were invalid common/utils/PropertiesImpl::";
    EXPECT_EQ(failureOf([] { PropertiesImpl().assignProperty("", "v"); }), refusal + "assignProperty() @42");
    EXPECT_EQ(failureOf([] { PropertiesImpl().retrievePropertyAsXML(""); }), refusal + "retrieveProperty() @30");
}

} // namespace
