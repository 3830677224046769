// The value of a field or an expression for one case.
#pragma once

#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "host/Export.h"

namespace KwBrevix_930 {

class ScoreDictVar;

/// Missing at the start. Texts are borrowed where they can be, so that a row copies none; hence a value is not copied:
/// it borrows from another, or is computed in place.
class DerivedValue {
public:
    enum State { kMissing, kInvalid, kNumber, kText };

    DerivedValue() = default;
    DerivedValue(const DerivedValue&) = delete;
    DerivedValue& operator=(const DerivedValue&) = delete;

    State GetState() const { return fState; }
    bool IsMissing() const { return fState == kMissing; }
    bool IsInvalid() const { return fState == kInvalid; }
    bool IsNumber() const { return fState == kNumber; }
    bool IsText() const { return fState == kText; }

    /// Of a number.
    double GetNumber() const { return fNumber; }
    /// Of a text; stays as it is until this value, or the one that it borrows from, changes.
    std::string_view GetText() const { return fText; }

    /// Returns: the variable whose value this is, for values that are fields; otherwise null.
    const ScoreDictVar* GetVariable() const { return fVariable; }
    void SetVariable(const ScoreDictVar* variable) { fVariable = variable; }

    void SetMissing() { fState = kMissing; }
    void SetInvalid() { fState = kInvalid; }

    /// A number that is not a number makes an invalid value.
    void SetNumber(double number) {
        fState = std::isnan(number) ? kInvalid : kNumber;
        fNumber = number;
    }
    void SetBoolean(bool boolean) { SetNumber(boolean ? 1.0 : 0.0); }

    /// text: borrowed; must stay as long as it is asked for here.
    void BorrowText(std::string_view text) {
        fState = kText;
        fText = text;
    }

    /// Takes a text over.
    void OwnText(std::string text) {
        fOwned = std::move(text);
        BorrowText(fOwned);
    }

    /// Becomes what the other value is, but for its variable; a text stays the other's.
    void Borrow(const DerivedValue& other) {
        fState = other.fState;
        fNumber = other.fNumber;
        fText = other.fText;
    }

    /// Makes a borrowed text this value's own.
    void KeepText() {
        if (fState == kText && fText.data() != fOwned.data())
            OwnText(std::string(fText));
    }

private:
    State fState = kMissing;
    double fNumber = 0.0;
    std::string_view fText;
    std::string fOwned;
    const ScoreDictVar* fVariable = nullptr;
};

}  // namespace KwBrevix_930
