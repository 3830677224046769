// The host's case record.
#include "host/CaseRecord.h"

#include "host/DictVar.h"

namespace KwBrevix_930 {

ScoreCaseRecord::~ScoreCaseRecord() = default;

const ScoreValue* ScoreCaseRecord::GetValueOf(const ScoreDictVar& variable) const {
    return IsAccessedByIndex() ? GetValue(variable.GetIndex()) : GetValue(variable.GetName());
}

CaseRecord::CaseRecord(const ScoreDictionary& dictionary, Access access) : fAccess(access) {
    for (const ScoreDictVar* variable : dictionary.GetVars()) {
        fIndexByName.emplace(variable->GetName(), static_cast<int>(fCells.size()));
        fCells.emplace_back(&dynamic_cast<const DictVar&>(*variable));
    }
    Clear();
}

CaseRecord::~CaseRecord() = default;

void CaseRecord::SetMissing(int index) {
    Cell& cell = fCells.at(static_cast<std::size_t>(index));
    cell.current = cell.variable->TreatMissing();
}

void CaseRecord::SetText(int index, std::string_view text) {
    Cell& cell = fCells.at(static_cast<std::size_t>(index));
    if (const auto number = cell.variable->ParseText(text)) {
        SetNumber(index, *number);
        return;
    }
    cell.text.SetText(text);
    cell.current = cell.variable->Treat(cell.text);
}

void CaseRecord::SetNumber(int index, double number) {
    Cell& cell = fCells.at(static_cast<std::size_t>(index));
    cell.number.SetDoubleValue(number);
    cell.current = cell.variable->Treat(cell.number);
}

void CaseRecord::Clear() {
    for (std::size_t i = 0; i < fCells.size(); ++i)
        SetMissing(static_cast<int>(i));
}

const ScoreValue* CaseRecord::GetValue(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= fCells.size())
        return nullptr;
    return fCells[static_cast<std::size_t>(index)].current;
}

const ScoreValue* CaseRecord::GetValue(const std::string& name) const {
    return GetValue(GetIndex(name));
}

int CaseRecord::GetIndex(const std::string& name) const {
    const auto found = fIndexByName.find(name);
    return found == fIndexByName.end() ? -1 : found->second;
}

}  // namespace KwBrevix_930
