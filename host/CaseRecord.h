// The host's case record: one cell for each variable of a dictionary.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/NumericValue.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreDictionary.h"
#include "host/StringValue.h"

namespace KwBrevix_930 {

class DictVar;

/// Filled anew for each case without allocating for numbers. Cells stand in dictionary order and start missing. A cell
/// holds what its variable's treatments make of the value, as DictVar::Treat says.
class BREVIX_HOST_API CaseRecord : public ScoreCaseRecord {
public:
    enum Access { kByIndex, kByName };

    /// dictionary: must outlive the record and hold variables of the host's own class DictVar only; their declarations
    /// and replacements must stay as they are as long as the record is used.
    explicit CaseRecord(const ScoreDictionary& dictionary, Access access = kByIndex);
    CaseRecord(const CaseRecord&) = delete;
    CaseRecord& operator=(const CaseRecord&) = delete;
    ~CaseRecord() override;

    /// Errors of the three setters: std::out_of_range for an index that GetIndex does not give.
    void SetMissing(int index);
    /// text: UTF-8; in a number field a text that is no number becomes an invalid value.
    void SetText(int index, std::string_view text);
    void SetNumber(int index, double number);
    /// Makes every cell missing.
    void Clear();

    bool IsAccessedByIndex() const override { return fAccess == kByIndex; }
    const ScoreValue* GetValue(int index) const override;
    const ScoreValue* GetValue(const std::string& name) const override;
    int GetIndex(const std::string& name) const override;

private:
    struct Cell {
        explicit Cell(const DictVar* itsVariable) : variable(itsVariable), number(0.0), text("") {}

        const DictVar* variable;
        NumericValue number;
        StringValue text;
        const ScoreValue* current = nullptr;
    };

    Access fAccess;
    std::vector<Cell> fCells;
    std::unordered_map<std::string, int> fIndexByName;
};

}  // namespace KwBrevix_930
