// Small PMML documents with a support vector machine. A test takes a valid one and replaces what it is about, so that
// it states only what differs.
#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/BXException.h"
#include "host/CaseRecord.h"
#include "host/ScoreDictionary.h"
#include "host/ScoreResult.h"
#include "host/ScoreValue.h"
#include "plugin/SVMTranslator.h"
#include "svm/SVMModel.h"

namespace KwBrevix_930::test_support {

class SvmDocument {
public:
    explicit SvmDocument(std::string text) : fText(std::move(text)) {}

    const std::string& Text() const { return fText; }

    /// Replaces a piece that occurs exactly once; anything else is an error of the test.
    SvmDocument& Replace(const std::string& piece, const std::string& by) {
        const std::size_t at = fText.find(piece);
        if (at == std::string::npos || fText.find(piece, at + 1) != std::string::npos)
            throw std::logic_error("not exactly once in the document: " + piece);
        fText.replace(at, piece.size(), by);
        return *this;
    }
    SvmDocument& Remove(const std::string& piece) { return Replace(piece, ""); }
    SvmDocument& InsertBefore(const std::string& piece, const std::string& text) {
        return Replace(piece, text + piece);
    }

private:
    std::string fText;
};

/// The decision value is 0.75 (0.5 x1 - 1.25 [color is red]) - 0.5 (2.5 x2) + 0.125 for every machine made here.
inline std::string MachineText(const std::string& attributes, const std::string& extension = "") {
    return "<SupportVectorMachine " + attributes + ">" + extension +
           R"(<SupportVectors><SupportVector vectorId="v1"/><SupportVector vectorId="v2"/></SupportVectors>)"
           R"(<Coefficients absoluteValue="0.125"><Coefficient value="0.75"/><Coefficient value="-0.5"/></Coefficients>)"
           "</SupportVectorMachine>";
}

inline const std::string kTwoCategoryMachine = MachineText(R"(targetCategory="yes" alternateTargetCategory="no")");
inline const std::string kRegressionMachine = MachineText(R"(modelName="r")");

inline const std::string kTarget =
    R"(<DataField name="y" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>)";

/// The categories no and yes, one machine, a linear kernel, model threshold 0.0625.
inline SvmDocument TwoCategories() {
    return SvmDocument(
        R"(<PMML version="4.4">
<Header><Application name="trainer" version="7.25"/></Header>
<DataDictionary>
<DataField name="x1" optype="continuous" dataType="double"/>
<DataField name="x2" optype="continuous" dataType="double"/>
<DataField name="color" optype="categorical" dataType="string"><Value value="red"/><Value value="blue"/></DataField>
)" + kTarget +
        R"(</DataDictionary>
<SupportVectorMachineModel functionName="classification" threshold="0.0625">
<MiningSchema><MiningField name="x1" usageType="active"/><MiningField name="x2"/><MiningField name="color"/>)"
        R"(<MiningField name="y" usageType="target"/></MiningSchema>
<LinearKernelType/>
<VectorDictionary>
<VectorFields><FieldRef field="x1"/><FieldRef field="x2"/>)"
        R"(<CategoricalPredictor name="color" value="red" coefficient="1.5"/></VectorFields>
<VectorInstance id="v1"><REAL-SparseArray n="3"><Indices>1 3</Indices><REAL-Entries>0.5 -1.25</REAL-Entries>)"
        R"(</REAL-SparseArray></VectorInstance>
<VectorInstance id="v2"><REAL-SparseArray n="3"><Indices>2</Indices><REAL-Entries>2.5</REAL-Entries>)"
        R"(</REAL-SparseArray></VectorInstance>
</VectorDictionary>
)" + kTwoCategoryMachine +
        R"(
</SupportVectorMachineModel>
</PMML>
)");
}

inline const std::string kThreeMachines = MachineText(R"(targetCategory="no" alternateTargetCategory="yes")") +
                                          MachineText(R"(targetCategory="no" alternateTargetCategory="maybe")") +
                                          MachineText(R"(targetCategory="yes" alternateTargetCategory="maybe")");

/// The categories no, yes and maybe, a machine for each pair.
inline SvmDocument ThreeCategories() {
    return TwoCategories()
        .Replace(R"(<Value value="yes"/>)", R"(<Value value="yes"/><Value value="maybe"/>)")
        .Replace(R"(threshold="0.0625")", R"(threshold="0.0625" classificationMethod="OneAgainstOne")")
        .Replace(kTwoCategoryMachine, kThreeMachines);
}

inline SvmDocument Regression() {
    return TwoCategories()
        .Replace(kTarget, R"(<DataField name="y" optype="continuous" dataType="double"/>)")
        .Replace(R"("classification")", R"("regression")")
        .Replace(kTwoCategoryMachine, kRegressionMachine);
}

inline std::unique_ptr<SVMModel> Translate(const SvmDocument& document) {
    SVMTranslator translator;
    return std::unique_ptr<SVMModel>(dynamic_cast<SVMModel*>(translator.ParseFromTree(document.Text(), std::string())));
}

/// An error as a test compares it; code 0: there was none.
struct Failure {
    int code = 0;
    std::vector<std::string> arguments;

    bool operator==(const Failure&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const Failure& failure) {
        stream << failure.code << " (";
        for (const std::string& argument : failure.arguments)
            stream << '[' << argument << ']';
        return stream << ')';
    }
};

inline const Failure kNoFailure;
inline const std::string kNoTranscoder;

template <typename Call>
Failure FailureOf(Call call) {
    try {
        call();
    } catch (const BXException& error) {
        return {error.GetErrorCode(), error.GetArguments()};
    }
    return {};
}

inline Failure TranslationFailure(const SvmDocument& document) {
    return FailureOf([&] { Translate(document); });
}

/// Cells by field name; a field that is not named is missing.
using Case = std::map<std::string, std::string>;

struct Score {
    int code = 0;
    std::unique_ptr<ScoreResult> result;

    std::string Text() const { return result->GetPrediction()->GetString(); }
    double Number() const { return result->GetPrediction()->GetDouble(); }
};

inline Score ScoreOf(ScoreModel& model, const Case& cells) {
    CaseRecord record(*model.GetDictionary());
    for (const auto& [name, cell] : cells)
        record.SetText(record.GetIndex(name), cell);
    ScoreResult* result = nullptr;
    const KwScore::KwStatus status = model.GetScore(&record, result, false);
    return {static_cast<int>(status.GetErrorCode()), std::unique_ptr<ScoreResult>(result)};
}

}  // namespace KwBrevix_930::test_support
