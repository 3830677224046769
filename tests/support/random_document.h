// PMML documents at random: every kernel and kind of vote, derived fields, replacements, categories with several
// columns.
#pragma once

#include <string>
#include <vector>

#include "host/number_text.h"
#include "tests/svm/plan/random_models.h"

namespace KwBrevix_930::test_support {

/// The inputs are the numbers x1 and x2 and the text color.
class RandomDocument {
public:
    enum class Votes { kPairs, kExtreme, kCoupling, kRegression };

    explicit RandomDocument(random_models::Generator& random)
        : fRandom(random),
          fVotes(static_cast<Votes>(random.UpTo(3))),
          fIsTargetText(random.IsTrue(0.5)),
          fDerives(random.IsTrue(0.6)) {
        const std::size_t count = fVotes == Votes::kRegression ? 0 : 2 + random.UpTo(3);
        for (std::size_t c = 0; c < count; ++c)
            fCategories.push_back(fIsTargetText ? "class " + std::to_string(c) : std::to_string(c) + ".5");
        fColumns = {Field("x1"), Category("red"), Field("x2")};
        if (random.IsTrue(0.5))
            fColumns.insert(fColumns.end(), {Category("blue"), Category("green")});
        if (fDerives)
            fColumns.insert(fColumns.end(), {Field("isRed"), Field("half")});
    }

    /// afterFields: Output, Targets, what else stands before the kernel. Each call makes another model.
    std::string MakeText(const std::string& afterFields = {}) {
        return R"(<PMML version="4.4"><Header/><DataDictionary>)"
               R"(<DataField name="x1" optype="continuous" dataType="double"/>)"
               R"(<DataField name="x2" optype="continuous" dataType="double"/>)"
               R"(<DataField name="color" optype="categorical" dataType="string">)"
               R"(<Value value="red"/><Value value="blue"/><Value value="green"/></DataField>)" +
               Target() + "</DataDictionary><SupportVectorMachineModel" + Attributes() + ">" + Fields() + afterFields +
               Derived() + Kernel() + "<VectorDictionary><VectorFields>" + Join(fColumns) + "</VectorFields>" +
               Vectors() + "</VectorDictionary>" + Machines() + "</SupportVectorMachineModel></PMML>";
    }

    bool IsRegression() const { return fVotes == Votes::kRegression; }
    bool HasDerivedFields() const { return fDerives; }

private:
    static std::string Join(const std::vector<std::string>& parts) {
        std::string all;
        for (const std::string& part : parts)
            all += part;
        return all;
    }
    static std::string Field(const std::string& name) { return "<FieldRef field=\"" + name + "\"/>"; }
    static std::string Category(const std::string& value) {
        return R"(<CategoricalPredictor name="color" coefficient="1" value=")" + value + "\"/>";
    }
    std::string Real(double from, double to) { return NumberText(fRandom.Real(from, to)); }

    std::string Target() const {
        if (IsRegression())
            return R"(<DataField name="y" optype="continuous" dataType="double"/>)";
        std::string text = R"(<DataField name="y" optype="categorical" dataType=")";
        text += fIsTargetText ? "string\">" : "double\">";
        for (const std::string& category : fCategories)
            text += "<Value value=\"" + category + "\"/>";
        return text + "</DataField>";
    }

    std::string Attributes() {
        std::string text = IsRegression() ? R"( functionName="regression")" : R"( functionName="classification")";
        if (fVotes == Votes::kExtreme)
            text += R"( classificationMethod="OneAgainstAll")";
        else if (!IsRegression())
            text += R"( classificationMethod="OneAgainstOne")";
        if (fRandom.IsTrue(0.5))
            text += R"( maxWins="true")";
        if (fRandom.IsTrue(0.5))
            text += " threshold=\"" + Real(-0.5, 0.5) + "\"";
        return text;
    }

    std::string Fields() {
        std::string text = R"(<MiningSchema><MiningField name="y" usageType="target"/><MiningField name="x1"/>)";
        text += R"(<MiningField name="x2")";
        if (fRandom.IsTrue(0.5))
            text += R"( missingValueReplacement="0.625")";
        text += R"(/><MiningField name="color")";
        if (fRandom.IsTrue(0.3))
            text += R"( invalidValueTreatment="asMissing" missingValueReplacement="blue")";
        return text + "/></MiningSchema>";
    }

    std::string Derived() const {
        if (!fDerives)
            return {};
        return R"(<LocalTransformations><DerivedField name="isRed" optype="continuous" dataType="double">)"
               R"(<NormDiscrete field="color" value="red"/></DerivedField>)"
               R"(<DerivedField name="half" optype="continuous" dataType="double"><Apply function="*">)"
               R"(<FieldRef field="x1"/><Constant dataType="double">0.5</Constant></Apply></DerivedField>)"
               R"(</LocalTransformations>)";
    }

    std::string Kernel() {
        const std::string gamma = " gamma=\"" + Real(0.05, 0.5) + "\"";
        const std::string coef0 = " coef0=\"" + Real(0.0, 1.0) + "\"";
        const std::string kernels[] = {
            "<LinearKernelType/>",
            "<PolynomialKernelType" + gamma + coef0 + " degree=\"" + std::to_string(1 + fRandom.UpTo(3)) + "\"/>",
            "<RadialBasisKernelType" + gamma + "/>", "<SigmoidKernelType" + gamma + coef0 + "/>"};
        return kernels[fRandom.UpTo(3)];
    }

    std::string Vectors() {
        std::string text;
        for (int v = 0; v < kVectors; ++v) {
            std::string indices;
            std::string entries;
            for (std::size_t p = 1; p <= fColumns.size(); ++p) {
                if (p > 1 && !fRandom.IsTrue(0.7))
                    continue;
                indices += std::to_string(p) + ' ';
                entries += (fRandom.IsTrue(0.3) ? std::string("1") : Real(-2.0, 2.0)) + ' ';
            }
            text += "<VectorInstance id=\"v" + std::to_string(v) + "\"><REAL-SparseArray n=\"" +
                    std::to_string(fColumns.size()) + "\"><Indices>" + indices + "</Indices><REAL-Entries>" + entries +
                    "</REAL-Entries></REAL-SparseArray></VectorInstance>";
        }
        return text;
    }

    std::string Machines() {
        if (IsRegression())
            return Machine("", R"(<Extension extender="ZARN"><StandardDeviation>)" + Real(0.1, 2.0) +
                                   "</StandardDeviation></Extension>");
        std::string text;
        for (std::size_t i = 0; i < fCategories.size(); ++i) {
            if (fVotes == Votes::kExtreme && fCategories.size() > 2)
                text += Machine(" targetCategory=\"" + fCategories[i] + "\"", "");
            for (std::size_t j = i + 1;
                 j < fCategories.size() && (fVotes != Votes::kExtreme || fCategories.size() == 2); ++j)
                text += PairMachine(fCategories[i], fCategories[j]);
        }
        return text;
    }

    std::string PairMachine(const std::string& one, const std::string& other) {
        const std::string attributes = " targetCategory=\"" + one + "\" alternateTargetCategory=\"" + other + "\"";
        if (fVotes != Votes::kCoupling)
            return Machine(attributes, "");
        return Machine(attributes, R"(<Extension extender="ZARN"><ResponseCategory response=")" + one +
                                       "\" nonresponse=\"" + other + R"("/><ProbabilityParam A=")" + Real(-2.0, -0.5) +
                                       "\" B=\"" + Real(-0.5, 0.5) + "\"/></Extension>");
    }

    std::string Machine(const std::string& attributes, const std::string& extension) {
        std::string vectors;
        std::string coefficients;
        for (int v = 0; v < kVectors; ++v) {
            if (v > 0 && !fRandom.IsTrue(0.6))
                continue;
            vectors += "<SupportVector vectorId=\"v" + std::to_string(v) + "\"/>";
            coefficients += "<Coefficient value=\"" + Real(-1.5, 1.5) + "\"/>";
        }
        return "<SupportVectorMachine" + attributes + ">" + extension + "<SupportVectors>" + vectors +
               "</SupportVectors><Coefficients absoluteValue=\"" + Real(-1.0, 1.0) + "\">" + coefficients +
               "</Coefficients></SupportVectorMachine>";
    }

    static constexpr int kVectors = 14;

    random_models::Generator& fRandom;
    Votes fVotes;
    bool fIsTargetText;
    bool fDerives;
    std::vector<std::string> fCategories;
    std::vector<std::string> fColumns;
};

}  // namespace KwBrevix_930::test_support
