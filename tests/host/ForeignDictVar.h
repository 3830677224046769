// A variable that is not of the host's own class: its category names are not its values.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "host/NumericValue.h"
#include "host/ScoreDictVar.h"
#include "host/StringValue.h"

class ForeignDictVar : public KwBrevix_930::ScoreDictVar {
public:
    ForeignDictVar(std::string name, bool isString) : fName(std::move(name)), fIsString(isString) {}

    void AddCategory(const std::string& name, KwBrevix_930::ScoreValue* value) {
        fCategories.push_back({name, std::unique_ptr<KwBrevix_930::ScoreValue>(value)});
    }

    const std::string& GetName() const override { return fName; }
    Kind GetKind() const override { return kOrdinal; }
    bool IsMissing(const KwBrevix_930::ScoreValue* value) const override { return !value; }
    bool IsValid(const KwBrevix_930::ScoreValue* value) const override { return value != nullptr; }
    bool IsString() const override { return fIsString; }
    KwBrevix_930::ScoreVarStats* GetVarStats() override { return &fStats; }
    const KwBrevix_930::ScoreVarStats* GetVarStats() const override { return &fStats; }
    const std::vector<KwBrevix_930::ScoreCategory>* GetCategories() const override {
        return fCategories.empty() ? nullptr : &fCategories;
    }
    int GetCategoryIndex(const KwBrevix_930::ScoreValue*) const override { return -1; }
    int GetCategoryIndex(const std::string&) const override { return -1; }
    int RegisterCategory(const std::string&) override { return -1; }
    int GetIndex() const override { return fIndex; }
    void SetIndex(int index) override { fIndex = index; }
    void Display(std::ostream& stream) const override { stream << "foreign " << fName; }

private:
    std::string fName;
    bool fIsString;
    std::vector<KwBrevix_930::ScoreCategory> fCategories;
    KwBrevix_930::ScoreVarStats fStats;
    int fIndex = -1;
};
