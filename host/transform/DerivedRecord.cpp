// The record of derived values that a thread fills for one case after another.
#include "host/transform/DerivedRecord.h"

#include <limits>
#include <typeinfo>

#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/transform/TransformationDictionary.h"

namespace KwBrevix_930 {

namespace {

constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

void ReadText(const ScoreValue& value, DerivedValue& raw) {
    if (typeid(value) == typeid(StringValue))
        raw.BorrowText(static_cast<const StringValue&>(value).GetText());
    else
        raw.OwnText(value.GetString());
}

}  // namespace

void ReadRaw(const ScoreDictVar& variable, const ScoreValue* value, bool usesReplacements, DerivedValue& raw) {
    const bool isMissing = variable.IsMissing(value);
    if (isMissing && !(usesReplacements && value && value == variable.GetVarStats()->GetMissingReplacement()))
        raw.SetMissing();
    else if (!isMissing && !variable.IsValid(value))
        raw.SetInvalid();
    else if (value->GetType() == ScoreValue::kNumeric)
        raw.SetNumber(value->GetDouble());
    else
        ReadText(*value, raw);
}

DerivedRecord::DerivedRecord(const TransformationDictionary& dictionary)
    : fDictionary(dictionary),
      fSlots(dictionary.fSlots.size()),
      fCells(dictionary.fVars.size()),
      fPlaces(dictionary.fRawFields.size(), kNowhere) {
    for (const auto& variable : dictionary.fVars)
        fSlots[variable->GetSlot()].SetVariable(variable.get());
}

void DerivedRecord::Fill(const ScoreCaseRecord* record, const ScoreDictionary* dictionary) {
    for (std::size_t i = 0; i < fPlaces.size(); ++i) {
        DerivedValue& raw = fSlots[fDictionary.fRawFields[i].slot];
        raw.SetVariable(dictionary ? FindRaw(i, *dictionary) : nullptr);
        if (raw.GetVariable())
            ReadRaw(*raw.GetVariable(), record ? record->GetValueOf(*raw.GetVariable()) : nullptr,
                    fDictionary.fUsesReplacements, raw);
        else
            raw.SetMissing();
    }
    for (const std::size_t place : fDictionary.fOrder) {
        const TransformVar& variable = *fDictionary.fVars[place];
        DerivedValue& derived = fSlots[variable.GetSlot()];
        if (const Expression* expression = variable.GetExpression())
            expression->Evaluate(fSlots, derived);
        Publish(derived, fCells[place]);
    }
}

const ScoreDictVar* DerivedRecord::FindRaw(std::size_t place, const ScoreDictionary& dictionary) {
    const std::string& name = fDictionary.fRawFields[place].name;
    const auto find = [&]() -> const ScoreDictVar* {
        const auto& variables = dictionary.GetVars();
        const std::size_t there = fPlaces[place];
        return there < variables.size() && variables[there]->GetName() == name ? variables[there] : nullptr;
    };
    const bool isKnown = &dictionary == fSeen && dictionary.GetVars().size() == fSeenCount;
    const ScoreDictVar* variable = find();
    if (variable || (isKnown && fPlaces[place] == kNowhere))
        return variable;
    FindPlaces(dictionary);
    return find();
}

void DerivedRecord::FindPlaces(const ScoreDictionary& dictionary) {
    fPlaces.assign(fPlaces.size(), kNowhere);
    const auto& variables = dictionary.GetVars();
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const auto found = fDictionary.fRawPlaceByName.find(variables[i]->GetName());
        if (found != fDictionary.fRawPlaceByName.end())
            fPlaces[found->second] = i;
    }
    fSeen = &dictionary;
    fSeenCount = variables.size();
}

// Makes the value object of a cell say what was derived.
void DerivedRecord::Publish(const DerivedValue& derived, Cell& cell) const {
    switch (derived.GetState()) {
        case DerivedValue::kMissing:
            cell.current = nullptr;
            break;
        case DerivedValue::kInvalid:
            cell.current = &fInvalid;
            break;
        case DerivedValue::kNumber:
            cell.number.SetDoubleValue(derived.GetNumber());
            cell.current = &cell.number;
            break;
        case DerivedValue::kText:
            cell.text.SetText(derived.GetText());
            cell.current = &cell.text;
            break;
    }
}

const ScoreValue* DerivedRecord::GetValue(int index) const {
    const int place = index - kFirstDerivedIndex;
    const bool isHeld = index >= kFirstDerivedIndex && static_cast<std::size_t>(place) < fCells.size();
    return isHeld ? fCells[static_cast<std::size_t>(place)].current : nullptr;
}

int DerivedRecord::GetIndex(const std::string& name) const {
    const TransformVar* variable = fDictionary.FindVar(name);
    return variable ? variable->GetIndex() : -1;
}

}  // namespace KwBrevix_930
