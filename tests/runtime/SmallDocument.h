// PMML documents that tests build from parts, each part replaceable.
#pragma once

#include <string>

namespace test_support {

/// A linear machine over the fields x and y, with the decision value f = 1.5 x - 0.75 y + 0.125. As a classifier it
/// predicts red where f < 0 and otherwise blue; as a regression it predicts f.
struct SmallDocument {
    std::string root = "PMML";
    std::string version = "4.4";
    std::string inputFields = R"(<DataField name="x" optype="continuous" dataType="double"/>)"
                              R"(<DataField name="y" optype="continuous" dataType="double"/>)";
    std::string targetField =
        R"(<DataField name="hue" optype="categorical" dataType="string"><Value value="red"/><Value value="blue"/></DataField>)";
    /// Between the DataDictionary and the model.
    std::string beforeModel;
    std::string functionName = "classification";
    std::string modelAttributes;
    std::string miningFields =
        R"(<MiningField name="hue" usageType="target"/><MiningField name="x"/><MiningField name="y"/>)";
    /// Between the MiningSchema and the kernel: Output, Targets, LocalTransformations.
    std::string afterSchema;
    std::string kernel = "<LinearKernelType/>";
    std::string vectorFields = R"(<FieldRef field="x"/><FieldRef field="y"/>)";
    std::string instances = sparseInstance("v1", "1", "1") + sparseInstance("v2", "2", "1");
    std::string machines = machine(R"(targetCategory="red" alternateTargetCategory="blue")");
    /// Behind the machines: ModelVerification.
    std::string afterMachines;
    std::string afterModel;

    static std::string sparseInstance(const std::string& id, const std::string& indices, const std::string& entries) {
        return "<VectorInstance id=\"" + id + "\"><REAL-SparseArray n=\"2\"><Indices>" + indices +
               "</Indices><REAL-Entries>" + entries + "</REAL-Entries></REAL-SparseArray></VectorInstance>";
    }

    static std::string denseInstance(const std::string& id, const std::string& array) {
        return "<VectorInstance id=\"" + id + "\">" + array + "</VectorInstance>";
    }

    static std::string machine(const std::string& attributes, const std::string& extension = "",
                               const std::string& bias = "0.125") {
        return "<SupportVectorMachine " + attributes + ">" + extension +
               R"(<SupportVectors><SupportVector vectorId="v1"/><SupportVector vectorId="v2"/></SupportVectors>)" +
               "<Coefficients absoluteValue=\"" + bias +
               R"("><Coefficient value="1.5"/><Coefficient value="-0.75"/></Coefficients></SupportVectorMachine>)";
    }

    /// One machine a pair of a, b, c: their biases make b win wherever x and y are small.
    static std::string pairMachines() {
        return machine(R"(targetCategory="a" alternateTargetCategory="b")", "", "7") +
               machine(R"(targetCategory="a" alternateTargetCategory="c")", "", "-7") +
               machine(R"(targetCategory="b" alternateTargetCategory="c")", "", "-7");
    }

    /// The same machine as a regression of the number "price".
    static SmallDocument regression() {
        SmallDocument document;
        document.targetField = R"(<DataField name="price" optype="continuous" dataType="double"/>)";
        document.functionName = "regression";
        document.miningFields =
            R"(<MiningField name="price" usageType="target"/><MiningField name="x"/><MiningField name="y"/>)";
        document.machines = machine("");
        return document;
    }

    std::string makeModel() const {
        return "<SupportVectorMachineModel functionName=\"" + functionName + "\" " + modelAttributes +
               "><MiningSchema>" + miningFields + "</MiningSchema>" + afterSchema + kernel +
               "<VectorDictionary><VectorFields>" + vectorFields + "</VectorFields>" + instances +
               "</VectorDictionary>" + machines + afterMachines + "</SupportVectorMachineModel>";
    }

    std::string makeText() const {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + root + " version=\"" + version +
               "\" xmlns=\"http://www.dmg.org/PMML-4_4\"><Header/>\n<DataDictionary>" + inputFields + targetField +
               "</DataDictionary>" + beforeModel + makeModel() + afterModel + "</" + root + ">\n";
    }
};

inline constexpr const char* kDeviation =
    "<Extension extender=\"ZARN\"><StandardDeviation>0.5</StandardDeviation></Extension>";

/// The regression with a deviation, and with elements behind the schema.
inline SmallDocument regressionWith(const std::string& afterSchema) {
    SmallDocument document = SmallDocument::regression();
    document.afterSchema = afterSchema;
    document.machines = SmallDocument::machine("", kDeviation);
    return document;
}

}  // namespace test_support
