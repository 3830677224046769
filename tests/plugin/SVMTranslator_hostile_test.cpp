// Documents that were damaged in every single place, and at random: the outcome is a model, which is then scored, or
// the host's exception; never a crash and no other exception.
#include <random>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include "host/BrevixTranscoder.h"
#include "host/DocumentParser.h"
#include "host/ScoreDictVar.h"
#include "plugin/SVMTranslator.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using test_support::kRegressionMachine;
using test_support::kThreeMachines;
using test_support::MachineText;
using test_support::Regression;
using test_support::SvmDocument;
using test_support::ThreeCategories;
using test_support::TwoCategories;
using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

const std::string kGarbage[] = {"garbage",    "-1",  "NaN", "-INF", "1e999",       "0",
                                "4294967296", "2.9", "v1",  "no",   "\xE2\x82\xAC"};

std::string ZarnMachine(const std::string& response, const std::string& nonresponse) {
    return MachineText("", R"(<Extension extender="ZARN"><ResponseCategory response=")" + response +
                               "\" nonresponse=\"" + nonresponse +
                               R"("/><ProbabilityParam A="-1.5" B="0.125"/></Extension>)");
}

// Between them they hold every element and attribute that is read.
std::vector<SvmDocument> Documents() {
    const std::string derived = R"(<LocalTransformations><DerivedField name="z" optype="continuous" dataType="double">)"
                                R"(<NormDiscrete field="color" value="red"/></DerivedField></LocalTransformations>)";
    SvmDocument radial =
        TwoCategories()
            .Replace(R"(<MiningField name="x2"/>)", R"(<MiningField name="x2" missingValueReplacement="0.5"/>)")
            .InsertBefore("<LinearKernelType/>", derived + R"(<Targets><Target field="y"/></Targets>)")
            .Replace("<LinearKernelType/>", R"(<RadialBasisKernelType gamma="0.25"/>)")
            .Replace(R"(<FieldRef field="x2"/>)", R"(<FieldRef field="z" mapMissingTo="0.5"/>)")
            .Replace(R"(functionName=)", R"(isScorable="true" maxWins="true" functionName=)");
    SvmDocument probabilities =
        ThreeCategories()
            .Replace(kThreeMachines,
                     ZarnMachine("no", "yes") + ZarnMachine("no", "maybe") + ZarnMachine("yes", "maybe"))
            .Replace("<LinearKernelType/>", R"(<SigmoidKernelType gamma="0.25" coef0="-0.5"/>)");
    SvmDocument regression =
        Regression()
            .Replace(
                kRegressionMachine,
                MachineText(R"(threshold="0.5")",
                            R"(<Extension extender="ZARN"><StandardDeviation>0.5</StandardDeviation></Extension>)"))
            .Replace("<Indices>2</Indices><REAL-Entries>2.5</REAL-Entries>", "")
            .Replace("<LinearKernelType/>", R"(<PolynomialKernelType gamma="0.25" coef0="1.5" degree="3"/>)");
    return {TwoCategories(), radial, probabilities, regression};
}

struct Counts {
    int models = 0;
    int failures = 0;
};

// Fills every field of the model's dictionary and scores.
void ScoreOneCase(ScoreModel& model) {
    test_support::Case cells;
    for (const ScoreDictVar* variable : model.GetDictionary()->GetVars())
        cells[variable->GetName()] = variable->IsString() ? "red" : "0.5";
    const auto score = test_support::ScoreOf(model, cells);
    EXPECT_TRUE(score.code == 0 || score.code == 90027 || score.code == 90029) << score.code;
}

template <typename Translate>
void Try(Translate translate, Counts& counts) {
    try {
        const std::unique_ptr<ScoreModel> model(translate());
        ASSERT_NE(model, nullptr);
        ++counts.models;
        ScoreOneCase(*model);
    } catch (const BXException& error) {
        ++counts.failures;
        EXPECT_NE(error.GetErrorCode(), 0);
        EXPECT_STRNE(error.what(), "");
    }
}

void TryDocument(DOMDocument* document, Counts& counts) {
    SVMTranslator translator;
    Try([&] { return translator.ParseFromTree(document, std::string()); }, counts);
}

std::vector<DOMElement*> ElementsOf(DOMDocument& document) {
    std::vector<DOMElement*> elements;
    const auto* list = document.getElementsByTagName(BrevixTranscoder().ToWide("*").c_str());
    for (XMLSize_t i = 0; i < list->getLength(); ++i)
        elements.push_back(static_cast<DOMElement*>(list->item(i)));
    return elements;
}

bool IsRoot(const DOMElement& element) {
    return element.getParentNode()->getNodeType() == DOMNode::DOCUMENT_NODE;
}

void RemoveChildren(DOMElement& element) {
    while (DOMNode* child = element.getFirstChild())
        element.removeChild(child)->release();
}

constexpr int kElementDamages = 6;

void DamageElement(DOMDocument& document, DOMElement& element, int damage) {
    const BrevixTranscoder transcoder;
    switch (damage) {
        case 0:
            element.getParentNode()->removeChild(&element);
            break;
        case 1:
            if (!IsRoot(element))
                element.getParentNode()->insertBefore(element.cloneNode(true), &element);
            break;
        case 2:
            RemoveChildren(element);
            break;
        case 3:
            element.setTextContent(transcoder.ToWide("garbage 7 nan").c_str());
            break;
        case 4:
            document.renameNode(&element, nullptr, transcoder.ToWide("Renamed").c_str());
            break;
        default:
            element.appendChild(element.cloneNode(true));
    }
}

// garbage: its number; -1 removes, -2 empties.
void DamageAttribute(DOMElement& element, XMLSize_t attribute, int garbage) {
    const std::basic_string<XMLCh> name = element.getAttributes()->item(attribute)->getNodeName();
    if (garbage == -1)
        element.removeAttribute(name.c_str());
    else
        element.setAttribute(name.c_str(), BrevixTranscoder().ToWide(garbage == -2 ? "" : kGarbage[garbage]).c_str());
}

class HostileDocuments : public testing::TestWithParam<std::size_t> {
protected:
    DocumentHandle Fresh() const { return DocumentParser().ParseText(Documents()[GetParam()].Text()); }
};

TEST_P(HostileDocuments, EachElementDamagedOneAtATimeIsAModelOrAnError) {
    const std::size_t count = ElementsOf(*Fresh()).size();
    Counts counts;
    for (std::size_t i = 0; i < count; ++i) {
        for (int damage = 0; damage < kElementDamages; ++damage) {
            SCOPED_TRACE("element " + std::to_string(i) + ", damage " + std::to_string(damage));
            const DocumentHandle document = Fresh();
            DamageElement(*document, *ElementsOf(*document)[i], damage);
            TryDocument(document.get(), counts);
        }
    }
    EXPECT_GT(counts.models, 20);
    EXPECT_GT(counts.failures, 20);
}

TEST_P(HostileDocuments, EachAttributeDamagedOneAtATimeIsAModelOrAnError) {
    const DocumentHandle whole = Fresh();
    const std::vector<DOMElement*> elements = ElementsOf(*whole);
    Counts counts;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        for (XMLSize_t attribute = 0; attribute < elements[i]->getAttributes()->getLength(); ++attribute) {
            for (int garbage = -2; garbage < static_cast<int>(std::size(kGarbage)); ++garbage) {
                SCOPED_TRACE("element " + std::to_string(i) + ", attribute " + std::to_string(attribute) +
                             ", garbage " + std::to_string(garbage));
                const DocumentHandle document = Fresh();
                DamageAttribute(*ElementsOf(*document)[i], attribute, garbage);
                TryDocument(document.get(), counts);
            }
        }
    }
    EXPECT_GT(counts.models, 100);
    EXPECT_GT(counts.failures, 100);
}

TEST_P(HostileDocuments, SeveralDamagesAtRandomAreAModelOrAnError) {
    std::mt19937 random(static_cast<unsigned>(GetParam()) + 7);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    Counts counts;
    for (int round = 0; round < 600; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const DocumentHandle document = Fresh();
        for (std::size_t damages = 1 + below(3); damages > 0; --damages) {
            const auto elements = ElementsOf(*document);
            if (elements.empty())
                break;
            DOMElement& element = *elements[below(elements.size())];
            const XMLSize_t attributes = element.getAttributes()->getLength();
            if (attributes > 0 && below(3) > 0)
                DamageAttribute(element, below(attributes), static_cast<int>(below(std::size(kGarbage) + 2)) - 2);
            else
                DamageElement(*document, element, static_cast<int>(below(kElementDamages)));
        }
        TryDocument(document.get(), counts);
    }
    EXPECT_GT(counts.models, 20);
    EXPECT_GT(counts.failures, 20);
}

TEST_P(HostileDocuments, BytesChangedAtRandomAreAModelOrAnError) {
    std::mt19937 random(static_cast<unsigned>(GetParam()) + 11);
    const std::string whole = Documents()[GetParam()].Text();
    Counts counts;
    for (int round = 0; round < 2000; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        std::string text = whole;
        for (auto damages = 1 + random() % 3; damages > 0; --damages) {
            const std::size_t at = random() % text.size();
            if (random() % 8 == 0)
                text.resize(at + 1);
            else
                text[at] = static_cast<char>(random() % 2 == 0 ? random() % 256 : ' ' + random() % 95);
        }
        SVMTranslator translator;
        Try([&] { return translator.ParseFromTree(text, std::string()); }, counts);
    }
    EXPECT_GT(counts.models, 20);
    EXPECT_GT(counts.failures, 20);
}

TEST_P(HostileDocuments, TheWholeOneIsAModel) {
    Counts counts;
    TryDocument(Fresh().get(), counts);
    EXPECT_EQ(counts.models, 1);
}

INSTANTIATE_TEST_SUITE_P(All, HostileDocuments, testing::Range<std::size_t>(0, 4));

}  // namespace
}  // namespace KwBrevix_930
