// What of a document has no effect, told once for each kind.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/ModelDocument.h"
#include "runtime/refusals.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::SmallDocument;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> notesOf(const SmallDocument& parts) {
    return brevix::noteIgnored(brevix::ModelDocument(KwBrevix_930::DocumentParser().ParseText(parts.makeText())));
}

TEST(IgnoredParts, AreNoneWhereEverythingIsRead) {
    EXPECT_THAT(notesOf(SmallDocument()), IsEmpty());
}

TEST(IgnoredParts, VectorsInstancesAndExtensionsAreCounted) {
    SmallDocument parts;
    parts.instances = SmallDocument::sparseInstance("v1", "1", "1") + SmallDocument::sparseInstance("v1", "2", "7") +
                      SmallDocument::sparseInstance("unused", "2", "1") +
                      SmallDocument::denseInstance("v2", "<Array>1 2</Array>");
    parts.machines = SmallDocument::machine(R"(targetCategory="red" alternateTargetCategory="blue")",
                                            "<Extension/><Extension/><Extension/>");
    EXPECT_THAT(notesOf(parts), ElementsAre("1 VectorInstance has the id of another before; the first counts",
                                            "1 SupportVector names no VectorInstance; left out with the coefficient",
                                            "1 VectorInstance is used by no machine",
                                            "2 Extensions behind the first of a machine left out"));
}

TEST(IgnoredParts, WrongCountsAndUnknownCategoriesAreTold) {
    SmallDocument parts;
    parts.machines = R"(<SupportVectorMachine targetCategory="red" alternateTargetCategory="green"><SupportVectors )"
                     R"(numberOfSupportVectors="2"><SupportVector vectorId="v1"/><SupportVector vectorId="v2"/>)"
                     R"(</SupportVectors><Coefficients numberOfCoefficients="5"><Coefficient value="1"/>)"
                     R"(<Coefficient value="1"/></Coefficients></SupportVectorMachine>)";
    EXPECT_THAT(notesOf(parts),
                ElementsAre("1 written count is not what the document holds",
                            "1 category of the machines is not declared by the target and never predicted"));
}

TEST(IgnoredParts, FieldsOfOtherUsagesAreNamed) {
    SmallDocument parts;
    parts.miningFields += R"(<MiningField name="w" usageType="analysisWeight"/>)";
    for (int i = 0; i < 7; ++i)
        parts.miningFields += "<MiningField name=\"s" + std::to_string(i) + "\" usageType=\"supplementary\"/>";
    EXPECT_THAT(notesOf(parts), ElementsAre("1 MiningField of usageType 'analysisWeight': w",
                                            "7 MiningFields of usageType 'supplementary': s0, s1, s2, s3, s4, ..."));
}

TEST(IgnoredParts, ElementsThatAreNotReadAreListedByName) {
    SmallDocument parts;
    parts.beforeModel = "<Extension/><MiningBuildTask><Extension/></MiningBuildTask>";
    parts.afterSchema = "<ModelStats/><ModelVerification/><Extension/><ModelExplanation/>";
    parts.inputFields +=
        R"(<DataField name="z" dataType="string"><Extension/><Value value="a"/></DataField><Taxonomy/>)";
    parts.afterModel = "<TreeModel/>" + SmallDocument().makeModel();
    EXPECT_THAT(notesOf(parts),
                ElementsAre("the document holds 2 SupportVectorMachineModel elements; the first is scored",
                            "elements that are not read: Extension (3), MiningBuildTask, ModelExplanation, ModelStats, "
                            "Taxonomy, TreeModel"));
}

TEST(IgnoredParts, AreFoundInLinearTime) {
    SmallDocument parts;
    parts.instances.clear();
    for (int i = 0; i < 60000; ++i)
        parts.instances += SmallDocument::sparseInstance("i" + std::to_string(i), "1", "1");
    EXPECT_THAT(notesOf(parts), ElementsAre("2 SupportVectors name no VectorInstance; left out with the coefficient",
                                            "60000 VectorInstances are used by no machine"));
}

}  // namespace
