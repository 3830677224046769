// What a model may offer beside its slots: many cases in one call.
#pragma once

#include <cstddef>

#include "host/Export.h"
#include "host/KwStatus.h"

namespace KwBrevix_930 {

class ScoreCaseRecord;
class ScoreResult;

/// Abstract, optional: a caller finds it by dynamic_cast from the model, and uses GetScore where it is not there.
class BREVIX_HOST_API IBatchModel {
public:
    IBatchModel() {}
    IBatchModel(const IBatchModel&) = delete;
    IBatchModel& operator=(const IBatchModel&) = delete;
    virtual ~IBatchModel();

    /// Scores count cases as ScoreModel::GetScore does one after the other with the same flag: the same results and
    /// trace lines, in the same order, a case that fails being no matter to the others. records: count pointers, null
    /// allowed. results: count pointers, each null or a result of its own; a null one is created and handed to the
    /// caller, who owns it. statuses: count, overwritten.
    /// Note: starts no thread; which threads may call it when is as for GetScore. An exception from a record passes
    /// through: the cases before it are scored, its own and those behind it have an error status, and results that were
    /// created by then are handed over.
    virtual void ScoreCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                            KwScore::KwStatus* statuses, bool flag) = 0;

    /// Scores count cases whose values are plain, and gives plain numbers: no record and no result object.
    /// columns: columnCount pointers, at the index that ScoreDictVar::GetIndex gives the values of that variable, one
    /// for each case; null for a variable that is not given. Of each variable that the model reads, every case has a
    /// value that is neither missing nor invalid, as its ScoreDictVar says; a text is given by the index of its
    /// category. numbers: overwritten, those of each case side by side. Of a classification: the index of the predicted
    /// category among those of the target variable, the confidence, and the probability of each category; where the
    /// result has none of them, the confidence is -1 and the probabilities are 0. Of a regression: the predicted
    /// number, the standard deviation, and both bounds of the interval; where the result has none, they are -1 and the
    /// system-missing value. The numbers of a case that fails mean nothing. statuses: as for ScoreCases.
    /// Returns: false, and nothing is done, where the model has no way of its own for them: before its first case by
    /// index, where it reads what is not given, and for some models always. A count of 0 asks for no more than that.
    virtual bool ScoreNumbers(std::size_t count, const double* const* columns, std::size_t columnCount, double* numbers,
                              KwScore::KwStatus* statuses) = 0;
};

}  // namespace KwBrevix_930
