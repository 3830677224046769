// The host's dictionary.
#include "host/BaseDictionary.h"

#include <gtest/gtest.h>

#include "host/DictVar.h"
#include "tests/host/ForeignDictVar.h"
#include "tests/host/new_number.h"

namespace {

using KwBrevix_930::BaseDictionary;
using KwBrevix_930::DictVar;
using test_support::NewNumber;

TEST(BaseDictionary, IsEmptyAtFirst) {
    const BaseDictionary dictionary;
    EXPECT_EQ(dictionary.GetVarCount(), 0);
    EXPECT_TRUE(dictionary.GetVars().empty());
    EXPECT_EQ(dictionary.FindVar("x"), nullptr);
    EXPECT_EQ(dictionary.FindVar(""), nullptr);
}

TEST(BaseDictionary, KeepsTheOrderAndFindsByName) {
    BaseDictionary dictionary;
    for (const char* name : {"zeta", "alpha", "Größe"})
        EXPECT_TRUE(dictionary.AddVar(NewNumber(name)));
    ASSERT_EQ(dictionary.GetVarCount(), 3);
    EXPECT_EQ(dictionary.GetVars()[0]->GetName(), "zeta");
    EXPECT_EQ(dictionary.GetVars()[2]->GetName(), "Größe");
    EXPECT_EQ(dictionary.FindVar("alpha"), dictionary.GetVars()[1]);
    EXPECT_EQ(dictionary.FindVar("Alpha"), nullptr);
}

TEST(BaseDictionary, RefusesANameThatIsThere) {
    BaseDictionary dictionary;
    dictionary.AddVar(NewNumber("x"));
    EXPECT_FALSE(dictionary.AddVar(std::make_unique<DictVar>("x", DictVar::kString, DictVar::kCategorical)));
    EXPECT_FALSE(dictionary.AddVar("x", *NewNumber("y")));
    EXPECT_EQ(dictionary.GetVarCount(), 1);
    EXPECT_FALSE(dictionary.FindVar("x")->IsString());
}

TEST(BaseDictionary, AddsACopyUnderANameOfItsOwn) {
    BaseDictionary dictionary;
    const auto original = NewNumber("x");
    original->AddCategory("4");
    EXPECT_TRUE(dictionary.AddVar("renamed", *original));
    const auto* copy = dictionary.FindVar("renamed");
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, original.get());
    EXPECT_EQ(copy->GetName(), "renamed");
    EXPECT_EQ(copy->GetCategoryIndex("4"), 0);
    EXPECT_EQ(original->GetName(), "x");
}

TEST(BaseDictionary, CopyHoldsCopiesOfAllVariables) {
    BaseDictionary dictionary;
    dictionary.AddVar(NewNumber("b"));
    dictionary.AddVar(std::make_unique<ForeignDictVar>("a", true));
    const auto copy = BaseDictionary::CopyOf(dictionary);
    ASSERT_EQ(copy->GetVarCount(), 2);
    EXPECT_EQ(copy->GetVars()[0]->GetName(), "b");
    EXPECT_NE(copy->GetVars()[0], dictionary.GetVars()[0]);
    EXPECT_NE(dynamic_cast<DictVar*>(copy->FindVar("a")), nullptr);
    EXPECT_TRUE(copy->FindVar("a")->IsString());
}

}  // namespace
