// The memory that cases are scored in. Internal.
#pragma once

#include <memory>
#include <vector>

#include "host/ThreadKept.h"
#include "svm/SVMModel.h"
#include "svm/plan/PlanWorkspace.h"

namespace KwBrevix_930 {

/// Every vector keeps its memory from case to case, so that scoring allocates nothing once it has met a case.
class SVMModel::Workspace {
public:
    // One case: its input vector, its decision values and its vote.
    Indices indices;
    Values values;
    Indices categories;
    Values decisions;
    Vote vote;

    // Several cases: which of the call they are, the input values column by column and where those of each column
    // begin, the decision values case by case.
    std::vector<std::size_t> places;
    Values columns;
    std::vector<const double*> sources;
    Values batchDecisions;

    plan::PlanWorkspace plan;

    /// Returns: roughly how many numbers the vectors have room for.
    std::size_t GetRoom() const {
        return indices.capacity() + values.capacity() + categories.capacity() + decisions.capacity() + vote.GetRoom() +
               places.capacity() + columns.capacity() + sources.capacity() + batchDecisions.capacity() + plan.GetRoom();
    }
};

/// Lends the calling thread its workspace, which is kept as long as it is not too large. Where it is lent already,
/// because reading a record leads to another case, or has ended with its thread, because a destructor of what is older
/// still scores, a workspace is made for the time.
template <class Workspace>
class Lent {
public:
    Lent() : fKeep(FindFree()), fMade(fKeep ? nullptr : std::make_unique<Workspace>()) {
        if (fKeep)
            fKeep->isLent = true;
    }
    ~Lent() {
        if (!fKeep)
            return;
        fKeep->isLent = false;
        if (fKeep->workspace.GetRoom() > kMostKept)
            fKeep->workspace = Workspace();
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

    Workspace& operator*() { return fMade ? *fMade : fKeep->workspace; }

private:
    // In numbers: eight megabytes.
    static constexpr std::size_t kMostKept = 1 << 20;

    struct Keep {
        Workspace workspace;
        bool isLent = false;
    };

    static Keep* FindFree() {
        Keep* keep = ThreadKept<Keep>::Get();
        return keep && !keep->isLent ? keep : nullptr;
    }

    Keep* fKeep;
    std::unique_ptr<Workspace> fMade;
};

}  // namespace KwBrevix_930
