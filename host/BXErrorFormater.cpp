// The message sentences; %1, %2, ... stand for the arguments.
#include "host/BXErrorFormater.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ScoreContext {

namespace {

struct Message {
    int code;
    int argumentCount;
    std::string_view text;
};

constexpr auto kMessages = std::to_array<Message>({
    {260101, 3, "the document cannot be read: %1 (line %2, column %3)"},
    {260102, 2, "the element %1 in %2 is not supported"},
    {260103, 3, "the %1 '%2' is not known where %3 names it"},
    {260104, 3, "the function '%1' has %2 arguments where it takes %3"},
    {260105, 2, "the %1 depend on each other in a circle: %2"},
    {260106, 3, "%1 is of type %2 where %3 is needed"},
    {260107, 1, "the expressions need more than %1"},
    {260111, 3, "%1 of the field '%2' %3"},
    {260114, 1, "the element %1 holds none of the elements that it must hold"},
    {260115, 2, "the required element %1 is missing or cannot be read in %2"},
    {260120, 2, "the required attribute %1 is missing in %2"},
    {260153, 3, "the value '%1' is not allowed for %2 of %3"},
    {260221, 1, "the element %1 does not fit the model's targets"},
    {260251, 6, "the sparse array has %1 %2 (in %3) but %4 %5 (in %6)"},
    {260281, 2, "the model cannot be scored: %1 says so in %2"},
});

const Message* FindMessage(int code) {
    const auto found =
        std::find_if(kMessages.begin(), kMessages.end(), [code](const Message& m) { return m.code == code; });
    return found == kMessages.end() ? nullptr : &*found;
}

std::string FormatUnknown(const std::vector<std::string>& arguments) {
    std::string text = "an error without a message of its own";
    for (std::size_t i = 0; i < arguments.size(); ++i)
        text += (i == 0 ? ": " : ", ") + arguments[i];
    return text;
}

std::string FillIn(std::string_view pattern, const std::vector<std::string>& arguments) {
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%')
            text += arguments[static_cast<std::size_t>(pattern[++i] - '1')];
        else
            text += pattern[i];
    }
    return text;
}

}  // namespace

std::string BXErrorFormater::Format(int code, const std::vector<std::string>& arguments) const {
    const Message* message = FindMessage(code);
    const bool fits = message && static_cast<std::size_t>(message->argumentCount) == arguments.size();
    return "Error " + std::to_string(code) + ": " +
           (fits ? FillIn(message->text, arguments) : FormatUnknown(arguments)) + ".";
}

int BXErrorFormater::GetArgumentCount(int code) const {
    const Message* message = FindMessage(code);
    return message ? message->argumentCount : -1;
}

IErrorFormater::~IErrorFormater() = default;

}  // namespace ScoreContext

namespace KwBrevix_930 {

ScoreContext::BXErrorFormater gErrorFormater;

}  // namespace KwBrevix_930
