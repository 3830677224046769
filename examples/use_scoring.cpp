// Scoring in use: one record, many records at once, and the same as a host that asks the plug-in itself. Quoted by
// docs/embedding.md; built and run with the tests, in the folder of a model. Ends with exit code 1 when a result is not
// the expected one.
#include <fstream>
#include <iostream>
#include <memory>
#include <vector>

#include "host/CaseRecord.h"
#include "host/IBatchModel.h"
#include "host/ScoreModel.h"
#include "host/ScoreResult.h"
#include "host/ScoreTranslator.h"
#include "plugin/entry_point.h"
#include "runtime/ScoringModel.h"

namespace {

int gFaults = 0;

void expect(const char* what, bool isRight) {
    gFaults += isRight ? 0 : 1;
    std::cout << what << (isRight ? ": as expected\n" : ": WRONG\n");
}

void ask() {
    const auto model = brevix::ScoringModel::openFile("model.pmml");
    for (const brevix::InputField& input : model->getInputs())
        expect(input.name.c_str(), !input.type.empty());
    for (const brevix::OutputColumn& column : model->getOutputColumns())
        expect(column.name.c_str(), model->findOutputColumn(column.name).has_value());
    expect("kind", model->isClassification());
    expect("target", model->getTargetName() == "cultivar");
    expect("categories", model->getCategories().size() == 3);
}

void fill(brevix::Record& record, double proline) {
    record.setNumber("malic_acid", 1.71);
    record.setText(0, "mid");
    record.setNumber("proline", proline);
    for (const char* name : {"ash", "alcalinity_of_ash", "magnesium", "total_phenols", "flavanoids", "proanthocyanins",
                             "nonflavanoid_phenols", "hue", "od280/od315_of_diluted_wines"})
        record.setNumber(name, 1.25);
    record.setText("color_intensity", "pale");
}

void scoreOne() {
    const auto model = brevix::ScoringModel::openFile("model.pmml");
    brevix::Record record = model->makeRecord();
    brevix::Outcome outcome;
    fill(record, 900.0);
    model->score(record, outcome);
    expect("status", outcome.status == 0);
    expect("category", outcome.category >= 0 && !outcome.number && outcome.probabilities.size() == 3);
    for (std::size_t i = 0; i < model->getOutputColumns().size(); ++i) {
        const auto value = model->getValue(outcome, model->getOutputColumns()[i]);
        expect("value", value.kind != brevix::OutputValue::kAbsent);
    }
    record.setMissing("hue");
    model->score(record, outcome);
    expect("status of a missing input", outcome.status == brevix::kMissingInput && outcome.category == -1);
}

void scoreMany() {
    const auto model = brevix::ScoringModel::openFile("model.pmml");
    std::vector<brevix::Record> records;
    for (int i = 0; i < 64; ++i)
        records.push_back(model->makeRecord());
    std::vector<brevix::Outcome> outcomes(records.size());
    for (std::size_t i = 0; i < records.size(); ++i)
        fill(records[i], 25.0 * static_cast<double>(i));
    model->score(records, outcomes);
    for (std::size_t i = 0; i < records.size(); ++i) {
        brevix::Outcome alone;
        model->score(records[i], alone);
        expect("one of many", outcomes[i].status == 0 && outcomes[i].category == alone.category &&
                                  outcomes[i].probabilities == alone.probabilities);
    }
}

// A host has a model by GiveMyTranslator, and records of its own; these are the ones that brevix_host brings.
void hostMany() {
    std::ifstream document("model.pmml");
    const std::unique_ptr<KwBrevix_930::ScoreTranslator> translator(GiveMyTranslator());
    const std::unique_ptr<KwBrevix_930::ScoreModel> model(translator->ParseFromTree(document, std::string()));
    KwBrevix_930::CaseRecord cells(*model->GetDictionary());
    const std::vector<const KwBrevix_930::ScoreCaseRecord*> records = {&cells, nullptr, &cells};

    auto* batch = dynamic_cast<KwBrevix_930::IBatchModel*>(model.get());
    if (!batch)
        return expect("a model that scores many cases in one call", false);
    std::vector<KwBrevix_930::ScoreResult*> results(records.size());
    std::vector<KwScore::KwStatus> statuses(records.size());
    batch->ScoreCases(records.size(), records.data(), results.data(), statuses.data(), false);

    for (std::size_t i = 0; i < records.size(); ++i) {
        expect("status of a case without values", statuses[i].GetErrorCode() == 90029);
        expect("its result", (results[i] != nullptr) == (records[i] != nullptr));
        delete results[i];
    }
}

}  // namespace

int main() {
    ask();
    scoreOne();
    scoreMany();
    hostMany();
    return gFaults == 0 ? 0 : 1;
}
