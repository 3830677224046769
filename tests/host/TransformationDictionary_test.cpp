// The derived record: its layout, and whose it is.
#include "host/transform/TransformationDictionary.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "host/BaseDictionary.h"
#include "host/CaseRecord.h"
#include "host/DictVar.h"
#include "tests/host/DerivedFields.h"
#include "tests/host/SameValue.h"

namespace {

using KwBrevix_930::BaseDictionary;
using KwBrevix_930::CaseRecord;
using KwBrevix_930::DictVar;
using KwBrevix_930::FieldType;
using KwBrevix_930::ScoreCaseRecord;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::TransformationDictionary;
using KwBrevix_930::TransformVar;

// A derived field that is what another field is: the derived one of that name, otherwise the raw one.
std::unique_ptr<TransformVar> Same(TransformationDictionary& transformations, const std::string& name,
                                   const std::string& field) {
    const TransformVar* derived = transformations.FindVar(field);
    const std::size_t slot = derived ? derived->GetSlot() : transformations.AddRawField(field);
    return std::make_unique<TransformVar>(name, FieldType{}, DictVar::kContinuous,
                                          std::make_unique<SameValue>(slot, field));
}

// Two raw fields, x and y, and a record of them.
class TransformationDictionaryTest : public testing::Test {
protected:
    TransformationDictionaryTest() {
        for (const char* name : {"x", "y"})
            dictionary.AddVar(std::make_unique<DictVar>(name, DictVar::kNumber, DictVar::kContinuous));
        for (int i = 0; i < 2; ++i)
            dictionary.GetVars()[static_cast<std::size_t>(i)]->SetIndex(i);
    }

    BaseDictionary dictionary;
};

TEST_F(TransformationDictionaryTest, KeepsTheOrderAndFindsByName) {
    TransformationDictionary transformations;
    EXPECT_TRUE(transformations.AddVar(Same(transformations, "b", "x")));
    EXPECT_TRUE(transformations.AddVar(Same(transformations, "a", "y")));
    EXPECT_FALSE(transformations.AddVar(Same(transformations, "b", "y")));
    ASSERT_EQ(transformations.GetVars().size(), 2u);
    EXPECT_EQ(transformations.FindVar("b"), transformations.GetVars()[0].get());
    EXPECT_EQ(transformations.FindVar("b")->GetFieldName(), "x");
    EXPECT_EQ(transformations.FindVar("c"), nullptr);
}

TEST_F(TransformationDictionaryTest, DerivedIndicesLieBehindAllRawOnes) {
    TransformationDictionary transformations;
    transformations.AddVar(Same(transformations, "a", "x"));
    transformations.AddVar(Same(transformations, "b", "y"));
    EXPECT_EQ(transformations.FindVar("a")->GetIndex(), -1);
    transformations.SetUpDerivedCaseRecord();
    const int first = transformations.FindVar("a")->GetIndex();
    EXPECT_GT(first, 1'000'000);
    EXPECT_EQ(transformations.FindVar("b")->GetIndex(), first + 1);

    CaseRecord record(dictionary);
    record.SetNumber(0, 1.5);
    record.SetNumber(1, 2.5);
    const ScoreCaseRecord* derived = transformations.GetValuesForDerivedVars(&record, &dictionary);
    EXPECT_TRUE(derived->IsAccessedByIndex());
    EXPECT_EQ(derived->GetValue(first)->GetDouble(), 1.5);
    EXPECT_EQ(derived->GetValue(first + 1)->GetDouble(), 2.5);
    EXPECT_EQ(derived->GetIndex("b"), first + 1);
    EXPECT_EQ(derived->GetIndex("x"), -1);
    EXPECT_EQ(derived->GetValue("x"), nullptr);
    for (const int index : {-1, 0, 1, first - 1, first + 2, 2147483647, -2147483647})
        EXPECT_EQ(derived->GetValue(index), nullptr) << index;
    EXPECT_EQ(record.GetValue(first), nullptr);
}

TEST_F(TransformationDictionaryTest, GivesTheSameRecordAndNewValuesForEachCase) {
    TransformationDictionary transformations;
    transformations.AddVar(Same(transformations, "a", "x"));
    transformations.SetUpDerivedCaseRecord();
    CaseRecord record(dictionary);
    const ScoreCaseRecord* first = nullptr;
    for (const double number : {1.5, -2.5, 1e300}) {
        record.SetNumber(0, number);
        const ScoreCaseRecord* derived = transformations.GetValuesForDerivedVars(&record, &dictionary);
        EXPECT_EQ(derived->GetValue("a")->GetDouble(), number);
        first = first ? first : derived;
        EXPECT_EQ(derived, first);
    }
    record.SetMissing(0);
    EXPECT_EQ(transformations.GetValuesForDerivedVars(&record, &dictionary)->GetValue("a"), nullptr);
}

TEST_F(TransformationDictionaryTest, TwoMayAlternateOnOneThread) {
    TransformationDictionary one;
    TransformationDictionary two;
    one.AddVar(Same(one, "a", "x"));
    two.AddVar(Same(two, "b", "y"));
    two.AddVar(Same(two, "c", "b"));
    one.SetUpDerivedCaseRecord();
    two.SetUpDerivedCaseRecord();
    CaseRecord record(dictionary);
    for (int i = 0; i < 100; ++i) {
        record.SetNumber(0, i);
        record.SetNumber(1, -i);
        EXPECT_EQ(one.GetValuesForDerivedVars(&record, &dictionary)->GetValue("a")->GetDouble(), i);
        EXPECT_EQ(two.GetValuesForDerivedVars(&record, &dictionary)->GetValue("c")->GetDouble(), -i);
    }
}

TEST_F(TransformationDictionaryTest, ASuccessorAtTheSamePlaceIsNotTakenForIt) {
    CaseRecord record(dictionary);
    record.SetNumber(0, 3.5);
    for (int fields = 1; fields < 20; ++fields) {
        TransformationDictionary transformations;
        for (int i = 0; i < fields; ++i)
            transformations.AddVar(Same(transformations, "f" + std::to_string(i), "x"));
        transformations.SetUpDerivedCaseRecord();
        const ScoreCaseRecord* derived = transformations.GetValuesForDerivedVars(&record, &dictionary);
        EXPECT_EQ(derived->GetValue("f" + std::to_string(fields - 1))->GetDouble(), 3.5);
    }
}

TEST_F(TransformationDictionaryTest, AFieldMayBeAddedBetweenCases) {
    TransformationDictionary transformations;
    CaseRecord record(dictionary);
    record.SetNumber(0, 3.5);
    for (const char* name : {"a", "b", "c"}) {
        transformations.AddVar(Same(transformations, name, "x"));
        transformations.SetUpDerivedCaseRecord();
        EXPECT_EQ(transformations.GetValuesForDerivedVars(&record, &dictionary)->GetValue(name)->GetDouble(), 3.5);
    }
}

TEST_F(TransformationDictionaryTest, NeedsNoLayoutToDeriveFromDerivedFields) {
    TransformationDictionary transformations;
    transformations.AddVar(Same(transformations, "a", "x"));
    transformations.AddVar(Same(transformations, "b", "a"));
    CaseRecord record(dictionary);
    record.SetNumber(0, 3.5);
    const ScoreCaseRecord* derived = transformations.GetValuesForDerivedVars(&record, &dictionary);
    EXPECT_EQ(derived->GetValue("b"), nullptr);
    transformations.SetUpDerivedCaseRecord();
    EXPECT_EQ(derived->GetValue("b")->GetDouble(), 3.5);
}

TEST_F(TransformationDictionaryTest, WhatAFieldCannotReadIsMissing) {
    TransformationDictionary transformations;
    transformations.AddVar(std::make_unique<TransformVar>("empty", FieldType{}, DictVar::kContinuous));
    for (const auto& [name, field] : {std::pair("of empty", "empty"), {"gone", "nowhere"}, {"last", "x"}})
        transformations.AddVar(Same(transformations, name, field));
    transformations.SetUpDerivedCaseRecord();
    CaseRecord record(dictionary);
    record.SetNumber(0, 3.5);
    for (int i = 0; i < 2; ++i) {
        const ScoreCaseRecord* derived = transformations.GetValuesForDerivedVars(&record, &dictionary);
        for (const char* name : {"empty", "of empty", "gone"})
            EXPECT_EQ(derived->GetValue(name), nullptr) << name;
        EXPECT_EQ(derived->GetValue("last")->GetDouble(), 3.5);
    }
    for (const auto* derived : {transformations.GetValuesForDerivedVars(nullptr, &dictionary),
                                transformations.GetValuesForDerivedVars(&record, nullptr)})
        EXPECT_EQ(derived->GetValue("last"), nullptr);
}

TEST_F(TransformationDictionaryTest, FieldsAreComputedBehindThoseThatTheyRead) {
    TransformationDictionary transformations;
    for (const char* name : {"c", "b", "a"})
        transformations.AddVar(std::make_unique<TransformVar>(name, FieldType{}, DictVar::kContinuous));
    const auto read = [&](const char* name, std::size_t slot) {
        transformations.FindVar(name)->SetExpression(std::make_unique<SameValue>(slot, ""));
    };
    read("c", transformations.FindVar("b")->GetSlot());
    read("b", transformations.FindVar("a")->GetSlot());
    read("a", transformations.AddRawField("y"));
    EXPECT_TRUE(transformations.Arrange().empty());
    transformations.SetUpDerivedCaseRecord();
    CaseRecord record(dictionary);
    record.SetNumber(1, -2.385);
    EXPECT_EQ(transformations.GetValuesForDerivedVars(&record, &dictionary)->GetValue("c")->GetDouble(), -2.385);
    EXPECT_EQ(transformations.FindRawFields({"c"}), std::vector<std::string>{"y"});
    EXPECT_TRUE(transformations.FindRawFields({"y", "none"}).empty());
    read("a", transformations.FindVar("c")->GetSlot());
    EXPECT_EQ(transformations.Arrange(), (std::vector<std::string>{"c", "b", "a", "c"}));
}

TEST_F(TransformationDictionaryTest, AnyDictionaryMayBeHandedOver) {
    TransformationDictionary transformations;
    transformations.AddVar(Same(transformations, "a", "x"));
    transformations.AddVar(Same(transformations, "b", "y"));
    transformations.SetUpDerivedCaseRecord();
    for (int round = 0; round < 3; ++round) {
        // Each time at the same place in memory, with the variables in another order or missing.
        std::vector<std::vector<std::string>> orders = {{"x", "y"}, {"y", "z", "x"}, {"y"}, {"x", "y"}};
        for (const auto& names : orders) {
            BaseDictionary other;
            for (const std::string& name : names)
                other.AddVar(std::make_unique<DictVar>(name, DictVar::kNumber, DictVar::kContinuous));
            CaseRecord record(other, CaseRecord::kByName);
            for (const std::string& name : names)
                record.SetNumber(record.GetIndex(name), name == "x" ? 1.25 : 2.5);
            const auto* derived = transformations.GetValuesForDerivedVars(&record, &other);
            EXPECT_EQ(derived->GetValue("b")->GetDouble(), 2.5);
            if (names.size() == 1)
                EXPECT_EQ(derived->GetValue("a"), nullptr);
            else
                EXPECT_EQ(derived->GetValue("a")->GetDouble(), 1.25);
        }
    }
}

TEST_F(TransformationDictionaryTest, ARecordWithoutIndicesOfItsVariablesIsMissing) {
    TransformationDictionary transformations;
    transformations.AddVar(Same(transformations, "a", "x"));
    transformations.SetUpDerivedCaseRecord();
    dictionary.FindVar("x")->SetIndex(-1);
    CaseRecord record(dictionary);
    record.SetNumber(0, 3.5);
    EXPECT_EQ(transformations.GetValuesForDerivedVars(&record, &dictionary)->GetValue("a"), nullptr);
}

TEST(TransformationDictionary, AnInvalidValueIsNoneOfAnyType) {
    DerivedFields fields("<DataField name='s' dataType='string'><Value value='a'/></DataField>",
                         "<DerivedField name='d' dataType='string'><FieldRef field='s'/></DerivedField>"
                         "<DerivedField name='e' dataType='double'><NormDiscrete field='s' value='a'/></DerivedField>");
    fields.Set("s", "z");
    const ScoreCaseRecord* derived = fields.Compute();
    for (const char* name : {"d", "e"}) {
        const ScoreValue* value = derived->GetValue(name);
        ASSERT_NE(value, nullptr);
        auto* variable = fields.transformations->FindVar(name);
        EXPECT_FALSE(variable->IsMissing(value));
        EXPECT_FALSE(variable->IsValid(value));
        variable->SetInvalidTreatment(DictVar::kAsIs, nullptr);
        EXPECT_FALSE(variable->IsValid(value));
        EXPECT_EQ(variable->GetCategoryIndex(value), -1);
    }
}

TEST(TransformationDictionary, EachThreadHasItsOwnRecord) {
    const DerivedFields shared(
        "<DataField name='x' dataType='double'/>",
        "<DerivedField name='d' dataType='double'><NormContinuous field='x'><LinearNorm orig='0' "
        "norm='0'/><LinearNorm orig='1' norm='2'/></NormContinuous></DerivedField>");
    constexpr int kThreads = 4;
    std::atomic<int> wrong{0};
    std::vector<const ScoreCaseRecord*> records(kThreads);
    std::atomic<int> running{kThreads};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            CaseRecord record(*shared.dictionary);
            for (int i = 0; i < 5'000; ++i) {
                const double number = t * 10'000 + i;
                record.SetNumber(0, number);
                const auto* derived = shared.transformations->GetValuesForDerivedVars(&record, shared.dictionary.get());
                records[static_cast<std::size_t>(t)] = derived;
                if (derived->GetValue("d")->GetDouble() != 2 * number)
                    ++wrong;
            }
            // All records live until every thread has its own.
            --running;
            while (running > 0)
                std::this_thread::yield();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    for (int t = 1; t < kThreads; ++t)
        EXPECT_NE(records[static_cast<std::size_t>(t)], records[0]);
}

}  // namespace
