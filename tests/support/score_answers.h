// What scoring leaves behind: results as text in which numbers tell their bits, statuses and trace lines.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/IBatchModel.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreClsResult.h"
#include "host/ScoreModel.h"
#include "host/ScoreResult.h"
#include "host/ScoreValue.h"
#include "host/ScoringLog.h"
#include "svm/SVMRegResult.h"

namespace KwBrevix_930::test_support {

/// Returns: the bits of a double; every NaN counts as the same.
inline std::uint64_t BitsOf(double value) {
    return std::isnan(value) ? 1 : std::bit_cast<std::uint64_t>(value);
}

/// Returns: everything that a result of either kind says. It may be of a library that was loaded at run time.
inline std::string Describe(const ScoreResult* result) {
    if (!result)
        return "none";
    std::ostringstream text;
    const ScoreValue* prediction = result->GetPrediction();
    text << result->GetScoreResultType() << ' ' << (prediction ? prediction->GetString() : "null");
    if (prediction && prediction->GetType() == ScoreValue::kNumeric)
        text << ' ' << BitsOf(prediction->GetDouble());
    text << ' ' << BitsOf(result->GetConfidence());
    if (result->GetScoreResultType() == ScoreResult::kSVMClassification) {
        for (const auto& [value, percent] : static_cast<const ScoreClsResult&>(*result).GetAllValuePercent())
            text << ' ' << value->GetString() << '=' << BitsOf(percent);
    } else {
        const auto& number = static_cast<const SVMRegResult&>(*result);
        double lower = 0.0;
        double upper = 0.0;
        number.GetCI(lower, upper);
        text << ' ' << BitsOf(static_cast<const ScoreRegResult&>(number).GetStdDev()) << ' ' << BitsOf(lower) << ' '
             << BitsOf(upper);
    }
    return text.str();
}

using Records = std::vector<const ScoreCaseRecord*>;
using Results = std::vector<std::unique_ptr<ScoreResult>>;

/// What a run of cases left behind.
struct Answers {
    std::vector<std::string> results;
    std::vector<std::int32_t> statuses;
    std::string trace;

    bool operator==(const Answers&) const = default;
};

/// Collects the lines of the trace as long as it lives.
class TraceText {
public:
    TraceText() {
        ScoringLog::GetInstance().SetStream(&fText);
        ScoringLog::GetInstance().SetTracing(true);
    }
    ~TraceText() {
        ScoringLog::GetInstance().SetTracing(false);
        ScoringLog::GetInstance().SetStream(nullptr);
    }
    TraceText(const TraceText&) = delete;
    TraceText& operator=(const TraceText&) = delete;

    std::string Take() const { return fText.str(); }

private:
    std::ostringstream fText;
};

inline Answers Summarise(const Results& results, const std::vector<KwScore::KwStatus>& statuses, std::string trace) {
    Answers answers;
    for (std::size_t i = 0; i < results.size(); ++i) {
        answers.results.push_back(Describe(results[i].get()));
        answers.statuses.push_back(statuses[i].GetErrorCode());
    }
    answers.trace = std::move(trace);
    return answers;
}

/// Scores case by case. results: as many; handed in, and what is created is put there.
inline Answers ScoreOneByOne(ScoreModel& model, const Records& records, Results& results) {
    const TraceText trace;
    std::vector<KwScore::KwStatus> statuses(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        ScoreResult* result = results[i].get();
        statuses[i] = model.GetScore(records[i], result, false);
        if (!results[i])
            results[i].reset(result);
    }
    return Summarise(results, statuses, trace.Take());
}

/// The same in one call.
inline Answers ScoreTogether(IBatchModel& model, const Records& records, Results& results) {
    const TraceText trace;
    std::vector<ScoreResult*> pointers;
    for (const auto& result : results)
        pointers.push_back(result.get());
    std::vector<KwScore::KwStatus> statuses(records.size());
    model.ScoreCases(records.size(), records.data(), pointers.data(), statuses.data(), false);
    for (std::size_t i = 0; i < results.size(); ++i) {
        if (!results[i])
            results[i].reset(pointers[i]);
    }
    return Summarise(results, statuses, trace.Take());
}

}  // namespace KwBrevix_930::test_support
