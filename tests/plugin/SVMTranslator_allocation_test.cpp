// Memory: every allocation of a translation made to fail in turn.
#include <memory>
#include <new>

#include <gtest/gtest.h>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "host/DocumentParser.h"
#include "plugin/SVMTranslator.h"
#include "tests/support/SVMTranslatorTestAccess.h"
#include "tests/support/failing_new.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using failing_new::FailAfter;

// Holds an extension, derived fields and replacements, so that every kind of object is made.
test_support::SvmDocument Document() {
    return test_support::TwoCategories()
        .InsertBefore("<LinearKernelType/>",
                      R"(<LocalTransformations><DerivedField name="z" optype="continuous" dataType="double">)"
                      R"(<NormDiscrete field="color" value="red"/></DerivedField></LocalTransformations>)")
        .Replace(R"(<FieldRef field="x2"/>)", R"(<FieldRef field="z" mapMissingTo="0.5"/>)")
        .Replace(R"(<MiningField name="x2"/>)", R"(<MiningField name="x2" missingValueReplacement="0.5"/>)")
        .Replace(R"(alternateTargetCategory="no">)",
                 R"(alternateTargetCategory="no"><Extension extender="ZARN"><ResponseCategory response="yes")"
                 R"( nonresponse="no"/><ProbabilityParam A="-1.5" B="0.375"/></Extension>)");
}

// Translates with the allocation after `succeeding` ones refused. Returns: null where that was reported.
std::unique_ptr<ScoreModel> TranslateFailing(SVMTranslator& translator, const DocumentHandle& document,
                                             std::size_t succeeding, bool& hasFailed) {
    const FailAfter failure(succeeding);
    std::unique_ptr<ScoreModel> model;
    try {
        model.reset(translator.ParseFromTree(document.get(), std::string()));
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(SVMTranslatorTestAccess::Dictionary(translator), nullptr);
    } catch (const xercesc::OutOfMemoryException&) {
        EXPECT_EQ(SVMTranslatorTestAccess::Dictionary(translator), nullptr);
    }
    hasFailed = failure.Failed();
    return model;
}

void ExpectScores(ScoreModel& model) {
    EXPECT_EQ(test_support::ScoreOf(model, {{"x1", "9"}, {"color", "blue"}}).code, 0);
}

// Under the address sanitizer this also shows that nothing leaks and nothing is deleted twice.
TEST(SVMTranslatorAllocation, AFailedOnePassesThroughAndLeavesTheTranslatorUsable) {
    const DocumentHandle document = DocumentParser().ParseText(Document().Text());
    SVMTranslator translator;
    // The XML library makes the document's lists now: it leaks where its own allocations for them fail.
    delete translator.ParseFromTree(document.get(), std::string());
    std::size_t refusals = 0;
    bool hasFailed = true;
    for (std::size_t succeeding = 0; hasFailed; ++succeeding) {
        const auto model = TranslateFailing(translator, document, succeeding, hasFailed);
        refusals += model == nullptr ? 1 : 0;
        ASSERT_TRUE(model || hasFailed) << succeeding;
        // A model that has no memory for its plan is whole without one.
        if (model)
            ExpectScores(*model);
    }
    // More where the host library shares its operator new with this program.
    EXPECT_GT(refusals, 50u);
    ExpectScores(*std::unique_ptr<ScoreModel>(translator.ParseFromTree(document.get(), std::string())));
}

}  // namespace
}  // namespace KwBrevix_930
