// The host's variable: a field of the data dictionary with its declared values and treatments.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/NumericValue.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreMissingValueSet.h"
#include "host/short_decimal.h"

namespace KwBrevix_930 {

struct FieldType;

class BREVIX_HOST_API DictVar : public ScoreDictVar {
public:
    /// The storage that a PMML data type leads to.
    enum DataType { kString, kNumber, kBoolean };

    /// What becomes of a value that the declaration does not allow.
    enum InvalidTreatment { kReturnInvalid, kAsIs, kAsMissing, kAsValue };

    /// What becomes of a number that is smaller or larger than the usual ones.
    enum OutlierTreatment { kOutliersAsIs, kOutliersAsMissing, kOutliersAsExtreme };

    /// A range of valid numbers; an absent margin is open to infinity.
    struct Interval {
        std::optional<double> left;
        std::optional<double> right;
        bool isLeftClosed = true;
        bool isRightClosed = true;

        bool Contains(double number) const;
    };

    DictVar(std::string name, DataType type, Kind kind);
    /// Copies a variable of any dictionary, as far as its interface tells what it is; a DictVar is copied whole.
    static std::unique_ptr<DictVar> CopyOf(const ScoreDictVar& other);
    DictVar(const DictVar& other);
    DictVar& operator=(const DictVar&) = delete;
    ~DictVar() override;

    DataType GetDataType() const { return fType; }
    /// The data type as the document names it, of which GetDataType tells the storage. A variable of date, time or
    /// dateTime has texts that are such; one that counts days or seconds takes their ISO 8601 texts for numbers.
    void SetFieldType(const FieldType& type);
    /// Returns: null where only the storage is known; owned here.
    const FieldType* GetFieldType() const { return fFieldType.get(); }
    void SetName(std::string name) { fName = std::move(name); }
    void SetKind(Kind kind) { fKind = kind; }

    /// Declares a valid value. Declared a second time, a value keeps its first place. displayValue: what people are to
    /// see in its place; empty where nothing is declared.
    /// Fails: false, and nothing is declared, for a text that is no value of the data type, and behind a category that
    /// was registered only.
    bool AddCategory(const std::string& text, const std::string& displayValue = {});
    /// Returns: what people are to see in place of a declared category: its displayValue, or its name where none is
    /// declared.
    /// Errors: std::out_of_range for an index that is no declared category's.
    const std::string& GetDisplayValue(int category) const;
    /// Declares a value that stands for a missing one. In a number field, a text that is no number stands for itself.
    void AddMissingValue(const std::string& text);
    /// Declares a value that is not allowed. Text: as AddMissingValue.
    void AddInvalidValue(const std::string& text);
    void AddInterval(const Interval& interval);
    const std::vector<Interval>& GetIntervals() const { return fIntervals; }

    /// replacement: the value for kAsValue, otherwise null.
    void SetInvalidTreatment(InvalidTreatment treatment, std::unique_ptr<ScoreValue> replacement);
    InvalidTreatment GetInvalidTreatment() const { return fTreatment; }
    const ScoreValue* GetInvalidReplacement() const { return fInvalidReplacement.get(); }

    /// low, high: the limits of what is usual; without one, that side has no outliers. Texts are never outliers.
    void SetOutlierTreatment(OutlierTreatment treatment, std::optional<double> low, std::optional<double> high);
    /// Whether a missing value makes the case invalid, whatever could replace it.
    void SetMissingIsInvalid(bool isInvalid) { fMissingIsInvalid = isInvalid; }

    /// Returns: what a record holds for a raw value: the value itself, or an object of this variable that stands in
    /// for it; null for a missing value without a replacement.
    const ScoreValue* Treat(const ScoreValue& raw) const;
    /// Returns: what a record holds for a missing value.
    const ScoreValue* TreatMissing() const;

    /// Returns: a text as a value of this variable: a number where the data type is one, for a boolean 1 or 0; null for
    /// a text that is none.
    std::unique_ptr<ScoreValue> MakeValue(std::string_view text) const;
    /// Returns: the number that a text is under this variable's data type; of a boolean, true and false, in
    /// letters of either case, are 1 and 0, and other numbers are none.
    std::optional<double> ParseText(std::string_view text) const;

    /// What scoring takes of a text that no treatment concerns, sooner than by way of the record.
    /// text: ShortDecimal::kFront bytes in front of its end are there to be read; which ones does not matter.
    /// number: becomes the number that the text is, or the index of its category where the variable's values are texts,
    /// -1 for a text that is none.
    /// Returns: false for a text that is missing or invalid or that something else stands in for.
    bool ReadPlain(std::string_view text, double& number) const {
        // What is so short is neither NaN nor the system-missing value.
        return (!fHasNumberRules && ShortDecimal::ParseWithFront(text, number)) || ReadByRules(text, number);
    }

    /// Returns: whether the declaration allows a value, whatever the treatment.
    bool IsDeclaredValid(const ScoreValue& value) const;

    const std::string& GetName() const override { return fName; }
    Kind GetKind() const override { return fKind; }
    bool IsMissing(const ScoreValue* value) const override;
    bool IsValid(const ScoreValue* value) const override;
    bool IsString() const override { return fType == kString; }
    ScoreVarStats* GetVarStats() override { return &fStats; }
    const ScoreVarStats* GetVarStats() const override { return &fStats; }
    const std::vector<ScoreCategory>* GetCategories() const override {
        return fCategories.empty() ? nullptr : &fCategories;
    }
    int GetCategoryIndex(const ScoreValue* value) const override;
    int GetCategoryIndex(const std::string& category) const override;
    int RegisterCategory(const std::string& category) override;
    int GetIndex() const override { return fIndex; }
    void SetIndex(int index) override { fIndex = index; }
    void Display(std::ostream& stream) const override;

private:
    // Hashes texts of any kind alike, so that none is copied for a look-up.
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    void FindNumberRules();
    bool ReadByRules(std::string_view text, double& number) const;
    bool IsPlain(const ScoreValue& value) const;
    bool IsOfDataType(const ScoreValue& value) const;
    bool IsRightText(std::string_view text) const;
    std::optional<double> ParseCount(std::string_view text) const;
    std::optional<int> FindText(std::string_view text) const;
    std::optional<int> FindNumber(double number) const;
    const ScoreValue* TreatOutlier(const ScoreValue& value) const;
    std::unique_ptr<ScoreValue> MakeAnyValue(const std::string& text) const;
    void Declare(const std::string& name, std::unique_ptr<ScoreValue> value);
    int AddToLookUp(const std::string& text, std::optional<double> number);

    std::string fName;
    DataType fType;
    std::unique_ptr<const FieldType> fFieldType;
    Kind fKind;
    std::vector<ScoreCategory> fCategories;
    // By category index; shorter than the categories where the last ones declare none.
    std::vector<std::string> fDisplayValues;
    // Both look-ups lead to category indices; those from fCategories.size() on were registered, not declared.
    std::unordered_map<std::string, int, TextHash, std::equal_to<>> fIndexByText;
    std::unordered_map<double, int> fIndexByNumber;
    int fLookUpCount = 0;
    ScoreMissingValueSet fMissingValues;
    ScoreMissingValueSet fInvalidValues;
    std::vector<Interval> fIntervals;
    InvalidTreatment fTreatment = kReturnInvalid;
    std::unique_ptr<ScoreValue> fInvalidReplacement;
    OutlierTreatment fOutliers = kOutliersAsIs;
    std::optional<NumericValue> fLow;
    std::optional<NumericValue> fHigh;
    bool fMissingIsInvalid = false;
    // Whether what becomes of a number depends on which one it is.
    bool fHasNumberRules;
    ScoreVarStats fStats;
    int fIndex = -1;
};

}  // namespace KwBrevix_930
