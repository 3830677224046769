// Everything in a document that has no effect, told once for each kind.
#include <initializer_list>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/number_text.h"
#include "runtime/ModelDocument.h"
#include "runtime/Preparation.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

// Looks through one document and collects the notes.
class IgnoredParts {
public:
    explicit IgnoredParts(const ModelDocument& document) : fDocument(document) {}

    std::vector<std::string> list() {
        noteModels();
        noteVectors();
        noteCounts();
        noteCategories();
        noteUsages();
        noteElements();
        return std::move(fNotes);
    }

private:
    void note(std::size_t count, const std::string& text) {
        if (count > 0)
            fNotes.push_back(text);
    }

    std::vector<DOMElement*> childrenOf(const DOMElement* parent) const { return fDocument.findChildren(parent, ""); }
    const DOMElement* findVectors() const {
        return fDocument.findChild(fDocument.getModel(), Tags::XML_ELE_SVM_VECTORDICTION);
    }

    void noteModels() {
        const std::size_t count = fDocument.findChildren(&fDocument.getRoot(), Tags::XML_ELE_SVMMODEL).size();
        note(count > 1 ? count : 0, "the document holds " + std::to_string(count) +
                                        " SupportVectorMachineModel elements; the first is scored");
    }

    // The instances that can be read, each with whether a support vector names it.
    std::unordered_map<std::string, bool> findInstances() {
        std::unordered_map<std::string, bool> isUsed;
        std::size_t repeated = 0;
        for (const DOMElement* instance : fDocument.findChildren(findVectors(), Tags::XML_ELE_SVM_VECTORINSTANCE)) {
            if (fDocument.findChild(instance, Tags::XML_ELE_SVM_REALSPARSEARRAY))
                repeated +=
                    isUsed.emplace(fDocument.getAttribute(*instance, Tags::XML_ATT_SVM_ID), false).second ? 0 : 1;
        }
        note(repeated, counted(repeated, "VectorInstance has", "VectorInstances have") +
                           " the id of another before; the first counts");
        return isUsed;
    }

    void noteVectors() {
        auto isUsed = findInstances();
        std::size_t lost = 0;
        std::size_t extensions = 0;
        for (const DOMElement* machine : fDocument.getMachines()) {
            const DOMElement* list = fDocument.findChild(machine, Tags::XML_ELE_SVM_SUPPORTVECTORS);
            for (const DOMElement* vector : fDocument.findChildren(list, Tags::XML_ELE_SVM_SUPPORTVECTOR)) {
                const auto found = isUsed.find(fDocument.getAttribute(*vector, Tags::XML_ATT_SVM_VECTORID));
                if (found == isUsed.end())
                    ++lost;
                else
                    found->second = true;
            }
            const std::size_t count = fDocument.findChildren(machine, Tags::XML_ELE_EXTENSION).size();
            extensions += count > 1 ? count - 1 : 0;
        }
        std::size_t unused = 0;
        for (const auto& [id, used] : isUsed)
            unused += used ? 0 : 1;
        note(lost, counted(lost, "SupportVector names", "SupportVectors name") +
                       " no VectorInstance; left out with the coefficient");
        note(unused, counted(unused, "VectorInstance is", "VectorInstances are") + " used by no machine");
        note(extensions, counted(extensions, "Extension", "Extensions") + " behind the first of a machine left out");
    }

    std::size_t isWrong(const DOMElement* element, const char* attribute, std::size_t count) const {
        const auto text = element ? fDocument.findAttribute(*element, attribute) : std::nullopt;
        return text && KwBrevix_930::ParseNumber(*text) != static_cast<double>(count) ? 1 : 0;
    }

    void noteCounts() {
        const DOMElement* fields = fDocument.getDataDictionary();
        const DOMElement* vectors = findVectors();
        std::size_t wrong =
            isWrong(fields, "numberOfFields", fDocument.findChildren(fields, Tags::XML_ELE_DATAFIELD).size());
        wrong += isWrong(vectors, "numberOfVectors",
                         fDocument.findChildren(vectors, Tags::XML_ELE_SVM_VECTORINSTANCE).size());
        wrong += isWrong(fDocument.findChild(vectors, Tags::XML_ELE_SVM_VECTORFIELDS), "numberOfFields",
                         fDocument.getVectorFields().size());
        for (const DOMElement* machine : fDocument.getMachines()) {
            const DOMElement* list = fDocument.findChild(machine, Tags::XML_ELE_SVM_SUPPORTVECTORS);
            const DOMElement* coefficients = fDocument.findChild(machine, Tags::XML_ELE_SVM_COEFFICIENTS);
            wrong += isWrong(list, "numberOfSupportVectors",
                             fDocument.findChildren(list, Tags::XML_ELE_SVM_SUPPORTVECTOR).size());
            wrong += isWrong(coefficients, "numberOfCoefficients",
                             fDocument.findChildren(coefficients, Tags::XML_ELE_SVM_COEFFICIENT).size());
        }
        note(wrong, counted(wrong, "written count is not what the document holds",
                            "written counts are not what the document holds"));
    }

    void noteCategories() {
        std::unordered_set<std::string> declared;
        const std::string target = fDocument.getTargetName();
        for (const DOMElement* field : fDocument.findChildren(fDocument.getDataDictionary(), Tags::XML_ELE_DATAFIELD)) {
            if (fDocument.getAttribute(*field, Tags::XML_ATT_NAME) != target)
                continue;
            for (const DOMElement* value : fDocument.findChildren(field, Tags::XML_ELE_VALUE))
                declared.insert(fDocument.getAttribute(*value, Tags::XML_ATT_VALUE));
        }
        std::unordered_set<std::string> unknown;
        for (const DOMElement* machine : fDocument.getMachines()) {
            for (const char* attribute : {Tags::XML_ATT_PPC_TARGET_CAT, Tags::XML_ATT_SVM_ALTERNATETAGCATE}) {
                const std::string category = fDocument.getAttribute(*machine, attribute);
                if (!category.empty() && !declared.contains(category))
                    unknown.insert(category);
            }
        }
        const bool hasCategories = !declared.empty();
        note(hasCategories ? unknown.size() : 0,
             counted(unknown.size(), "category of the machines is", "categories of the machines are") +
                 " not declared by the target and never predicted");
    }

    // In the order of the usages' names, which is the same on every run.
    void noteUsages() {
        std::map<std::string, std::vector<std::string>> fields;
        for (const DOMElement* field : fDocument.getMiningFields()) {
            const auto usage = fDocument.findAttribute(*field, Tags::XML_ATT_MININGFIELD_USAGETYPE);
            const bool isUsed = !usage || *usage == Tags::XML_ATT_MF_FUT_ACTIVE ||
                                *usage == Tags::XML_ATT_MF_FUT_TARGET || *usage == Tags::XML_ATT_MF_FUT_PREDICTED;
            if (!isUsed)
                fields[*usage].push_back(fDocument.getAttribute(*field, Tags::XML_ATT_MININGFIELD_NAME));
        }
        for (const auto& [usage, names] : fields) {
            static constexpr std::size_t kMost = 5;
            std::string text =
                counted(names.size(), "MiningField", "MiningFields") + " of usageType " + quoted(usage) + ":";
            for (std::size_t i = 0; i < names.size() && i < kMost; ++i)
                text += (i == 0 ? " " : ", ") + names[i];
            note(names.size(), text + (names.size() > kMost ? ", ..." : ""));
        }
    }

    void countUnread(const DOMElement* parent, std::initializer_list<const char*> read) {
        for (const DOMElement* child : childrenOf(parent)) {
            bool isRead = false;
            for (const char* tag : read)
                isRead = isRead || KwBrevix_930::BaseTranslator::HasTag(child, tag);
            if (!isRead)
                ++fUnread[fDocument.nameOf(*child)];
        }
    }

    // Elements that hold no number of others, parent by parent; what is inside an unread element is not counted.
    void noteElements() {
        const DOMElement* model = fDocument.getModel();
        const DOMElement* vectors = findVectors();
        countUnread(&fDocument.getRoot(), {Tags::XML_ELE_HEADER, Tags::XML_ELE_DATADICTIONARY,
                                           Tags::XML_ELE_TRANSFORMATION, Tags::XML_ELE_SVMMODEL});
        countUnread(fDocument.getDataDictionary(), {Tags::XML_ELE_DATAFIELD});
        for (const DOMElement* field : childrenOf(fDocument.getDataDictionary()))
            if (KwBrevix_930::BaseTranslator::HasTag(field, Tags::XML_ELE_DATAFIELD))
                countUnread(field, {Tags::XML_ELE_VALUE, Tags::XML_ELE_INTERVAL});
        countUnread(model, {Tags::XML_ELE_MININGSCHEMA, "Output", Tags::XML_ELE_TARGETS,
                            Tags::XML_ELE_LOCALTRANSFORMATIONS, Tags::XML_ELE_SVM_KFTLINEAR, Tags::XML_ELE_SVM_KFTPOLY,
                            Tags::XML_ELE_SVM_KFTRBF, Tags::XML_ELE_SVM_KFTSIGMOID, Tags::XML_ELE_SVM_VECTORDICTION,
                            Tags::XML_ELE_SVM_SVM, "ModelVerification"});
        countUnread(fDocument.findChild(model, Tags::XML_ELE_MININGSCHEMA), {Tags::XML_ELE_MININGFIELD});
        countUnread(vectors, {Tags::XML_ELE_SVM_VECTORFIELDS, Tags::XML_ELE_SVM_VECTORINSTANCE});
        countUnread(fDocument.findChild(vectors, Tags::XML_ELE_SVM_VECTORFIELDS),
                    {Tags::XML_ELE_FIELDREF, Tags::XML_ELE_CATEGORICAL_PREDICTOR});
        for (const DOMElement* machine : fDocument.getMachines())
            countUnread(machine,
                        {Tags::XML_ELE_SVM_SUPPORTVECTORS, Tags::XML_ELE_SVM_COEFFICIENTS, Tags::XML_ELE_EXTENSION});
        std::string text;
        for (const auto& [name, count] : fUnread)
            text += (text.empty() ? "" : ", ") + name + (count > 1 ? " (" + std::to_string(count) + ")" : "");
        note(fUnread.size(), "elements that are not read: " + text);
    }

    const ModelDocument& fDocument;
    std::map<std::string, std::size_t> fUnread;
    std::vector<std::string> fNotes;
};

}  // namespace

std::vector<std::string> noteIgnored(const ModelDocument& document) {
    return IgnoredParts(document).list();
}

}  // namespace brevix
