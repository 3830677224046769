// The host's dictionary.
#include "host/BaseDictionary.h"

#include "host/DictVar.h"

namespace KwBrevix_930 {

ScoreDictionary::~ScoreDictionary() = default;

BaseDictionary::BaseDictionary() = default;
BaseDictionary::~BaseDictionary() = default;

std::unique_ptr<BaseDictionary> BaseDictionary::CopyOf(const ScoreDictionary& other) {
    auto copy = std::make_unique<BaseDictionary>();
    for (const ScoreDictVar* variable : other.GetVars())
        copy->AddVar(variable->GetName(), *variable);
    return copy;
}

bool BaseDictionary::AddVar(std::unique_ptr<ScoreDictVar> variable) {
    if (!fVarByName.emplace(variable->GetName(), variable.get()).second)
        return false;
    fVars.push_back(variable.get());
    fOwned.push_back(std::move(variable));
    return true;
}

bool BaseDictionary::AddVar(const std::string& name, const ScoreDictVar& variable) {
    auto copy = DictVar::CopyOf(variable);
    copy->SetName(name);
    return AddVar(std::move(copy));
}

int BaseDictionary::GetVarCount() const {
    return static_cast<int>(fVars.size());
}

ScoreDictVar* BaseDictionary::FindVar(const std::string& name) const {
    const auto found = fVarByName.find(name);
    return found == fVarByName.end() ? nullptr : found->second;
}

}  // namespace KwBrevix_930
