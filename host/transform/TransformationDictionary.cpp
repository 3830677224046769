// The derived fields of a model, computed into a record of the calling thread.
#include "host/transform/TransformationDictionary.h"

#include <atomic>
#include <cmath>

#include "host/NumericValue.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreDictionary.h"
#include "host/StringValue.h"
#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

// Behind every index that a raw record can hold.
constexpr int kFirstDerivedIndex = 1 << 30;

std::uint64_t NextSerialNumber() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

// A value that no variable allows, whatever its data type and treatment: it is neither numeric nor a text.
class InvalidValue : public StringValue {
public:
    InvalidValue() : StringValue("") {}
    ValueType GetType() const override { return kDateTime; }
};

class DerivedRecord : public ScoreCaseRecord {
public:
    explicit DerivedRecord(const TransformationDictionary& dictionary) : fDictionary(dictionary) {
        fCells.resize(dictionary.GetVars().size());
    }

    DerivedValue& Derived(std::size_t i) { return fCells[i].derived; }

    // Makes the value object of a cell say what was derived.
    void Publish(std::size_t i) {
        Cell& cell = fCells[i];
        switch (cell.derived.state) {
            case DerivedValue::kMissing:
                cell.current = nullptr;
                break;
            case DerivedValue::kInvalid:
                cell.current = &fInvalid;
                break;
            case DerivedValue::kNumber:
                cell.number.SetDoubleValue(cell.derived.number);
                cell.current = &cell.number;
                break;
            case DerivedValue::kText:
                cell.text.SetText(cell.derived.text);
                cell.current = &cell.text;
                break;
        }
    }

    bool IsAccessedByIndex() const override { return true; }

    const ScoreValue* GetValue(int index) const override {
        const int place = index - kFirstDerivedIndex;
        const bool isHeld = index >= kFirstDerivedIndex && static_cast<std::size_t>(place) < fCells.size();
        return isHeld ? fCells[static_cast<std::size_t>(place)].current : nullptr;
    }

    const ScoreValue* GetValue(const std::string& name) const override { return GetValue(GetIndex(name)); }

    int GetIndex(const std::string& name) const override {
        const TransformVar* variable = fDictionary.FindVar(name);
        return variable ? variable->GetIndex() : -1;
    }

private:
    struct Cell {
        DerivedValue derived;
        NumericValue number{0.0};
        StringValue text{""};
        const ScoreValue* current = nullptr;
    };

    const TransformationDictionary& fDictionary;
    std::vector<Cell> fCells;
    InvalidValue fInvalid;
};

struct ThreadCache {
    std::uint64_t owner = 0;
    std::unique_ptr<DerivedRecord> record;
};

// The state of a raw value, under the variable's own rules.
void ReadRaw(const ScoreDictVar& variable, const ScoreValue* value, bool usesReplacements, DerivedValue& raw) {
    const bool isMissing = variable.IsMissing(value);
    if (isMissing && !(usesReplacements && value && value == variable.GetVarStats()->GetMissingReplacement())) {
        raw.state = DerivedValue::kMissing;
    } else if (!isMissing && !variable.IsValid(value)) {
        raw.state = DerivedValue::kInvalid;
    } else if (value->GetType() == ScoreValue::kNumeric) {
        raw.state = DerivedValue::kNumber;
        raw.number = value->GetDouble();
    } else {
        raw.state = DerivedValue::kText;
        raw.text = value->GetString();
    }
}

// Makes a result one of the derived field's own data type.
void FitToType(const TransformVar& variable, DerivedValue& result) {
    if (result.state == DerivedValue::kNumber && variable.IsString()) {
        result.state = DerivedValue::kText;
        result.text = NumberText(result.number);
    } else if (result.state == DerivedValue::kText && !variable.IsString()) {
        const auto number = variable.ParseText(result.text);
        result.state = number ? DerivedValue::kNumber : DerivedValue::kInvalid;
        result.number = number.value_or(0.0);
    }
    if (result.state == DerivedValue::kNumber && std::isnan(result.number))
        result.state = DerivedValue::kInvalid;
}

}  // namespace

TransformationDictionary::TransformationDictionary() : fSerialNumber(NextSerialNumber()) {}
TransformationDictionary::~TransformationDictionary() = default;

bool TransformationDictionary::AddVar(std::unique_ptr<TransformVar> variable) {
    if (!fPlaceByName.emplace(variable->GetName(), fVars.size()).second)
        return false;
    fVars.push_back(std::move(variable));
    fSerialNumber = NextSerialNumber();
    return true;
}

TransformVar* TransformationDictionary::FindVar(const std::string& name) const {
    const auto found = fPlaceByName.find(name);
    return found == fPlaceByName.end() ? nullptr : fVars[found->second].get();
}

void TransformationDictionary::SetUpDerivedCaseRecord() {
    for (std::size_t i = 0; i < fVars.size(); ++i)
        fVars[i]->SetIndex(kFirstDerivedIndex + static_cast<int>(i));
}

const ScoreCaseRecord* TransformationDictionary::GetValuesForDerivedVars(const ScoreCaseRecord* record,
                                                                         const ScoreDictionary* dictionary) const {
    static thread_local ThreadCache cache;
    if (cache.owner != fSerialNumber) {
        cache.record = std::make_unique<DerivedRecord>(*this);
        cache.owner = fSerialNumber;
    }
    DerivedValue raw;
    for (std::size_t i = 0; i < fVars.size(); ++i) {
        const Expression& expression = fVars[i]->GetExpression();
        DerivedValue& result = cache.record->Derived(i);
        const ScoreDictVar* source = dictionary ? dictionary->FindVar(expression.GetFieldName()) : nullptr;
        const auto derived = fPlaceByName.find(expression.GetFieldName());
        if (source) {
            ReadRaw(*source, record ? record->GetValueOf(*source) : nullptr, fUsesReplacements, raw);
            expression.Evaluate(*source, raw, result);
        } else if (derived != fPlaceByName.end() && derived->second < i) {
            expression.Evaluate(*fVars[derived->second], cache.record->Derived(derived->second), result);
        } else {
            result.state = DerivedValue::kMissing;
        }
        FitToType(*fVars[i], result);
        cache.record->Publish(i);
    }
    return cache.record.get();
}

}  // namespace KwBrevix_930
