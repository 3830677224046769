// What the steps of a preparation share: the document, what was changed in it, and what cannot be read.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace brevix {

class ModelDocument;

struct Preparation {
    const ModelDocument& document;
    /// One sentence for each kind of change.
    std::vector<std::string> notes = {};
    std::vector<std::string> complaints = {};

    /// Adds a note on so many changes; none on no change.
    void note(std::size_t count, const std::string& text) {
        if (count > 0)
            notes.push_back(text);
    }
};

/// Returns: a number and what it counts, in the right form.
inline std::string counted(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// Takes a model that another one holds alone to where the translator reads it.
void liftModel(Preparation& preparation);
/// Spells methods, truth values and replacements as the translator reads them.
void spellAttributes(Preparation& preparation);
/// Gives a regression without a target one, as of models that tell what is unusual.
void declareTarget(Preparation& preparation);
/// Makes dense arrays sparse, keeps vectors of zeros, and checks what the arrays hold.
void makeArraysSparse(Preparation& preparation);
/// Gives machines that hold one coefficient for each field the vectors that stand for them.
void makeUnitVectors(Preparation& preparation);
/// Gives the only machine the alternate category that PMML 3 writes on the model.
void takeAlternateOfModel(Preparation& preparation);
/// Gives the only machine of two categories the one that it does not name itself.
void completeBinaryMachine(Preparation& preparation);
/// Gives a categorical target without values the categories of the machines.
void declareCategories(Preparation& preparation);
/// Makes one machine of two that stand for one category each.
void joinTwoMachines(Preparation& preparation);
/// Names the method where machines stand for all pairs.
void nameOneAgainstOne(Preparation& preparation);

}  // namespace brevix
