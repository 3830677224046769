// Holds results against the expected ones that a model brings along in its ModelVerification.
#include <unordered_map>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/number_text.h"
#include "runtime/ModelDocument.h"
#include "runtime/PreparedDocument.h"
#include "runtime/RowVerifier.h"
#include "runtime/one_error_type.h"
#include "runtime/verification.h"

namespace brevix {

namespace {

using KwBrevix_930::BaseTranslator;
using KwBrevix_930::BrevixTranscoder;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

// A name without its prefix, as the cells of a row are compared.
std::string localName(const std::string& name) {
    const auto colon = name.rfind(':');
    return colon == std::string::npos ? name : name.substr(colon + 1);
}

double readTolerance(const ModelDocument& document, const DOMElement& element, const std::string& field,
                     const char* attribute, double otherwise) {
    const auto text = document.findAttribute(element, attribute);
    if (!text)
        return otherwise;
    const auto number = KwBrevix_930::ParseNumber(*text);
    if (!number || !(*number >= 0.0))
        throw Error("the VerificationField '" + field + "' has " + attribute + "='" + *text + "'");
    return *number;
}

// What the cells of the rows are: inputs of the model, or expected results.
class VerificationFields {
public:
    VerificationFields(const ScoringModel& model, const ModelDocument& document, const DOMElement& verification)
        : fModel(model), fDocument(document) {
        const DOMElement* fields = document.findChild(&verification, "VerificationFields");
        for (const DOMElement* field : document.findChildren(fields, "VerificationField"))
            take(*field);
        if (fColumns.empty())
            throw Error("its ModelVerification expects no result of the model: no VerificationField names an output");
    }

    const std::vector<RowVerifier::Column>& getColumns() const { return fColumns; }

    void fill(RowVerifier& verifier, const DOMElement& row) const {
        verifier.getRecord().clear();
        for (std::size_t i = 0; i < fColumns.size(); ++i)
            verifier.expect(i, "");
        for (const DOMElement* cell : fDocument.findChildren(&row, ""))
            fillCell(verifier, *cell);
    }

private:
    struct Cell {
        bool isInput;
        std::size_t place;
    };

    void take(const DOMElement& element) {
        const std::string field = fDocument.getAttribute(element, Tags::XML_ATT_SVM_FIELD);
        const std::string column = localName(fDocument.findAttribute(element, "column").value_or(field));
        Cell cell{true, 0};
        if (const auto input = fModel.findInput(field)) {
            cell.place = *input;
        } else if (const auto output = findOutput(field)) {
            const Tolerance standard;
            cell = {false, fColumns.size()};
            fColumns.push_back({*output,
                                {readTolerance(fDocument, element, field, "precision", standard.precision),
                                 readTolerance(fDocument, element, field, "zeroThreshold", standard.zeroThreshold)}});
            fColumns.back().column.name = field;
        } else {
            return;
        }
        if (!fCellByName.emplace(column, cell).second)
            throw Error("two VerificationFields have the column '" + column + "'");
    }

    // The target's own name stands for the prediction.
    std::optional<OutputColumn> findOutput(const std::string& field) const {
        const auto& columns = fModel.getOutputColumns();
        if (const auto place = fModel.findOutputColumn(field))
            return columns[*place];
        return field == fModel.getTargetName() ? std::optional(columns.front()) : std::nullopt;
    }

    void fillCell(RowVerifier& verifier, const DOMElement& element) const {
        const BrevixTranscoder transcoder;
        const auto found = fCellByName.find(transcoder.ToNarrow(BaseTranslator::GetLocalName(&element)));
        if (found == fCellByName.end())
            return;
        const std::string text = transcoder.ToNarrow(element.getTextContent());
        if (!found->second.isInput)
            verifier.expect(found->second.place, text);
        else if (!text.empty())
            verifier.getRecord().setText(found->second.place, text);
    }

    const ScoringModel& fModel;
    const ModelDocument& fDocument;
    std::vector<RowVerifier::Column> fColumns;
    std::unordered_map<std::string, Cell> fCellByName;
};

}  // namespace

VerificationTally verifyModel(const ScoringModel& model, const PreparedDocument& prepared,
                              const DifferenceSink& onDifference) {
    return withOneErrorType([&] {
        const ModelDocument& document = *prepared.document;
        const DOMElement* verification = document.findChild(document.getModel(), "ModelVerification");
        if (!verification)
            throw Error("the model brings no ModelVerification along; name a table with expected results");
        const DOMElement* table = document.findChild(verification, "InlineTable");
        if (!table)
            throw Error("its ModelVerification holds no InlineTable");
        const VerificationFields fields(model, document, *verification);
        RowVerifier verifier(model, fields.getColumns(), onDifference);
        for (const DOMElement* row : document.findChildren(table, "row")) {
            fields.fill(verifier, *row);
            verifier.verify();
        }
        if (verifier.getTally().valueCount == 0)
            throw Error("its ModelVerification has no row with an expected result");
        return verifier.getTally();
    });
}

}  // namespace brevix
