// From one decision value a machine to a category, a confidence and probabilities.
#include <cmath>

#include <gtest/gtest.h>

#include "svm/PairwiseCoupling.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddExtension;
using svm_samples::AddMachine;
using svm_samples::Bench;
using svm_samples::Indices;
using svm_samples::kInfinity;
using svm_samples::kNaN;
using svm_samples::NewClassification;
using svm_samples::Values;
using Access = SVMModelTestAccess;
using Vote = Access::Vote;

const std::vector<std::string> kLetters = {"a", "b", "c", "d", "e", "f"};

std::vector<std::string> Letters(std::size_t n) {
    return {kLetters.begin(), kLetters.begin() + static_cast<std::ptrdiff_t>(n)};
}

// A model of n categories without machines.
struct Voting : Bench {
    explicit Voting(std::size_t n, bool isMaxWins = false)
        : Bench(Letters(n)), data(TakeData(NewClassification(static_cast<std::int32_t>(n)))) {
        data.SetIsMaxWins(isMaxWins);
    }

    // One machine for each pair (i, j), i < j, in row order.
    void AddPairs(std::int32_t n, double threshold = 0.0) {
        for (std::int32_t i = 0; i < n; ++i) {
            for (std::int32_t j = i + 1; j < n; ++j)
                AddMachine(data, 0.0, i, j).threshold = threshold;
        }
    }

    // As AddPairs, with extensions: A and B of pair k are those at place k.
    void AddSigmoidPairs(std::int32_t n, const Values& a, const Values& b) {
        AddPairs(n);
        for (std::size_t k = 0; k < data.GetMachines().size(); ++k) {
            ST_SUPPORTVECTORMACHINE& machine = *data.GetMachines()[k];
            AddExtension(machine, machine.targetCategoryIndex, machine.alternateTargetCategoryIndex, a[k], b[k]);
        }
        data.SetIsZarnModel(true);
    }

    SVMModelData& data;
};

void ExpectUntouched(const Access::Status& status, const Vote& vote) {
    EXPECT_FALSE(status.IsError());
    EXPECT_EQ(vote.category, 17);
    EXPECT_EQ(vote.confidence, 0.375);
    EXPECT_EQ(vote.probabilities, Values{0.125});
}

Vote Marked() {
    return {17, 0.375, {0.125}};
}

// The single-machine rule.

struct RuleCase {
    bool isMaxWins;
    double decision;
    bool picksTarget;
};

TEST(SingleMachineRule, ComparesTheThresholdStrictly) {
    const RuleCase cases[] = {
        {false, 1.25, true},
        {false, 1.75, false},
        {false, 1.5, false},
        {true, 1.75, true},
        {true, 1.25, false},
        {true, 1.5, false},
        {false, kNaN, false},
        {true, kNaN, false},
        {true, kInfinity, true},
        {false, kInfinity, false},
        {false, -kInfinity, true},
        {false, std::nextafter(1.5, 0.0), true},
        {true, std::nextafter(1.5, 2.0), true},
    };
    for (const RuleCase& rule : cases) {
        Voting bench(2, rule.isMaxWins);
        AddMachine(bench.data, 0.0, 1, 0).threshold = 1.5;
        Vote vote;
        EXPECT_FALSE(bench.access.BinaryTicket({rule.decision}, 0, vote).IsError());
        EXPECT_EQ(vote.category, rule.picksTarget ? 1 : 0) << rule.isMaxWins << " " << rule.decision;
        EXPECT_EQ(vote.confidence, 0.0);
        EXPECT_TRUE(vote.probabilities.empty());
    }
}

TEST(SingleMachineRule, OfAnAbsentMachineChoosesNothing) {
    Voting bench(2);
    AddMachine(bench.data, 0.0, 1, 0);
    bench.data.GetMachines().front().reset();
    for (const std::int32_t machine : {0, 1, -1}) {
        Vote vote = Marked();
        ExpectUntouched(bench.access.BinaryTicket({0.5}, machine, vote), vote);
    }
}

// The choice of the voting path.

TEST(DoVoting, OfNoDecisionsSetsNothing) {
    Voting bench(2);
    Vote vote = Marked();
    ExpectUntouched(bench.access.DoVoting({}, vote), vote);
    ExpectUntouched(bench.access.VoteOneAgainstOne({}, vote), vote);
    ExpectUntouched(bench.access.VoteOneAgainstAll({}, vote), vote);
}

TEST(DoVoting, OfAnotherNumberOfDecisionsThanMachinesSetsNothing) {
    for (const bool isZarn : {false, true}) {
        Voting bench(3);
        bench.AddPairs(3);
        bench.data.SetIsZarnModel(isZarn);
        for (const Values& decisions : {Values(2, 0.5), Values(4, 0.5)}) {
            Vote vote = Marked();
            ExpectUntouched(bench.access.DoVoting(decisions, vote), vote);
            ExpectUntouched(bench.access.VoteOneAgainstOne(decisions, vote), vote);
            ExpectUntouched(bench.access.VoteOneAgainstAll(decisions, vote), vote);
        }
    }
}

// One against one is for b by two votes; one against all would be for a, the target of the extreme machine.
TEST(DoVoting, GoesOneAgainstAllOnlyWithTheFlagThreeCategoriesAndWithoutZarn) {
    const Values decisions = {-1.5, 2.75, 2.5};
    for (const bool isOneAgainstAll : {false, true}) {
        for (const bool isZarn : {false, true}) {
            Voting bench(3, true);
            bench.AddSigmoidPairs(3, Values(3, -2.0), Values(3, 0.0));
            bench.data.SetIsZarnModel(isZarn);
            bench.data.SetIsOneAgainstAll(isOneAgainstAll);
            Vote vote;
            EXPECT_FALSE(bench.access.DoVoting(decisions, vote).IsError());
            EXPECT_EQ(vote.category, isOneAgainstAll && !isZarn ? 0 : 1);
            const bool isShares = vote.probabilities == Values{1.0 / 3.0, 2.0 / 3.0, 0.0};
            EXPECT_EQ(isShares, !isOneAgainstAll && !isZarn);
            EXPECT_EQ(vote.probabilities.empty(), isOneAgainstAll && !isZarn);
        }
    }
}

TEST(DoVoting, OfTwoCategoriesNeverGoesOneAgainstAll) {
    Voting bench(2);
    bench.data.SetIsOneAgainstAll(true);
    AddMachine(bench.data, 0.0, 0, 1).threshold = 0.5;
    Vote vote;
    // One against all would take the target of the only machine.
    EXPECT_FALSE(bench.access.DoVoting({0.75}, vote).IsError());
    EXPECT_EQ(vote.category, 1);
    EXPECT_EQ(vote.confidence, 0.0);
    EXPECT_TRUE(vote.probabilities.empty());
}

// One against all.

struct ExtremeCase {
    bool isMaxWins;
    Values decisions;
    std::int32_t expected;
};

TEST(OneAgainstAll, TakesTheFirstMachineWithTheExtremeDecision) {
    const ExtremeCase cases[] = {
        {false, {0.5, -1.25, 0.75, -1.25}, 2},
        {true, {0.5, 0.75, -1.25, 0.75}, 2},
        {false, {0.5, 0.25, 0.75, -1.25}, 0},
        {true, {0.875, 0.75, -1.25, 0.75}, 3},
        {false, {0.5, kNaN, 0.75, -1.25}, 0},
        {true, {0.5, kNaN, 0.75, -1.25}, 1},
        {false, {kInfinity, kInfinity, kInfinity, kInfinity}, 3},
        {true, {-0.0, 0.0, -0.0, 0.0}, 3},
    };
    for (const ExtremeCase& extreme : cases) {
        Voting bench(4, extreme.isMaxWins);
        bench.data.SetIsOneAgainstAll(true);
        for (const std::int32_t target : {3, 2, 1, 0})
            AddMachine(bench.data, 0.0, target, 5);
        Vote vote;
        EXPECT_FALSE(bench.access.DoVoting(extreme.decisions, vote).IsError());
        EXPECT_EQ(vote.category, extreme.expected);
        EXPECT_EQ(vote.confidence, 0.0);
        EXPECT_TRUE(vote.probabilities.empty());
    }
}

TEST(OneAgainstAll, PassesOverAMachineThatDoesNotExist) {
    Voting bench(3, true);
    for (const std::int32_t target : {0, 1, 2})
        AddMachine(bench.data, 0.0, target);
    bench.data.GetMachines()[1].reset();
    Vote vote;
    bench.access.VoteOneAgainstAll({0.5, 2.5, 2.5}, vote);
    EXPECT_EQ(vote.category, 2);
    vote = Marked();
    ExpectUntouched(bench.access.VoteOneAgainstAll({0.5, 2.5, 1.5}, vote), vote);
}

TEST(OneAgainstAll, OfALeadingNaNChoosesNothing) {
    Voting bench(3, true);
    for (const std::int32_t target : {0, 1, 2})
        AddMachine(bench.data, 0.0, target);
    Vote vote = Marked();
    ExpectUntouched(bench.access.VoteOneAgainstAll({kNaN, 2.5, 1.5}, vote), vote);
}

// One against one.

TEST(OneAgainstOne, CountsTheVotesOfEveryPair) {
    Voting bench(4, true);
    bench.AddPairs(4);
    // Pairs 01 02 03 12 13 23: b gets three votes, a two, d one.
    Vote vote;
    EXPECT_FALSE(bench.access.DoVoting({-0.5, 0.5, 1.5, 2.5, 0.125, -3.5}, vote).IsError());
    EXPECT_EQ(vote.category, 1);
    EXPECT_EQ(vote.confidence, 3.0 / 6.0);
    EXPECT_EQ(vote.probabilities, (Values{2.0 / 6.0, 3.0 / 6.0, 0.0, 1.0 / 6.0}));
}

TEST(OneAgainstOne, TiesGoToTheLowestCategory) {
    Voting bench(3, true);
    bench.AddPairs(3);
    Vote vote;
    // a beats b, c beats a, b beats c.
    EXPECT_FALSE(bench.access.DoVoting({0.5, -0.5, 0.5}, vote).IsError());
    EXPECT_EQ(vote.category, 0);
    EXPECT_EQ(vote.confidence, 1.0 / 3.0);
    EXPECT_EQ(vote.probabilities, Values(3, 1.0 / 3.0));
}

TEST(OneAgainstOne, AppliesTheSingleMachineRuleWithEachMachinesThreshold) {
    for (const bool isMaxWins : {false, true}) {
        Voting bench(3, isMaxWins);
        bench.AddPairs(3);
        bench.data.GetMachines()[0]->threshold = 0.5;
        bench.data.GetMachines()[1]->threshold = 1.5;
        bench.data.GetMachines()[2]->threshold = 2.5;
        Indices votes(3, 0);
        EXPECT_FALSE(bench.access.Tickets({0.5, 1.5, 2.5}, votes).IsError());
        EXPECT_EQ(votes, (Indices{0, 1, 2})) << "equality is for the alternate category";
        votes.assign(3, 0);
        bench.access.Tickets({0.25, 1.25, 2.25}, votes);
        EXPECT_EQ(votes, isMaxWins ? (Indices{0, 1, 2}) : (Indices{2, 1, 0}));
        votes.assign(3, 0);
        bench.access.Tickets({kNaN, kNaN, kNaN}, votes);
        EXPECT_EQ(votes, (Indices{0, 1, 2}));
    }
}

TEST(OneAgainstOne, VotesForMachinesOwnCategoriesWhateverTheirPlace) {
    Voting bench(3);
    AddMachine(bench.data, 0.0, 2, 1);
    AddMachine(bench.data, 0.0, 2, 0);
    AddMachine(bench.data, 0.0, 1, 2);
    Vote vote;
    bench.access.DoVoting({-0.5, -0.5, 0.5}, vote);
    EXPECT_EQ(vote.category, 2);
    EXPECT_EQ(vote.confidence, 1.0);
}

TEST(OneAgainstOne, NeedsExactlyOneMachineForEachPair) {
    for (const std::size_t machineCount : {2u, 4u, 6u}) {
        Voting bench(3);
        for (std::size_t k = 0; k < machineCount; ++k)
            AddMachine(bench.data, 0.0, 0, 1);
        Indices votes(3, 0);
        EXPECT_FALSE(bench.access.Tickets(Values(machineCount, -0.5), votes).IsError());
        EXPECT_EQ(votes, Indices(3, 0));
        Vote vote;
        EXPECT_FALSE(bench.access.DoVoting(Values(machineCount, -0.5), vote).IsError());
        EXPECT_EQ(vote.category, -1);
        EXPECT_EQ(vote.confidence, 0.0);
        EXPECT_EQ(vote.probabilities, Values(3, 0.0));
    }
}

TEST(OneAgainstOne, OfOneCategoryVotesForNothing) {
    Voting bench(1);
    Indices votes(1, 0);
    EXPECT_FALSE(bench.access.Tickets({}, votes).IsError());
    EXPECT_EQ(votes, Indices(1, 0));
    AddMachine(bench.data, 0.0, 0, 0);
    EXPECT_FALSE(bench.access.Tickets({0.5}, votes).IsError());
    EXPECT_EQ(votes, Indices(1, 0));
}

TEST(OneAgainstOne, OfTwoCategoriesAndOneMachineHasNoProbabilities) {
    Voting bench(2, true);
    AddMachine(bench.data, 0.0, 0, 1);
    Vote vote;
    EXPECT_FALSE(bench.access.VoteOneAgainstOne({0.5}, vote).IsError());
    EXPECT_EQ(vote.category, 0);
    EXPECT_EQ(vote.confidence, 0.0);
    EXPECT_TRUE(vote.probabilities.empty());
}

TEST(OneAgainstOne, OfTwoCategoriesAndTwoMachinesChoosesNothing) {
    Voting bench(2);
    AddMachine(bench.data, 0.0, 0, 1);
    AddMachine(bench.data, 0.0, 1, 0);
    Vote vote;
    EXPECT_FALSE(bench.access.DoVoting({0.5, 0.5}, vote).IsError());
    EXPECT_EQ(vote.category, -1);
    EXPECT_EQ(vote.probabilities, Values(2, 0.0));
}

TEST(OneAgainstOne, DropsAVoteOutsideTheCategories) {
    Voting bench(3, true);
    AddMachine(bench.data, 0.0, 3, 0);
    AddMachine(bench.data, 0.0, -1, 0);
    AddMachine(bench.data, 0.0, 2147483647, 2);
    Indices votes(3, 0);
    EXPECT_FALSE(bench.access.Tickets({0.5, 0.5, -0.5}, votes).IsError());
    EXPECT_EQ(votes, (Indices{0, 0, 1}));
}

TEST(OneAgainstOne, DropsTheVoteOfAnAbsentMachine) {
    Voting bench(3, true);
    bench.AddPairs(3);
    bench.data.GetMachines()[1].reset();
    Indices votes(3, 0);
    EXPECT_FALSE(bench.access.Tickets({0.5, 0.5, 0.5}, votes).IsError());
    EXPECT_EQ(votes, (Indices{1, 1, 0}));
}

TEST(VoteShares, AreOfTheMachinesAndOnlyAGreaterOneReplacesTheConfidence) {
    Voting bench(3);
    bench.AddPairs(3);
    Vote vote{17, 0.5, {}};
    EXPECT_FALSE(bench.access.VoteShares({1, 0, 1}, vote).IsError());
    EXPECT_EQ(vote.category, 17) << "no share is above the confidence that was passed in";
    EXPECT_EQ(vote.confidence, 0.5);
    EXPECT_EQ(vote.probabilities, (Values{1.0 / 3.0, 0.0, 1.0 / 3.0}));
    EXPECT_FALSE(bench.access.VoteShares({0, 2, 2}, vote).IsError());
    EXPECT_EQ(vote.category, 1);
    EXPECT_EQ(vote.confidence, 2.0 / 3.0);
    EXPECT_EQ(vote.probabilities.size(), 6u) << "shares are appended";
}

TEST(VoteShares, OfAModelWithoutCategoriesAreAnError) {
    Bench bench;
    bench.TakeData(NewClassification(3));
    Vote vote;
    EXPECT_EQ(bench.access.VoteShares({}, vote).GetErrorCode(), 90027);
    EXPECT_TRUE(vote.probabilities.empty());
}

TEST(VoteShares, OfAnEmptyVoteVectorAreNotAskedFor) {
    Bench bench;
    SVMModelData& data = bench.TakeData(NewClassification(3));
    for (int k = 0; k < 3; ++k)
        AddMachine(data, 0.0, 0, 1);
    Vote vote = Marked();
    ExpectUntouched(bench.access.MultiTicket({0.5, 0.5, 0.5}, vote), vote);
}

TEST(MultiTicket, FollowsTheModelsListWhereItIsLongerThanTheCount) {
    Voting bench(3, true);
    bench.AddPairs(3);
    bench.target->AddCategory("late");
    bench.model.SetTargetCategories();
    Vote vote;
    EXPECT_FALSE(bench.access.MultiTicket({0.5, 0.5, 0.5}, vote).IsError());
    EXPECT_EQ(vote.category, 0);
    EXPECT_EQ(vote.probabilities, (Values{2.0 / 3.0, 1.0 / 3.0, 0.0, 0.0}));
}

// Sigmoids.

TEST(Sigmoid, HasTwoFormsThatMeetAtZero) {
    EXPECT_EQ(Access::Sigmoid(0.0, 3.5, 0.0), 0.5);
    const double x = -1.75 * 0.375 + 2.5;
    EXPECT_EQ(Access::Sigmoid(0.375, -1.75, 2.5), std::exp(-x) / (std::exp(-x) + 1.0));
    EXPECT_EQ(Access::Sigmoid(0.375, -1.75, -2.5), 1.0 / (std::exp(-1.75 * 0.375 - 2.5) + 1.0));
    EXPECT_NEAR(Access::Sigmoid(1.0, 1.0, 0.0), 0.26894142136999512, 1e-16);
    EXPECT_NEAR(Access::Sigmoid(1.0, -1.0, 0.0), 0.73105857863000488, 2e-16);
}

TEST(Sigmoid, NeverOverflows) {
    EXPECT_EQ(Access::Sigmoid(1.0, 1e300, 0.0), 0.0);
    EXPECT_EQ(Access::Sigmoid(1.0, -1e300, 0.0), 1.0);
    EXPECT_EQ(Access::Sigmoid(kInfinity, 1.5, 0.0), 0.0);
    EXPECT_EQ(Access::Sigmoid(-kInfinity, 1.5, 0.0), 1.0);
    EXPECT_GT(Access::Sigmoid(720.0, 1.0, 0.0), 0.0);
    EXPECT_TRUE(std::isnan(Access::Sigmoid(kNaN, 1.5, 0.5)));
}

TEST(PairProbabilities, TakeTheMachinesInRowOrderOfThePairs) {
    Voting bench(4);
    const Values a = {-0.5, 0.75, -1.25, 1.5, -0.125, 0.375};
    const Values b = {0.25, -0.5, 0.125, 0.0, -1.5, 2.25};
    const Values f = {1.5, -0.75, 0.375, -2.5, 1.125, -0.0625};
    bench.AddSigmoidPairs(4, a, b);
    std::vector<Values> pairs;
    EXPECT_FALSE(bench.access.PairProbabilities(f, pairs).IsError());
    ASSERT_EQ(pairs.size(), 4u);
    std::size_t k = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        ASSERT_EQ(pairs[i].size(), 4u);
        EXPECT_EQ(pairs[i][i], 0.0);
        for (std::size_t j = i + 1; j < 4; ++j, ++k) {
            EXPECT_EQ(pairs[i][j], Access::Sigmoid(f[k], a[k], b[k]));
            EXPECT_EQ(pairs[j][i], 1.0 - pairs[i][j]);
        }
    }
}

TEST(PairProbabilities, AreClampedAwayFromZeroAndOne) {
    Voting bench(3);
    bench.AddSigmoidPairs(3, {1.0, 1.0, 1.0}, {0.0, 0.0, 0.0});
    std::vector<Values> pairs;
    bench.access.PairProbabilities({1e6, -1e6, 16.2}, pairs);
    EXPECT_EQ(pairs[0][1], 1e-7);
    EXPECT_EQ(pairs[1][0], 0.9999999);
    EXPECT_EQ(pairs[0][2], 0.9999999);
    EXPECT_EQ(pairs[2][0], 1.0 - 0.9999999);
    EXPECT_EQ(pairs[1][2], 1e-7) << "a value a little below 1e-7";
    bench.access.PairProbabilities({16.1, -16.1, -16.2}, pairs);
    EXPECT_EQ(pairs[0][1], Access::Sigmoid(16.1, 1.0, 0.0));
    EXPECT_EQ(pairs[0][2], Access::Sigmoid(-16.1, 1.0, 0.0));
    EXPECT_EQ(pairs[1][2], 0.9999999);
}

TEST(PairProbabilities, OfPairsWithoutMachineOrExtensionAreZeroOnBothSides) {
    Voting bench(4);
    bench.AddSigmoidPairs(4, Values(6, 0.5), Values(6, 0.25));
    bench.data.GetMachines()[1]->extension.reset();
    bench.data.GetMachines()[3].reset();
    bench.data.GetMachines().pop_back();
    std::vector<Values> pairs = {{7.5}};
    EXPECT_FALSE(bench.access.PairProbabilities(Values(5, 0.75), pairs).IsError());
    const double p = Access::Sigmoid(0.75, 0.5, 0.25);
    const double q = 1.0 - p;
    EXPECT_EQ(pairs, (std::vector<Values>{{0.0, p, 0.0, p}, {q, 0.0, 0.0, p}, {0.0, 0.0, 0.0, 0.0}, {q, q, 0.0, 0.0}}));
}

TEST(PairProbabilities, OfMoreMachinesThanPairsUseTheFirst) {
    Voting bench(2);
    bench.AddSigmoidPairs(2, {0.5}, {0.25});
    AddExtension(AddMachine(bench.data), 0, 1, 7.5, 7.5);
    std::vector<Values> pairs;
    bench.access.PairProbabilities({0.75, 3.5}, pairs);
    EXPECT_EQ(pairs[0][1], Access::Sigmoid(0.75, 0.5, 0.25));
}

// Parameters that a document does not give are the system-missing value, which is as steep as a sigmoid can be.
TEST(PairProbabilities, OfAbsentParametersAreExtreme) {
    Voting bench(2);
    bench.AddSigmoidPairs(2, {NumericValue::GetSysmisValue()}, {NumericValue::GetSysmisValue()});
    std::vector<Values> pairs;
    bench.access.PairProbabilities({0.75}, pairs);
    EXPECT_EQ(pairs[0][1], 0.9999999);
}

// Coupling.

TEST(Couple, LeavesFewerThanThreeCategoriesAsTheyAre) {
    Voting bench(2);
    Values probabilities = {0.125, 0.375};
    EXPECT_FALSE(bench.access.Couple({{0.0, 0.5}, {0.5, 0.0}}, probabilities).IsError());
    EXPECT_EQ(probabilities, (Values{0.125, 0.375}));
    probabilities = {0.5};
    EXPECT_FALSE(bench.access.Couple({{0.0}}, probabilities).IsError());
    EXPECT_EQ(probabilities, Values{0.5});
}

TEST(Couple, OfNoCategoriesIsAnError) {
    Voting bench(2);
    Values probabilities;
    const auto status = bench.access.Couple({}, probabilities);
    EXPECT_TRUE(status.IsError());
    EXPECT_EQ(status.GetErrorCode(), 90027);
}

TEST(Couple, OfThreeCategoriesIsTheSolversAnswer) {
    Voting bench(3);
    const std::vector<Values> pairs = {{0.0, 0.625, 0.25}, {0.375, 0.0, 0.875}, {0.75, 0.125, 0.0}};
    Values probabilities(3);
    Values expected;
    EXPECT_FALSE(bench.access.Couple(pairs, probabilities).IsError());
    PairwiseCoupling().Solve(pairs, expected);
    EXPECT_EQ(probabilities, expected);
}

TEST(Couple, EndsASolversErrorAs90027) {
    Voting bench(3);
    PairwiseCoupling interrupted;
    interrupted.SetInterruption([] { return true; });
    Values probabilities(3);
    const std::vector<Values> pairs = {{0.0, 0.625, 0.25}, {0.375, 0.0, 0.875}, {0.75, 0.125, 0.0}};
    EXPECT_EQ(bench.access.Couple(pairs, probabilities, interrupted).GetErrorCode(), 90027);
}

TEST(ZarnMultiClass, PredictsTheMostProbableCategory) {
    Voting bench(4);
    bench.AddSigmoidPairs(4, Values(6, -1.0), Values(6, 0.0));
    Vote vote;
    // c is preferred to all others.
    EXPECT_FALSE(bench.access.DoVoting({0.25, -1.5, 0.5, -2.25, 0.125, 1.75}, vote).IsError());
    ASSERT_EQ(vote.probabilities.size(), 4u);
    EXPECT_EQ(vote.category, 2);
    EXPECT_EQ(vote.confidence, vote.probabilities[2]);
    EXPECT_NEAR(vote.probabilities[0] + vote.probabilities[1] + vote.probabilities[2] + vote.probabilities[3], 1.0,
                1e-15);
    std::vector<Values> pairs;
    bench.access.PairProbabilities({0.25, -1.5, 0.5, -2.25, 0.125, 1.75}, pairs);
    Values expected;
    PairwiseCoupling().Solve(pairs, expected);
    EXPECT_EQ(vote.probabilities, expected);
}

TEST(ZarnMultiClass, OfEqualProbabilitiesPredictsTheFirst) {
    Voting bench(4);
    bench.AddSigmoidPairs(4, Values(6, -1.0), Values(6, 0.0));
    Vote vote;
    EXPECT_FALSE(bench.access.DoVoting(Values(6, 0.0), vote).IsError());
    EXPECT_EQ(vote.probabilities, Values(4, 0.25));
    EXPECT_EQ(vote.category, 0);
    EXPECT_EQ(vote.confidence, 0.25);
}

TEST(ZarnMultiClass, ChoosesNothingWhenTheModelsListHasAnotherLength) {
    Voting bench(3);
    bench.AddSigmoidPairs(3, Values(3, -1.0), Values(3, 0.0));
    bench.target->AddCategory("late");
    bench.model.SetTargetCategories();
    Vote vote;
    EXPECT_FALSE(bench.access.DoVoting({0.5, 0.5, 0.5}, vote).IsError());
    EXPECT_EQ(vote.category, -1);
    EXPECT_EQ(vote.confidence, 0.0);
    EXPECT_EQ(vote.probabilities.size(), 3u);
}

TEST(ZarnMultiClass, ChoosesNothingFromNaN) {
    Voting bench(3);
    bench.AddSigmoidPairs(3, Values(3, -1.0), Values(3, 0.0));
    Vote vote;
    bench.access.DoVoting({0.5, kNaN, 0.5}, vote);
    EXPECT_EQ(vote.category, -1);
    EXPECT_EQ(vote.confidence, 0.0);
}

TEST(ZarnMultiClass, ChoosesNothingWhenNoPairCoversACategory) {
    Voting bench(3);
    bench.AddSigmoidPairs(3, Values(3, -1.0), Values(3, 0.0));
    bench.data.GetMachines()[1]->extension.reset();
    bench.data.GetMachines()[2]->extension.reset();
    Vote vote;
    bench.access.DoVoting({0.5, 0.5, 0.5}, vote);
    EXPECT_EQ(vote.category, -1);
    bench.data.GetMachines().resize(1);
    EXPECT_TRUE(bench.access.DoVoting({0.5}, vote).IsError());
    EXPECT_EQ(vote.category, -1);
}

// Two categories with probabilities: the extension's categories, whatever the machine's own are.

struct Binary : Voting {
    Binary(std::int32_t response, std::int32_t nonresponse, double a, double b) : Voting(2) {
        AddExtension(AddMachine(data, 0.0, 0, 1), response, nonresponse, a, b);
        data.SetIsZarnModel(true);
    }
};

TEST(ZarnBinary, PredictsTheMoreProbableOfTheExtensionsCategories) {
    Binary bench(0, 1, -1.5, 0.25);
    Vote vote;
    EXPECT_FALSE(bench.access.DoVoting({0.75}, vote).IsError());
    const double p = Access::Sigmoid(0.75, -1.5, 0.25);
    ASSERT_GT(p, 0.5);
    EXPECT_EQ(vote.category, 0);
    EXPECT_EQ(vote.confidence, p);
    EXPECT_EQ(vote.probabilities, (Values{p, 1.0 - p}));
    vote = {};
    EXPECT_FALSE(bench.access.DoVoting({-0.75}, vote).IsError());
    const double q = Access::Sigmoid(-0.75, -1.5, 0.25);
    ASSERT_LT(q, 0.5);
    EXPECT_EQ(vote.category, 1);
    EXPECT_EQ(vote.confidence, 1.0 - q);
    EXPECT_EQ(vote.probabilities, (Values{q, 1.0 - q}));
}

// Deliberate: the probabilities keep their places when the extension names the categories the other way round.
TEST(ZarnBinary, FollowsTheExtensionForThePredictionAlone) {
    Binary bench(1, 0, -1.5, 0.25);
    Vote vote;
    bench.access.DoVoting({0.75}, vote);
    const double p = Access::Sigmoid(0.75, -1.5, 0.25);
    EXPECT_EQ(vote.category, 1);
    EXPECT_EQ(vote.confidence, p);
    EXPECT_EQ(vote.probabilities, (Values{p, 1.0 - p}));
}

TEST(ZarnBinary, OfEvenProbabilitiesPredictsTheFirstOfTheExtension) {
    Binary bench(1, 0, -1.5, 0.0);
    Vote vote;
    bench.access.DoVoting({0.0}, vote);
    EXPECT_EQ(vote.category, 1);
    EXPECT_EQ(vote.confidence, 0.5);
    EXPECT_EQ(vote.probabilities, (Values{0.5, 0.5}));
}

TEST(ZarnBinary, WithoutASecondCategoryIsAnError) {
    Binary bench(1, -1, -1.5, 0.0);
    Vote vote;
    EXPECT_EQ(bench.access.DoVoting({0.75}, vote).GetErrorCode(), 90027);
    EXPECT_EQ(vote.category, 1) << "set before the probabilities turn out to be missing";
    EXPECT_TRUE(vote.probabilities.empty());
}

TEST(ZarnBinary, WithoutExtensionIsAnError) {
    Binary bench(0, 1, -1.5, 0.0);
    bench.data.GetMachines()[0]->extension.reset();
    Vote vote;
    EXPECT_EQ(bench.access.DoVoting({0.75}, vote).GetErrorCode(), 90027);
    bench.data.GetMachines()[0].reset();
    EXPECT_EQ(bench.access.DoVoting({0.75}, vote).GetErrorCode(), 90027);
    EXPECT_EQ(vote.category, -1);
}

TEST(ZarnBinary, NeedsExactlyOneDecision) {
    Binary bench(0, 1, -1.5, 0.0);
    Vote vote;
    EXPECT_EQ(bench.access.ZarnBinaryTicket({0.75, 0.5}, vote).GetErrorCode(), 90027);
    EXPECT_EQ(bench.access.ZarnBinaryTicket({}, vote).GetErrorCode(), 90027);
    EXPECT_EQ(vote.category, -1);
}

TEST(ZarnBinary, OfANaNDecisionGoesToTheSecondCategory) {
    Binary bench(0, 1, -1.5, 0.0);
    Vote vote;
    EXPECT_FALSE(bench.access.DoVoting({kNaN}, vote).IsError());
    EXPECT_EQ(vote.category, 1);
    EXPECT_TRUE(std::isnan(vote.confidence));
}

}  // namespace
}  // namespace KwBrevix_930
