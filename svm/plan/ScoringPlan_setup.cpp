// ScoringPlan: looking a model over and laying it out.
#include "svm/plan/ScoringPlan.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numeric>
#include <stdexcept>
#include <unordered_map>

#include "svm/plan/DenseRows.h"
#include "svm/plan/merged_vector.h"

namespace KwBrevix_930::plan {

namespace {

// Where fewer of the columns than this are there, a dot product runs over lists of them. Squared distances add the
// case's numbers at every column.
constexpr double kListedBelow = 0.3;

constexpr std::size_t kMostColumns = std::numeric_limits<std::int32_t>::max();

// Denormal ones are left out: a thread may be set to read them as zero.
bool IsFloat(double value) {
    using Limits = std::numeric_limits<float>;
    const double size = std::fabs(value);
    return value == 0.0 ||
           (size >= Limits::min() && size <= Limits::max() && static_cast<double>(static_cast<float>(value)) == value);
}

bool IsUsable(const ST_SUPPORTVECTORMACHINE* machine) {
    return machine && machine->coefficients.size() == machine->supportVectors.size() &&
           std::all_of(machine->supportVectors.begin(), machine->supportVectors.end(),
                       [](const auto* vector) { return vector && vector->indices.size() == vector->values.size(); });
}

}  // namespace

// What decides on the layout.
struct ScoringPlan::Survey {
    std::unordered_map<const Instance*, std::size_t> rowOf;
    std::vector<std::size_t> machineLengths;
    // The matched entries of each row, and of all.
    std::vector<std::size_t> rowLengths;
    std::size_t entryCount = 0;
    // Rows that have no place in blocks.
    std::size_t mergedRowCount = 0;
    // Of bits that meet no column, in one row, where distances are taken.
    std::size_t largestConstant = 0;
    bool areBits = true;
    bool areFloats = true;
};

std::unique_ptr<const ScoringPlan> ScoringPlan::Make(const SVMModelData& data,
                                                     const KwSVM_700::SVMKernelFunction& kernel, std::size_t columns,
                                                     const Target& target) noexcept {
    const std::size_t wanted = data.GetIsClassification() ? data.GetMachines().size() : 1;
    const std::size_t mostColumns = std::min(kMostColumns, target.largestPlan / sizeof(std::int32_t));
    if (columns == 0 || columns > mostColumns || wanted == 0 || wanted > data.GetMachines().size())
        return nullptr;
    try {
        std::unique_ptr<ScoringPlan> plan(new ScoringPlan(data, kernel, columns, target.elementary));
        if (plan->Build(Machines(data.GetMachines()).first(wanted), target))
            return plan;
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    return nullptr;
}

ScoringPlan::ScoringPlan(const SVMModelData& data, const KwSVM_700::SVMKernelFunction& kernel, std::size_t columns,
                         const ElementaryVersions& elementary)
    : fShape(data, elementary), fKernel(kernel), fColumns(columns) {
    std::iota(fColumns.begin(), fColumns.end(), 0);
}

bool ScoringPlan::Build(Machines machines, const Target& target) {
    Survey survey;
    if (!fShape.IsKnown() || !TakeMachines(machines, survey))
        return false;
    SurveyRows(survey);
    if (GetByteCount(survey, target) > static_cast<double>(target.largestPlan))
        return false;
    LayOutRows(survey, target);
    LayOutMachines(machines, survey, *target.loops);
    return true;
}

bool ScoringPlan::TakeMachines(Machines machines, Survey& survey) {
    fBiases.reserve(machines.size());
    for (const auto& machine : machines) {
        if (!IsUsable(machine.get()))
            return false;
        fBiases.push_back(machine->bias);
        survey.machineLengths.push_back(machine->coefficients.size());
        for (const Instance* vector : machine->supportVectors) {
            if (survey.rowOf.emplace(vector, fRows.size()).second)
                fRows.push_back(vector);
        }
    }
    // Without the room that it grew by.
    fRows = std::vector<const Instance*>(fRows.begin(), fRows.end());
    return fRows.size() < kMostColumns - kBlock;
}

void ScoringPlan::SurveyRows(Survey& survey) const {
    MergedVector merged;
    for (const Instance* row : fRows) {
        MergeWithCase(*row, fColumns.size(), merged);
        survey.rowLengths.push_back(merged.matched.size());
        survey.entryCount += merged.matched.size();
        survey.mergedRowCount += HasNoPlaceInBlocks(merged) ? 1 : 0;
        if (fShape.TakesDistance())
            survey.largestConstant = std::max(survey.largestConstant, BitRows::CountConstant(merged));
        survey.areBits = survey.areBits && std::all_of(row->values.begin(), row->values.end(), BitRows::IsBit);
        survey.areFloats = survey.areFloats && std::all_of(row->values.begin(), row->values.end(), IsFloat);
    }
}

bool ScoringPlan::IsListed(const Survey& survey) const {
    const double all = static_cast<double>(fRows.size()) * static_cast<double>(fColumns.size());
    return !fShape.TakesDistance() && static_cast<double>(survey.entryCount) < kListedBelow * all;
}

bool ScoringPlan::FitsCache(const Target& target) const {
    return DenseRows<double>::GetByteCount(fRows.size(), fColumns.size()) <= static_cast<double>(target.cacheShare);
}

bool ScoringPlan::FitsFloats(const Survey& survey, const Target& target) const {
    return !FitsCache(target) && survey.areFloats;
}

double ScoringPlan::GetRowBytes(const Survey& survey, const Target& target) const {
    if (IsListed(survey))
        return ProductLists::GetByteCount(survey.rowLengths);
    if (FitsFloats(survey, target))
        return DenseRows<float>::GetByteCount(fRows.size(), fColumns.size());
    return DenseRows<double>::GetByteCount(fRows.size(), fColumns.size());
}

double ScoringPlan::GetByteCount(const Survey& survey, const Target& target) const {
    const double ofBits =
        survey.areBits ? BitRows::GetByteCount(fRows.size(), fColumns.size(), survey.largestConstant) : 0.0;
    return sizeof(ScoringPlan) + static_cast<double>(fColumns.size()) * sizeof(std::int32_t) +
           static_cast<double>(fBiases.size()) * sizeof(double) +
           static_cast<double>(fRows.size()) * sizeof(const Instance*) +
           static_cast<double>(survey.mergedRowCount) * sizeof(std::uint32_t) + GetRowBytes(survey, target) + ofBits +
           ProductLists::GetByteCount(survey.machineLengths);
}

void ScoringPlan::LayOutRows(const Survey& survey, const Target& target) {
    const Loops& loops = *target.loops;
    fMergedRows.reserve(survey.mergedRowCount);
    if (IsListed(survey))
        LayOutLists(survey, loops);
    else if (FitsFloats(survey, target))
        LayOutDense<float>(loops);
    else
        LayOutDense<double>(loops);
    fAppliedRows = IsListed(survey) ? fRows.size() : (fRows.size() + kTile - 1) / kTile * kTile;
    fNeedsFinite = !fShape.TakesDistance() && !IsListed(survey) && survey.entryCount < fRows.size() * fColumns.size();
    if (survey.areBits)
        LayOutBits(loops);
}

void ScoringPlan::LayOutLists(const Survey& survey, const Loops& loops) {
    auto lists = std::make_unique<ProductLists>(survey.rowLengths, fColumns.size(), loops.lists);
    MergedVector merged;
    for (std::size_t row = 0; row < fRows.size(); ++row) {
        MergeWithCase(*fRows[row], fColumns.size(), merged);
        for (std::size_t k = 0; k < merged.matched.size(); ++k)
            lists->Set(row, k, static_cast<std::size_t>(merged.matched[k].column), merged.matched[k].value);
    }
    fSums = std::move(lists);
}

// A squared distance with squares between the columns has none.
bool ScoringPlan::HasNoPlaceInBlocks(const MergedVector& vector) const {
    return fShape.TakesDistance() && !vector.unmatched.empty();
}

template <class Stored>
void ScoringPlan::LayOutDense(const Loops& loops) {
    auto dense = std::make_unique<DenseRows<Stored>>(fRows.size(), fColumns.size(), loops, GetTerms(loops));
    MergedVector merged;
    for (std::size_t row = 0; row < fRows.size(); ++row) {
        MergeWithCase(*fRows[row], fColumns.size(), merged);
        if (HasNoPlaceInBlocks(merged)) {
            fMergedRows.push_back(static_cast<std::uint32_t>(row));
            continue;
        }
        for (const MergedVector::Entry& entry : merged.matched)
            dense->Set(row, static_cast<std::size_t>(entry.column), entry.value);
    }
    fSums = std::move(dense);
}

void ScoringPlan::LayOutBits(const Loops& loops) {
    auto bits = std::make_unique<BitRows>(fRows.size(), fColumns.size(), fShape, loops);
    MergedVector merged;
    for (std::size_t row = 0; row < fRows.size(); ++row) {
        MergeWithCase(*fRows[row], fColumns.size(), merged);
        bits->Set(row, merged);
    }
    bits->Finish();
    fBits = std::move(bits);
}

void ScoringPlan::LayOutMachines(Machines machines, const Survey& survey, const Loops& loops) {
    fMachines = std::make_unique<ProductLists>(survey.machineLengths, GetRowSpace(), loops.lists);
    for (std::size_t m = 0; m < machines.size(); ++m) {
        const ST_SUPPORTVECTORMACHINE& machine = *machines[m];
        for (std::size_t k = 0; k < machine.coefficients.size(); ++k)
            fMachines->Set(m, k, survey.rowOf.at(machine.supportVectors[k]), machine.coefficients[k]);
    }
}

}  // namespace KwBrevix_930::plan
