// Built-in functions that take a pattern: replace and matches by regular expressions, formatNumber, formatDatetime. A
// constant pattern is read once, at load. Expressions are matched in time linear in the text; what only backtracking
// can do, references back and looking around, is refused.
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <re2/re2.h>

#include "host/refusal.h"
#include "host/transform/DateTimeFormat.h"
#include "host/transform/NumberFormat.h"
#include "host/transform/built_in_functions.h"
#include "host/transform/cast.h"
#include "host/transform/utf8_text.h"

namespace KwBrevix_930 {

namespace {

// A pattern that is constant, or is given by an argument for each case. Pattern has Parse, which gives something that
// can be asked whether it holds a pattern, and be dereferenced.
template <typename Pattern>
class PatternArgument {
public:
    using Parsed = decltype(Pattern::Parse(std::string_view()));

    /// Errors: BXException 260153 for a constant that is no pattern.
    PatternArgument(const Expression& argument, const char* function) {
        const Literal* literal = argument.GetLiteral();
        if (!literal || literal->isMissing)
            return;
        fConstant = Pattern::Parse(literal->text);
        if (!fConstant)
            Refuse(260153, literal->text, "the pattern", function);
    }

    /// Calls an action with the pattern. text: the argument's value.
    /// Returns: false, and does nothing, where there is no pattern.
    template <typename Action>
    bool With(std::string_view text, Action&& action) const {
        if (fConstant) {
            action(*fConstant);
            return true;
        }
        const Parsed parsed = Pattern::Parse(text);
        if (parsed)
            action(*parsed);
        return static_cast<bool>(parsed);
    }

private:
    Parsed fConstant{};
};

struct RegularExpression {
    static std::unique_ptr<const re2::RE2> Parse(std::string_view text) {
        static const re2::RE2::Options kOptions = [] {
            re2::RE2::Options options;
            options.set_log_errors(false);
            options.set_max_mem(1 << 20);
            return options;
        }();
        auto expression = std::make_unique<const re2::RE2>(re2::StringPiece(text.data(), text.size()), kOptions);
        return expression->ok() ? std::move(expression) : nullptr;
    }
};

// What stands in for a match: text, $0 to $9 for a group, and \ before a character that is meant as it is.
struct Replacement {
    // Text, and the group behind it.
    struct Piece {
        std::string text;
        int group;
    };

    std::vector<Piece> pieces;
    // Behind the pieces.
    std::string text;
    int highestGroup = 0;

    static std::optional<Replacement> Parse(std::string_view pattern) {
        Replacement replacement;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            const bool isMark = pattern[i] == '\\' || pattern[i] == '$';
            if (isMark && i + 1 == pattern.size())
                return std::nullopt;
            if (pattern[i] != '$') {
                replacement.text += pattern[isMark ? ++i : i];
                continue;
            }
            const int group = pattern[++i] - '0';
            if (group < 0 || group > 9)
                return std::nullopt;
            replacement.pieces.push_back({std::exchange(replacement.text, {}), group});
            replacement.highestGroup = std::max(replacement.highestGroup, group);
        }
        return replacement;
    }
};

// Replaces every match from the left. Returns nothing beyond the limit of computed texts.
std::optional<std::string> ReplaceAll(std::string_view text, const re2::RE2& expression,
                                      const Replacement& replacement) {
    const re2::StringPiece whole(text.data(), text.size());
    re2::StringPiece groups[10];
    std::string result;
    std::size_t done = 0;
    std::size_t from = 0;
    while (from <= text.size() &&
           expression.Match(whole, from, text.size(), re2::RE2::UNANCHORED, groups, replacement.highestGroup + 1)) {
        const auto start = static_cast<std::size_t>(groups[0].data() - text.data());
        result.append(text, done, start - done);
        for (const Replacement::Piece& piece : replacement.pieces) {
            const re2::StringPiece& group = groups[piece.group];
            result.append(piece.text).append(group.data() ? group.data() : "", group.size());
        }
        result += replacement.text;
        if (result.size() > kComputedTextLimit)
            return std::nullopt;
        done = start + groups[0].size();
        from = done;
        if (groups[0].empty() && from < text.size())
            from += CharactersFrom(text.substr(from), 0, 1).size();
        else if (groups[0].empty())
            break;
    }
    result.append(text, std::min(done, text.size()));
    return result;
}

// Whether the expression matches anywhere in the text.
class MatchesExpression : public FunctionExpression {
public:
    explicit MatchesExpression(FunctionCall&& call)
        : FunctionExpression({FieldType::kBoolean}, std::move(call)), fPattern(GetArgument(1), "matches") {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue values[2];
        if (!EvaluateAll(slots, values, result))
            return result.IsMissing();
        const std::string_view text = values[0].GetText();
        result.SetInvalid();
        fPattern.With(values[1].GetText(), [&](const re2::RE2& expression) {
            result.SetBoolean(re2::RE2::PartialMatch(re2::StringPiece(text.data(), text.size()), expression));
        });
        return false;
    }

private:
    PatternArgument<RegularExpression> fPattern;
};

class ReplaceExpression : public FunctionExpression {
public:
    explicit ReplaceExpression(FunctionCall&& call)
        : FunctionExpression({FieldType::kString}, std::move(call)),
          fPattern(GetArgument(1), "replace"),
          fReplacement(GetArgument(2), "replace") {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue values[3];
        if (!EvaluateAll(slots, values, result))
            return result.IsMissing();
        const std::string_view text = values[0].GetText();
        result.SetInvalid();
        fPattern.With(values[1].GetText(), [&](const re2::RE2& expression) {
            fReplacement.With(values[2].GetText(),
                              [&](const Replacement& replacement) { Replace(text, expression, replacement, result); });
        });
        return false;
    }

private:
    static void Replace(std::string_view text, const re2::RE2& expression, const Replacement& replacement,
                        DerivedValue& result) {
        if (text.size() > kComputedTextLimit || replacement.highestGroup > expression.NumberOfCapturingGroups())
            return;
        if (auto replaced = ReplaceAll(text, expression, replacement))
            SetComputedText(result, std::move(*replaced));
    }

    PatternArgument<RegularExpression> fPattern;
    PatternArgument<Replacement> fReplacement;
};

class FormatNumberExpression : public FunctionExpression {
public:
    explicit FormatNumberExpression(FunctionCall&& call)
        : FunctionExpression({FieldType::kString}, std::move(call)), fPattern(GetArgument(1), "formatNumber") {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue values[2];
        if (!EvaluateAll(slots, values, result))
            return result.IsMissing();
        result.SetInvalid();
        fPattern.With(values[1].GetText(), [&](const NumberFormat& format) {
            if (auto text = format.Format(values[0].GetNumber()))
                SetComputedText(result, std::move(*text));
        });
        return false;
    }

private:
    PatternArgument<NumberFormat> fPattern;
};

class FormatDateTimeExpression : public FunctionExpression {
public:
    explicit FormatDateTimeExpression(FunctionCall&& call)
        : FunctionExpression({FieldType::kString}, std::move(call)), fPattern(GetArgument(1), "formatDatetime") {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue values[2];
        if (!EvaluateAll(slots, values, result))
            return result.IsMissing();
        const auto moment = MomentOf(GetArgument(0).GetType(), values[0]);
        result.SetInvalid();
        if (moment)
            fPattern.With(values[1].GetText(),
                          [&](const DateTimeFormat& format) { SetComputedText(result, format.Format(*moment)); });
        return false;
    }

private:
    PatternArgument<DateTimeFormat> fPattern;
};

std::unique_ptr<FunctionExpression> MakeMatches(FunctionCall&& call) {
    TakeAsText(call, 0);
    TakeAsText(call, 1);
    return std::make_unique<MatchesExpression>(std::move(call));
}

std::unique_ptr<FunctionExpression> MakeReplace(FunctionCall&& call) {
    for (std::size_t i = 0; i < 3; ++i)
        TakeAsText(call, i);
    return std::make_unique<ReplaceExpression>(std::move(call));
}

std::unique_ptr<FunctionExpression> MakeFormatNumber(FunctionCall&& call) {
    RequireNumber(call, 0);
    TakeAsText(call, 1);
    return std::make_unique<FormatNumberExpression>(std::move(call));
}

std::unique_ptr<FunctionExpression> MakeFormatDateTime(FunctionCall&& call) {
    RequireMoment(call, 0);
    TakeAsText(call, 1);
    return std::make_unique<FormatDateTimeExpression>(std::move(call));
}

constexpr BuiltInFunction kPatternFunctions[] = {
    {"matches", 2, 2, &MakeMatches},
    {"replace", 3, 3, &MakeReplace},
    {"formatNumber", 2, 2, &MakeFormatNumber},
    {"formatDatetime", 2, 2, &MakeFormatDateTime},
};

}  // namespace

std::span<const BuiltInFunction> PatternFunctions() {
    return kPatternFunctions;
}

}  // namespace KwBrevix_930
