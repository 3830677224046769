// Reads calls of functions, and the functions that a document defines. A function is read once for each combination of
// types that its arguments have, never for each call, so that a chain of functions costs what it holds.
#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/refusal.h"
#include "host/transform/CastExpression.h"
#include "host/transform/ExpressionReader.h"
#include "host/transform/UserFunctionExpression.h"
#include "host/transform/built_in_functions.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

// The parameters of a function: all that its body may read.
class ParameterScope : public FieldScope {
public:
    /// Returns: false for a name that is there already.
    bool Add(const std::string& name, FieldType type) {
        const auto kind = type.IsText() ? ScoreDictVar::kCategorical : ScoreDictVar::kContinuous;
        return fFields.emplace(name, Field{fFields.size(), type, kind, nullptr}).second;
    }

    std::optional<Field> Find(const std::string& name) override {
        const auto found = fFields.find(name);
        return found == fFields.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::unordered_map<std::string, Field> fFields;
};

std::string CountText(const BuiltInFunction& function) {
    const std::string fewest = std::to_string(function.fewest);
    if (function.most == function.fewest)
        return fewest;
    return function.most == kAnyNumber ? fewest + " or more" : fewest + " to " + std::to_string(function.most);
}

std::vector<const DOMElement*> FindParameters(const DOMElement& function) {
    std::vector<const DOMElement*> parameters;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&function); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::HasTag(child, "ParameterField"))
            parameters.push_back(child);
    }
    return parameters;
}

}  // namespace

std::unique_ptr<Expression> ExpressionReader::ReadApply(const DOMElement& element) {
    FunctionCall call;
    call.name = fReader.GetAttributeToString(&element, "function", true);
    const BuiltInFunction* builtIn = FindBuiltInFunction(call.name);
    const DOMElement* defined = builtIn ? nullptr : fFunctions.Find(call.name);
    if (!builtIn && !defined)
        Refuse(260103, "function", call.name, fReader.GetElementName(&element));
    const std::string treatment = ReadTreatment(element);
    call.keepsNonFinite = treatment == "asIs";
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&element); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (!BaseTranslator::HasTag(child, Tags::XML_ELE_EXTENSION))
            call.arguments.push_back(Read(*child, std::nullopt));
    }
    const std::size_t count = call.arguments.size();
    if (builtIn && (count < builtIn->fewest || count > builtIn->most))
        Refuse(260104, call.name, std::to_string(count), CountText(*builtIn));
    auto expression = builtIn ? builtIn->make(std::move(call)) : MakeUserCall(*defined, std::move(call));
    const FieldType type = expression->GetType();
    expression->SetTreatments({ReadOptionalLiteral(element, Tags::XML_ATT_MISSREPVALUE, type),
                               ReadOptionalLiteral(element, "defaultValue", type), treatment == "asMissing"});
    return expression;
}

std::string ExpressionReader::ReadTreatment(const DOMElement& element) const {
    if (!fReader.HasAttribute(&element, Tags::XML_ATT_INVALIDTREATMENT))
        return "returnInvalid";
    std::string text = fReader.GetAttributeToString(&element, Tags::XML_ATT_INVALIDTREATMENT, true);
    if (text != "returnInvalid" && text != "asIs" && text != "asMissing")
        RefuseAttribute(fReader, element, Tags::XML_ATT_INVALIDTREATMENT);
    return text;
}

std::unique_ptr<FunctionExpression> ExpressionReader::MakeUserCall(const DOMElement& function, FunctionCall&& call) {
    const auto parameters = FindParameters(function);
    if (parameters.size() != call.arguments.size())
        Refuse(260104, call.name, std::to_string(call.arguments.size()), std::to_string(parameters.size()));
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const auto type = ReadOptionalType(*parameters[i]);
        const std::string given = call.arguments[i]->GetType().GetName();
        if (type)
            call.arguments[i] = CastTo(*type, std::move(call.arguments[i]));
        if (!call.arguments[i])
            Refuse(260106, "argument " + std::to_string(i + 1) + " of '" + call.name + "'", given, type->GetName());
    }
    const auto body = FindBody(function, parameters, call);
    fSteps += body->steps;
    fDeepest = std::max(fDeepest, fDepth + body->depth);
    if (fDeepest > kExpressionDepthLimit)
        RefuseDepth();
    return std::make_unique<UserFunctionExpression>(body, std::move(call));
}

std::shared_ptr<const FunctionBody> ExpressionReader::FindBody(const DOMElement& function,
                                                               const std::vector<const DOMElement*>& parameters,
                                                               const FunctionCall& call) {
    FunctionTable::Signature signature{call.name, {}};
    for (const auto& argument : call.arguments)
        signature.second.push_back(argument->GetType().GetName());
    const auto known = fFunctions.fBodies.find(signature);
    auto body = known != fFunctions.fBodies.end() ? known->second : ReadBody(function, parameters, call);
    fFunctions.fBodies[signature] = body;
    fFunctions.fCallSteps += body->steps;
    if (fFunctions.fCallSteps > kFunctionStepLimit)
        Refuse(260107, std::to_string(kFunctionStepLimit) + " steps in functions");
    return body;
}

std::shared_ptr<const FunctionBody> ExpressionReader::ReadBody(const DOMElement& function,
                                                               const std::vector<const DOMElement*>& parameters,
                                                               const FunctionCall& call) {
    RefuseCircle(call.name);
    ParameterScope scope;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const std::string name = fReader.GetAttributeToString(parameters[i], Tags::XML_ATT_NAME, true);
        if (name.empty() || !scope.Add(name, call.arguments[i]->GetType()))
            RefuseAttribute(fReader, *parameters[i], Tags::XML_ATT_NAME);
    }
    fFunctions.fOpen.push_back(call.name);
    ExpressionReader reader(fReader, scope, fFunctions, fDepth);
    auto body = std::make_shared<FunctionBody>();
    body->expression = reader.Read(FindExpression(fReader, function), ReadOptionalType(function));
    body->steps = reader.GetSteps();
    body->depth = reader.GetDeepest() - fDepth;
    fFunctions.fOpen.pop_back();
    return body;
}

void ExpressionReader::RefuseCircle(const std::string& name) const {
    const auto& open = fFunctions.fOpen;
    auto first = std::find(open.begin(), open.end(), name);
    if (first == open.end())
        return;
    std::string chain;
    for (; first != open.end(); ++first)
        chain += "'" + *first + "' -> ";
    Refuse(260105, "functions", chain + "'" + name + "'");
}

void ExpressionReader::RefuseDepth() {
    Refuse(260107, std::to_string(kExpressionDepthLimit) + " levels of nested expressions");
}

}  // namespace KwBrevix_930
