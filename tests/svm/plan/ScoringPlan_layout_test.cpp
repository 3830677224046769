// Which layout a plan takes for which model, seen by the loops that it calls; that nothing is computed twice.
#include <gtest/gtest.h>

#include "svm/elementary/elementary_kernels.h"
#include "svm/elementary/exact_exp.h"
#include "svm/plan/ScoringPlan.h"
#include "tests/svm/plan/random_models.h"

namespace KwBrevix_930::plan {
namespace {

using random_models::Generator;
using random_models::Numbers;
using random_models::Shape;
using random_models::Values;

// Calls of the loops for one case.
struct Calls {
    int distances = 0;
    int distancesOfFloats = 0;
    int products = 0;
    int productsOfFloats = 0;
    int lists = 0;
    int bits = 0;
    int bitsOfTiles = 0;

    bool operator==(const Calls&) const = default;
};

Calls g_calls;

template <TermLoops Loops::*kTerms, int Calls::*kCount>
void CountDense(std::size_t columns, std::size_t rows, const double* blocks, const double* x, double* sums) {
    ++(g_calls.*kCount);
    (kBaselineLoops.*kTerms).oneCase(columns, rows, blocks, x, sums);
}

template <TermLoops Loops::*kTerms, int Calls::*kCount>
void CountFloats(std::size_t columns, std::size_t rows, const float* blocks, const double* x, double* sums) {
    ++(g_calls.*kCount);
    (kBaselineLoops.*kTerms).oneCaseOfFloats(columns, rows, blocks, x, sums);
}

void CountList(std::size_t length, const std::int32_t* indices, const double* factors, const double* source,
               double* sums) {
    ++g_calls.lists;
    kBaselineLoops.lists.oneCase(length, indices, factors, source, sums);
}

template <CountLoops BitLoops::*kCount>
void CountCase(std::size_t words, const std::uint64_t* block, const std::uint64_t* x, std::uint64_t* counts) {
    ++g_calls.bits;
    (kBaselineLoops.bits.*kCount).oneCase(words, block, x, counts);
}

template <CountLoops BitLoops::*kCount>
void CountTile(std::size_t words, const std::uint64_t* block, const std::uint64_t* tile, std::uint64_t* counts) {
    ++g_calls.bitsOfTiles;
    (kBaselineLoops.bits.*kCount).oneTile(words, block, tile, counts);
}

Loops CountedLoops() {
    Loops loops = kBaselineLoops;
    loops.distances = {CountDense<&Loops::distances, &Calls::distances>,
                       CountFloats<&Loops::distances, &Calls::distancesOfFloats>, kBaselineLoops.distances.addToTile};
    loops.products = {CountDense<&Loops::products, &Calls::products>,
                      CountFloats<&Loops::products, &Calls::productsOfFloats>, kBaselineLoops.products.addToTile};
    loops.lists.oneCase = CountList;
    loops.bits.differing = {CountCase<&BitLoops::differing>, CountTile<&BitLoops::differing>};
    loops.bits.common = {CountCase<&BitLoops::common>, CountTile<&BitLoops::common>};
    return loops;
}

// By which loops one case of a model is scored. 20 columns, 32 vectors, 5 machines.
Calls CallsFor(std::int32_t kernelType, double density, Numbers numbers, std::size_t cacheShare, Numbers ofCase) {
    Generator random(8871);
    const auto data = random.Model({kernelType, 20, 32, 5, density, numbers});
    const auto kernel = random_models::MakeKernel(*data);
    const Loops loops = CountedLoops();
    const auto plan = ScoringPlan::Make(*data, *kernel, 20, {.loops = &loops, .cacheShare = cacheShare});
    if (!plan)
        return {};
    g_calls = {};
    const Values x = random.Case(20, ofCase);
    Values decisions(5);
    plan->Decide(x.data(), decisions.data());
    return g_calls;
}

constexpr std::size_t kNoCache = 0;
constexpr std::size_t kMuchCache = ~std::size_t{0};
constexpr std::int32_t kProductKernels[] = {SVMModelData::kLinear, SVMModelData::kPolynomial, SVMModelData::kSigmoid};
// The sums of five machines take two groups of lists.
constexpr int kListsOfMachines = 2;
// The sums of 32 vectors take eight, or two blocks.
constexpr int kListsOfVectors = 8;
constexpr int kBlocks = 2;

TEST(ScoringPlanLayout, OfDotProductsIsInListsWhereFewColumnsAreThere) {
    for (const std::int32_t kernel : kProductKernels) {
        EXPECT_EQ(CallsFor(kernel, 0.15, Numbers::kPlain, kMuchCache, Numbers::kPlain),
                  (Calls{.lists = kListsOfVectors + kListsOfMachines}));
        EXPECT_EQ(CallsFor(kernel, 0.6, Numbers::kPlain, kMuchCache, Numbers::kPlain),
                  (Calls{.products = 1, .lists = kListsOfMachines}));
    }
}

TEST(ScoringPlanLayout, OfDistancesIsDenseHoweverFewColumnsAreThere) {
    EXPECT_EQ(CallsFor(SVMModelData::kRadialBasis, 0.05, Numbers::kPlain, kMuchCache, Numbers::kPlain),
              (Calls{.distances = 1, .lists = kListsOfMachines}));
}

TEST(ScoringPlanLayout, IsInSinglePrecisionWhereThatIsExactAndTheCacheIsTooSmall) {
    const auto radial = SVMModelData::kRadialBasis;
    EXPECT_EQ(CallsFor(radial, 0.8, Numbers::kFloats, kNoCache, Numbers::kPlain),
              (Calls{.distancesOfFloats = 1, .lists = kListsOfMachines}));
    EXPECT_EQ(CallsFor(radial, 0.8, Numbers::kFloats, kMuchCache, Numbers::kPlain),
              (Calls{.distances = 1, .lists = kListsOfMachines}));
    EXPECT_EQ(CallsFor(radial, 0.8, Numbers::kPlain, kNoCache, Numbers::kPlain),
              (Calls{.distances = 1, .lists = kListsOfMachines}));
    for (const std::int32_t kernel : kProductKernels)
        EXPECT_EQ(CallsFor(kernel, 0.8, Numbers::kFloats, kNoCache, Numbers::kPlain),
                  (Calls{.productsOfFloats = 1, .lists = kListsOfMachines}));
}

TEST(ScoringPlanLayout, OfZerosAndOnesIsInBitsForCasesOfZerosAndOnes) {
    for (const std::int32_t kernel : {0, 1, 2, 3}) {
        EXPECT_EQ(CallsFor(kernel, 0.8, Numbers::kBits, kMuchCache, Numbers::kBits),
                  (Calls{.lists = kListsOfMachines, .bits = kBlocks}));
        const bool isDistance = kernel == SVMModelData::kRadialBasis;
        EXPECT_EQ(CallsFor(kernel, 0.8, Numbers::kBits, kMuchCache, Numbers::kPlain),
                  (Calls{.distances = isDistance, .products = !isDistance, .lists = kListsOfMachines}));
    }
}

// By which loops three tiles and a half are scored, of which two are of bits alone.
TEST(ScoringPlanLayout, OfZerosAndOnesIsInBitsForTheTilesOfABatchThatAreOfZerosAndOnesAlone) {
    constexpr std::size_t kCases = 3 * kTile + kTile / 2;
    Generator random(8874);
    const auto data = random.Model({SVMModelData::kRadialBasis, 20, 32, 5, 0.8, Numbers::kBits});
    const auto kernel = random_models::MakeKernel(*data);
    Loops loops = CountedLoops();
    loops.distances.addToTile = [](std::size_t columns, std::size_t rows, const double* block, const double* tile,
                                   double* sums, bool isFirst) {
        ++g_calls.distances;
        kBaselineLoops.distances.addToTile(columns, rows, block, tile, sums, isFirst);
    };
    const auto plan = ScoringPlan::Make(*data, *kernel, 20, {.loops = &loops});
    ASSERT_TRUE(plan);
    Values columns = random.Case(20 * kCases, Numbers::kBits);
    columns[19 * kCases + kTile + 3] = 0.999755859375;
    columns[kTile * 3 + 3] = std::numeric_limits<double>::quiet_NaN();
    Values decisions(5 * kCases);
    g_calls = {};
    plan->DecideBatch(kCases, columns.data(), kCases, decisions.data());
    EXPECT_EQ(g_calls, (Calls{.distances = 2 * kBlocks, .bitsOfTiles = 2 * kBlocks}));
}

std::size_t g_exponentials = 0;

void ExpCountingNumbers(double factor, const double* x, double* y, std::size_t n, KwSVM_700::OpenPlaces& open) {
    g_exponentials += n;
    KwSVM_700::kBaselineElementaryKernels.exp(factor, x, y, n, open);
}

TEST(ScoringPlanLayout, HasEachVectorOnceHoweverManyMachinesShareIt) {
    const KwSVM_700::ElementaryKernels counted = {"counted", ExpCountingNumbers,
                                                  KwSVM_700::kBaselineElementaryKernels.pow};
    const KwSVM_700::ExactExp exp(counted);
    // So many as to fill blocks.
    constexpr std::size_t kVectors = 48;
    static_assert(kVectors % kBlock == 0);
    const auto data = Generator(8872).Model({SVMModelData::kRadialBasis, 6, kVectors, 0});
    for (int m = 0; m < 10; ++m) {
        auto machine = std::make_unique<ST_SUPPORTVECTORMACHINE>();
        for (const auto& [id, vector] : data->GetVectorInstances()) {
            machine->supportVectors.push_back(vector.get());
            machine->coefficients.push_back(0.25 * m - 1.0);
        }
        data->GetMachines().push_back(std::move(machine));
    }
    const auto kernel = random_models::MakeKernel(*data);
    const auto plan = ScoringPlan::Make(*data, *kernel, 6, {.elementary = {.exp = &exp}});
    ASSERT_TRUE(plan);
    const Values x = Generator(8873).Case(6, Numbers::kPlain);
    Values decisions(10);
    g_exponentials = 0;
    plan->Decide(x.data(), decisions.data());
    EXPECT_EQ(g_exponentials, kVectors);
    g_exponentials = 0;
    plan->DecideBatch(1, x.data(), 1, decisions.data());
    EXPECT_LE(g_exponentials, kTile * kVectors);
}

}  // namespace
}  // namespace KwBrevix_930::plan
