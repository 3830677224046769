// Built-in functions on texts: case, parts, length and joining. Other values are taken as the texts that casts make of
// them.
#include <cmath>
#include <string>

#include "host/transform/built_in_functions.h"
#include "host/transform/utf8_text.h"

namespace KwBrevix_930 {

namespace {

// A function of one text; it may make a number of it.
class TextExpression : public FunctionExpression {
public:
    using Action = void (*)(std::string_view text, DerivedValue& result);

    TextExpression(FieldType type, Action action, FunctionCall&& call)
        : FunctionExpression(type, std::move(call)), fAction(action) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue text;
        if (!EvaluateAll(slots, {&text, 1}, result))
            return result.IsMissing();
        fAction(text.GetText(), result);
        return false;
    }

private:
    Action fAction;
};

// Characters are counted from 1. A start before the first character or a negative length is invalid.
class SubstringExpression : public FunctionExpression {
public:
    explicit SubstringExpression(FunctionCall&& call) : FunctionExpression({FieldType::kString}, std::move(call)) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue values[3];
        if (!EvaluateAll(slots, values, result))
            return result.IsMissing();
        const double first = values[1].GetNumber();
        const double count = values[2].GetNumber();
        if (!IsCount(first) || !IsCount(count) || first < 1.0)
            result.SetInvalid();
        else
            SetComputedText(result, std::string(CharactersFrom(values[0].GetText(), static_cast<std::size_t>(first) - 1,
                                                               static_cast<std::size_t>(count))));
        return false;
    }

private:
    static bool IsCount(double number) { return number >= 0.0 && number < 1e9 && number == std::floor(number); }
};

class ConcatExpression : public FunctionExpression {
public:
    explicit ConcatExpression(FunctionCall&& call) : FunctionExpression({FieldType::kString}, std::move(call)) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        std::string text;
        bool isAnyMissing = false;
        bool isAnyInvalid = false;
        for (std::size_t i = 0; i < GetArgumentCount(); ++i) {
            EvaluateArgument(i, slots, result);
            isAnyMissing = isAnyMissing || result.IsMissing();
            isAnyInvalid = isAnyInvalid || result.IsInvalid();
            if (result.IsText() && text.size() <= kComputedTextLimit)
                text += result.GetText().substr(0, kComputedTextLimit + 1);
        }
        if (isAnyInvalid)
            result.SetInvalid();
        else if (isAnyMissing)
            result.SetMissing();
        else
            SetComputedText(result, std::move(text));
        return isAnyMissing && !isAnyInvalid;
    }
};

void Upper(std::string_view text, DerivedValue& result) {
    SetComputedText(result, UpperCase(text));
}

void Lower(std::string_view text, DerivedValue& result) {
    SetComputedText(result, LowerCase(text));
}

// Blanks only, at both ends.
void Trim(std::string_view text, DerivedValue& result) {
    const std::size_t first = text.find_first_not_of(' ');
    SetComputedText(result, first == std::string_view::npos
                                ? std::string()
                                : std::string(text.substr(first, text.find_last_not_of(' ') - first + 1)));
}

void Length(std::string_view text, DerivedValue& result) {
    result.SetNumber(static_cast<double>(CountCharacters(text)));
}

template <FieldType::Code type, TextExpression::Action action>
std::unique_ptr<FunctionExpression> MakeText(FunctionCall&& call) {
    TakeAsText(call, 0);
    return std::make_unique<TextExpression>(FieldType{type}, action, std::move(call));
}

std::unique_ptr<FunctionExpression> MakeSubstring(FunctionCall&& call) {
    TakeAsText(call, 0);
    RequireNumber(call, 1);
    RequireNumber(call, 2);
    return std::make_unique<SubstringExpression>(std::move(call));
}

std::unique_ptr<FunctionExpression> MakeConcat(FunctionCall&& call) {
    for (std::size_t i = 0; i < call.arguments.size(); ++i)
        TakeAsText(call, i);
    return std::make_unique<ConcatExpression>(std::move(call));
}

constexpr BuiltInFunction kTextFunctions[] = {
    {"uppercase", 1, 1, &MakeText<FieldType::kString, &Upper>},
    {"lowercase", 1, 1, &MakeText<FieldType::kString, &Lower>},
    {"trimBlanks", 1, 1, &MakeText<FieldType::kString, &Trim>},
    {"stringLength", 1, 1, &MakeText<FieldType::kInteger, &Length>},
    {"substring", 3, 3, &MakeSubstring},
    {"concat", 2, kAnyNumber, &MakeConcat},
};

}  // namespace

std::span<const BuiltInFunction> TextFunctions() {
    return kTextFunctions;
}

}  // namespace KwBrevix_930
