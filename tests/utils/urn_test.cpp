#include <string>

#include <gtest/gtest.h>

extern const std::string earlyNames; // early_names.cpp

// All else about names is urn_fuzz's.
TEST(Urn, SeparatorsAreThereBeforeAnyInitialiser) { EXPECT_EQ(earlyNames, "f://h:/p#x?y@"); }
