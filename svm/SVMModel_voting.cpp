// SVMModel: from one decision value a machine to a category, a confidence and probabilities.
#include "svm/SVMModel.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "svm/status_codes.h"

namespace KwBrevix_930 {

namespace {

constexpr double kSmallestProbability = 1e-7;
constexpr double kLargestProbability = 0.9999999;

// A sweep of the coupling costs the cube of the number of categories. A document pays for that with one machine a pair;
// where machines are lacking, more categories than this are not coupled.
constexpr std::size_t kMostCategoriesWithoutAllPairs = 512;

// Four categories have so many pairs, and these 64 votes.
constexpr std::size_t kMostMachinesInTable = 6;
constexpr std::size_t kMostNumbersInTable = 4096;

// A decision equal to the threshold is for the alternate category, whatever maxWins says.
bool PicksTarget(double threshold, bool isMaxWins, double decision) {
    return isMaxWins ? decision > threshold : threshold > decision;
}

bool IsPairCount(std::size_t machineCount, std::int32_t categoryCount) {
    const auto n = static_cast<std::uint64_t>(categoryCount);
    return machineCount == n * (n - 1) / 2;
}

}  // namespace

std::size_t SVMModel::Vote::GetRoom() const {
    const std::size_t rowRoom = pairs.empty() ? 0 : pairs.front().capacity();
    return probabilities.capacity() + tickets.capacity() + pairs.capacity() * (rowRoom + 1) +
           coupling.q.AsVectorConst().capacity() + coupling.product.capacity();
}

// From decision values to what the caller of DoVotingForSVMCls is to initialise and read.
SVMModel::Status SVMModel::CastVote(const Values& decisions, Vote& vote) const {
    vote.category = -1;
    vote.confidence = 0.0;
    vote.probabilities.clear();
    return DoVotingForSVMCls(decisions, vote);
}

SVMModel::Status SVMModel::DoVotingForSVMCls(const Values& decisions, Vote& vote) const {
    if (decisions.empty() || decisions.size() != fData->GetMachines().size())
        return {};
    const bool isOneAgainstAll =
        !fData->GetIsZarnModel() && fData->GetIsOneAgainstAll() && fData->GetTargetCategoryCount() >= 3;
    return isOneAgainstAll ? VoteForOneAgainstAll(decisions, vote) : VoteForOneAgainstOne(decisions, vote);
}

SVMModel::Status SVMModel::VoteForOneAgainstAll(const Values& decisions, Vote& vote) const {
    const auto& machines = fData->GetMachines();
    if (decisions.empty() || decisions.size() != machines.size())
        return {};
    const double extreme = fData->GetIsMaxWins() ? *std::max_element(decisions.begin(), decisions.end())
                                                 : *std::min_element(decisions.begin(), decisions.end());
    for (std::size_t i = 0; i < decisions.size(); ++i) {
        if (decisions[i] == extreme && machines[i]) {
            vote.category = machines[i]->targetCategoryIndex;
            break;
        }
    }
    return {};
}

SVMModel::Status SVMModel::VoteForOneAgainstOne(const Values& decisions, Vote& vote) const {
    const std::size_t machineCount = fData->GetMachines().size();
    if (decisions.empty() || decisions.size() != machineCount)
        return {};
    const bool isZarn = fData->GetIsZarnModel();
    if (fData->GetTargetCategoryCount() == 2 && machineCount == 1)
        return isZarn ? GetZARNTicketByBinaryClass(decisions, vote) : GetTicketByBinaryClass(decisions, 0, vote);
    return isZarn ? GetZARNTicketByMultiClass(decisions, vote) : GetTicketByMultiClass(decisions, vote);
}

std::int32_t SVMModel::PickCategory(const ST_SUPPORTVECTORMACHINE& machine, bool isMaxWins, double decision) {
    return PicksTarget(machine.threshold, isMaxWins, decision) ? machine.targetCategoryIndex
                                                               : machine.alternateTargetCategoryIndex;
}

SVMModel::Status SVMModel::GetTicketByBinaryClass(const Values& decisions, std::int32_t machine, Vote& vote) const {
    const auto place = static_cast<std::size_t>(machine);
    if (place < decisions.size() && place < fData->GetMachines().size() && fData->GetMachines()[place])
        vote.category = PickCategory(*fData->GetMachines()[place], fData->GetIsMaxWins(), decisions[place]);
    return {};
}

// Without exactly one machine a pair of categories nothing is voted; a vote for an unknown category is dropped.
SVMModel::Status SVMModel::GetTicketsToCategories(const Values& decisions, Indices& votes) const {
    const std::size_t machineCount = fData->GetMachines().size();
    if (decisions.size() != machineCount || fData->GetTargetCategoryCount() < 2 ||
        !IsPairCount(machineCount, fData->GetTargetCategoryCount()))
        return {};
    const auto& machines = fData->GetMachines();
    const bool isMaxWins = fData->GetIsMaxWins();
    for (std::size_t i = 0; i < machineCount; ++i) {
        const std::int32_t category = machines[i] ? PickCategory(*machines[i], isMaxWins, decisions[i]) : -1;
        if (static_cast<std::uint32_t>(category) < votes.size())
            ++votes[static_cast<std::size_t>(category)];
    }
    return {};
}

SVMModel::Status SVMModel::GetTicketByMultiClass(const Values& decisions, Vote& vote) const {
    vote.tickets.assign(fTargetCategoryNames.size(), 0);
    const Status status = GetTicketsToCategories(decisions, vote.tickets);
    return status.IsError() || vote.tickets.empty() ? status : GetProbablitiesForMultiClass(vote.tickets, vote);
}

// Ties go to the lowest category.
SVMModel::Status SVMModel::GetProbablitiesForMultiClass(const Indices& votes, Vote& vote) const {
    const auto machineCount = static_cast<double>(fData->GetMachines().size());
    const std::size_t first = vote.probabilities.size();
    const std::size_t count = fTargetCategoryNames.size();
    vote.probabilities.resize(first + count);
    for (std::size_t c = 0; c < count; ++c) {
        const double probability = static_cast<double>(votes[c]) / machineCount;
        vote.probabilities[first + c] = probability;
        if (probability > vote.confidence) {
            vote.category = static_cast<std::int32_t>(c);
            vote.confidence = probability;
        }
    }
    return vote.probabilities.empty() ? kInvalidStatus : Status();
}

double SVMModel::ComputeZARNZValue(double decision, double a, double b) {
    const double x = a * decision + b;
    return x > 0 ? std::exp(-x) / (std::exp(-x) + 1.0) : 1.0 / (std::exp(x) + 1.0);
}

// The k-th machine belongs to the k-th pair (i, j), i < j, in row order; a pair without one keeps its zeros.
SVMModel::Status SVMModel::CalculateClassProbabilites(const Values& decisions, std::vector<Values>& pairs) const {
    const auto n = static_cast<std::size_t>(fData->GetTargetCategoryCount());
    const auto& machines = fData->GetMachines();
    const bool isCoupled =
        n <= kMostCategoriesWithoutAllPairs || IsPairCount(machines.size(), fData->GetTargetCategoryCount());
    pairs.resize(isCoupled ? n : 0);
    for (Values& row : pairs)
        row.assign(n, 0.0);
    const std::size_t pairCount = std::min(machines.size(), decisions.size());
    std::size_t k = 0;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        for (std::size_t j = i + 1; j < n && k < pairCount; ++j, ++k) {
            if (!machines[k] || !machines[k]->extension)
                continue;
            const SVMMachineExtension& sigmoid = *machines[k]->extension;
            const double probability = ComputeZARNZValue(decisions[k], sigmoid.probabilityA, sigmoid.probabilityB);
            pairs[i][j] = probability < kSmallestProbability  ? kSmallestProbability
                          : probability > kLargestProbability ? kLargestProbability
                                                              : probability;
            pairs[j][i] = 1.0 - pairs[i][j];
        }
    }
    return pairs.empty() ? kInvalidStatus : Status();
}

// Fewer than three categories are left as they are.
SVMModel::Status SVMModel::DoMultiProbLearn(const std::vector<Values>& pairs, const PairwiseCoupling& coupling,
                                            Values& probabilities, PairwiseCoupling::Work& work) const {
    if (probabilities.size() >= 3 && coupling.Solve(pairs, probabilities, work).IsError())
        return kInvalidStatus;
    return probabilities.empty() ? kInvalidStatus : Status();
}

SVMModel::Status SVMModel::GetZARNTicketByMultiClass(const Values& decisions, Vote& vote) const {
    // Too few machines to reach every category: coupling would leave nothing to choose, at a great price for many.
    if (static_cast<std::size_t>(fData->GetTargetCategoryCount()) > fData->GetMachines().size() + 1)
        return kInvalidStatus;
    std::vector<Values>& pairs = vote.pairs;
    Status status = CalculateClassProbabilites(decisions, pairs);
    if (status.IsError())
        return status;
    vote.probabilities.resize(pairs.size());
    status = DoMultiProbLearn(pairs, PairwiseCoupling(), vote.probabilities, vote.coupling);
    if (status.IsError() || vote.probabilities.size() != fTargetCategoryNames.size())
        return status;
    for (std::size_t c = 0; c < vote.probabilities.size(); ++c) {
        if (vote.probabilities[c] > vote.confidence) {
            vote.category = static_cast<std::int32_t>(c);
            vote.confidence = vote.probabilities[c];
        }
    }
    return status;
}

// Deliberate: the probabilities stand in category order, the prediction follows the extension's response and
// nonresponse.
SVMModel::Status SVMModel::GetZARNTicketByBinaryClass(const Values& decisions, Vote& vote) const {
    std::vector<Values>& pairs = vote.pairs;
    const Status status = CalculateClassProbabilites(decisions, pairs);
    if (status.IsError())
        return status;
    const auto& machines = fData->GetMachines();
    const auto* machine = machines.empty() ? nullptr : machines.front().get();
    if (decisions.size() == 1 && machine && machine->extension) {
        const SVMMachineExtension& categories = *machine->extension;
        vote.category = categories.responseCategoryIndex;
        if (categories.nonresponseCategoryIndex >= 0) {
            vote.probabilities = {pairs[0][1], 1.0 - pairs[0][1]};
            const bool isFirst = vote.probabilities[0] >= vote.probabilities[1];
            vote.confidence = vote.probabilities[isFirst ? 0 : 1];
            if (!isFirst)
                vote.category = categories.nonresponseCategoryIndex;
        }
    }
    return vote.probabilities.empty() ? kInvalidStatus : Status();
}

// Whether a vote depends on nothing but which machines pick their target category.
bool SVMModel::IsVoteOfPicks() const {
    const bool isOneAgainstAll = fData->GetIsOneAgainstAll() && fData->GetTargetCategoryCount() >= 3;
    return !fData->GetIsZarnModel() && !isOneAgainstAll;
}

// Every vote is cast once, by decision values beyond all thresholds.
void SVMModel::SetUpVoteTable() {
    fVoteTable = {};
    if (!fData || !fData->GetIsClassification() || !IsVoteOfPicks())
        return;
    const auto& machines = fData->GetMachines();
    const std::size_t count = machines.size();
    const std::size_t width = 2 + fTargetCategoryValues.size();
    if (count == 0 || count > kMostMachinesInTable || width << count > kMostNumbersInTable)
        return;
    const auto isOrdinary = [](const auto& machine) { return machine && std::isfinite(machine->threshold); };
    if (!std::all_of(machines.begin(), machines.end(), isOrdinary))
        return;
    constexpr double kHigh = std::numeric_limits<double>::infinity();
    Values decisions(count);
    fVoteTable.numbers.resize(width << count);
    for (std::size_t picks = 0; picks < std::size_t{1} << count; ++picks) {
        for (std::size_t m = 0; m < count; ++m)
            decisions[m] = ((picks >> m & 1) != 0) == fData->GetIsMaxWins() ? kHigh : -kHigh;
        Vote& vote = fVoteTable.votes.emplace_back();
        const Status status = CastVote(decisions, vote);
        fVoteTable.statuses.push_back(status.IsError() ? status
                                                       : WriteVote(vote, fVoteTable.numbers.data() + picks * width));
    }
    for (const auto& machine : machines)
        fVoteTable.thresholds.push_back(machine->threshold);
}

// Machines may be added to the data, and its method changed, before it is handed over again.
bool SVMModel::HasVoteTableFor(std::size_t machineCount) const {
    return machineCount > 0 && fVoteTable.thresholds.size() == machineCount && IsVoteOfPicks();
}

// Returns: the place of a vote in the table.
std::size_t SVMModel::FindPicks(const double* decisions) const {
    const bool isMaxWins = fData->GetIsMaxWins();
    const Values& thresholds = fVoteTable.thresholds;
    std::size_t picks = 0;
    for (std::size_t m = 0; m < thresholds.size(); ++m)
        picks |= std::size_t{PicksTarget(thresholds[m], isMaxWins, decisions[m])} << m;
    return picks;
}

}  // namespace KwBrevix_930
