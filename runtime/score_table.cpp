// Scores a table: one thread at a time reads, any number score, one at a time writes, in the order of reading.
#include "runtime/score_table.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>

#include <tbb/concurrent_queue.h>
#include <tbb/enumerable_thread_specific.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/parallel_pipeline.h>
#include <tbb/task_arena.h>

#include "host/DictVar.h"
#include "runtime/OutputFile.h"
#include "runtime/PlainCases.h"
#include "runtime/ResultTexts.h"
#include "runtime/RowWriter.h"
#include "runtime/ScoringModel.h"

namespace brevix {

namespace {

// Which columns of the table are read: the inputs, then those that are only kept.
struct ColumnPlan {
    std::vector<std::string> wanted;
    std::vector<bool> isOptional;
    std::vector<KeptColumn> kept;
};

ColumnPlan planColumns(const ScoringModel& model, const std::vector<std::string>& keptNames) {
    ColumnPlan plan;
    for (const InputField& input : model.getInputs()) {
        plan.wanted.push_back(input.name);
        plan.isOptional.push_back(input.isOptional);
    }
    for (const std::string& name : keptNames) {
        const auto found = std::find(plan.wanted.begin(), plan.wanted.end(), name);
        plan.kept.push_back({name, static_cast<std::size_t>(found - plan.wanted.begin())});
        if (found == plan.wanted.end())
            plan.wanted.push_back(name);
        plan.isOptional.resize(plan.wanted.size());
        plan.isOptional[plan.kept.back().place] = false;
    }
    return plan;
}

// Rows that are scored in one call.
constexpr std::size_t kMostTogether = PlainCases::kMost;

// What one thread needs for scoring.
struct Scorer {
    // Null where the model takes records only.
    std::unique_ptr<PlainCases> plain;
    std::size_t plainCount = 0;
    // Made when the first row needs one.
    std::vector<Record> records;
    std::size_t recordCount = 0;
    std::vector<Outcome> outcomes;
    // Which of the plain cases, or behind kMostTogether which of the records, each row is.
    std::array<std::size_t, kMostTogether> places{};
    Outcome plainOutcome;
    NumberTexts numberTexts;
    ResultTexts resultTexts;
};

// A batch on its way through the pipeline.
struct Job {
    RowBatch rows;
    std::string text;
    // Of statuses other than 0.
    std::map<std::int32_t, std::uint64_t> failedCountByStatus;
    std::uint64_t failedCount = 0;

    void count(std::int32_t status) {
        if (status == 0)
            return;
        ++failedCountByStatus[status];
        ++failedCount;
    }

    void clear() {
        text.clear();
        failedCountByStatus.clear();
        failedCount = 0;
    }
};

class TableScorer {
public:
    TableScorer(const ScoringModel& model, const RowWriter& writer, const std::vector<std::string>& missingTexts)
        : fModel(model), fWriter(writer), fMissingTexts(missingTexts), fHasMissingTexts(!missingTexts.empty()) {}

    void score(Job& job) {
        Scorer& scorer = fScorers.local();
        if (scorer.outcomes.empty()) {
            scorer.outcomes.resize(kMostTogether);
            scorer.plain = fModel.makePlainCases();
        }
        for (std::size_t first = 0; first < job.rows.getRowCount(); first += kMostTogether) {
            const std::size_t count = std::min(kMostTogether, job.rows.getRowCount() - first);
            take(scorer, job.rows, first, count);
            if (scorer.plainCount > 0)
                fModel.score(*scorer.plain, scorer.plainCount);
            fModel.score(std::span(scorer.records).first(scorer.recordCount), scorer.outcomes);
            for (std::size_t i = 0; i < count; ++i) {
                if (fWriter.keepsCells())
                    fWriter.appendKept(job.text, job.rows, first + i);
                if (scorer.places[i] < kMostTogether)
                    writePlain(job, scorer, scorer.places[i]);
                else
                    write(job, scorer.outcomes[scorer.places[i] - kMostTogether], scorer);
            }
        }
    }

private:
    // Each row becomes a plain case where it is one, otherwise a record.
    void take(Scorer& scorer, const RowBatch& rows, std::size_t first, std::size_t count) const {
        scorer.plainCount = 0;
        scorer.recordCount = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (scorer.plain && takePlain(*scorer.plain, scorer.plainCount, rows, first + i)) {
                scorer.places[i] = scorer.plainCount++;
                continue;
            }
            if (scorer.recordCount == scorer.records.size())
                scorer.records.push_back(fModel.makeRecord());
            scorer.places[i] = kMostTogether + scorer.recordCount;
            fill(scorer.records[scorer.recordCount++], rows, first + i);
        }
    }

    bool takePlain(PlainCases& cases, std::size_t place, const RowBatch& rows, std::size_t row) const {
        double* number = cases.getNumbers(0) + place;
        const Row::Cell* cell = rows.getRow(row);
        for (const KwBrevix_930::DictVar* variable : fModel.getInputVariables()) {
            if (isMissing(rows, *cell) || !variable->ReadPlain(rows.getText(*cell), *number))
                return false;
            number += PlainCases::kMost;
            ++cell;
        }
        return true;
    }

    // Equal results have equal texts.
    void writePlain(Job& job, Scorer& scorer, std::size_t place) const {
        const bool hasFailed = scorer.plain->hasFailed(place);
        const std::string* text = hasFailed ? nullptr : scorer.resultTexts.find(scorer.plain->getResult(place));
        if (text) {
            job.text += *text;
            return;
        }
        fModel.readOutcome(*scorer.plain, place, scorer.plainOutcome);
        const std::size_t start = job.text.size();
        write(job, scorer.plainOutcome, scorer);
        if (!hasFailed)
            scorer.resultTexts.keep(scorer.plain->getResult(place), std::string_view(job.text).substr(start));
    }

    void write(Job& job, const Outcome& outcome, Scorer& scorer) const {
        job.count(outcome.status);
        fWriter.appendResults(job.text, outcome, scorer.numberTexts);
    }

    bool isMissing(const RowBatch& rows, const Row::Cell& cell) const {
        return cell.kind == Row::kMissing || (fHasMissingTexts && isMissingText(rows.getText(cell)));
    }

    bool isMissingText(std::string_view text) const {
        return std::find(fMissingTexts.begin(), fMissingTexts.end(), text) != fMissingTexts.end();
    }

    void fill(Record& record, const RowBatch& rows, std::size_t row) const {
        const Row::Cell* cells = rows.getRow(row);
        for (std::size_t i = 0; i < fModel.getInputs().size(); ++i) {
            if (isMissing(rows, cells[i]))
                record.setMissing(i);
            else
                record.setText(i, rows.getText(cells[i]));
        }
    }

    const ScoringModel& fModel;
    const RowWriter& fWriter;
    const std::vector<std::string>& fMissingTexts;
    const bool fHasMissingTexts;
    tbb::enumerable_thread_specific<Scorer> fScorers;
};

// The jobs of one table. Plain pointers go through the pipeline: it loses what it holds when a stage throws.
class JobPool {
public:
    // Returns: a job that is free, or a new one. For one thread at a time.
    Job* take() {
        Job* job = nullptr;
        if (!fFree.try_pop(job))
            job = fJobs.emplace_back(std::make_unique<Job>()).get();
        return job;
    }

    // Jobs that are written serve again: their memory stays what the largest batches took.
    void giveBack(Job* job) {
        job->clear();
        fFree.push(job);
    }

private:
    std::vector<std::unique_ptr<Job>> fJobs;
    tbb::concurrent_queue<Job*> fFree;
};

// Runs the jobs that next gives, until it gives none.
template <class Next, class Score, class Write>
void runPipeline(int threadCount, const Next& next, const Score& score, const Write& write) {
    const tbb::global_control control(tbb::global_control::max_allowed_parallelism,
                                      static_cast<std::size_t>(threadCount));
    tbb::task_arena arena(threadCount);
    const auto read = [&next](tbb::flow_control& flow) {
        Job* job = next();
        if (!job)
            flow.stop();
        return job;
    };
    const auto scoreOne = [&score](Job* job) {
        score(*job);
        return job;
    };
    arena.execute([&] {
        tbb::parallel_pipeline(static_cast<std::size_t>(threadCount) * 2,
                               tbb::make_filter<void, Job*>(tbb::filter_mode::serial_in_order, read) &
                                   tbb::make_filter<Job*, Job*>(tbb::filter_mode::parallel, scoreOne) &
                                   tbb::make_filter<Job*, void>(tbb::filter_mode::serial_in_order, write));
    });
}

void add(TableTally& tally, const Job& job) {
    tally.rowCount += job.rows.getRowCount();
    if (job.rows.getRowCount() > job.failedCount)
        tally.rowCountByStatus[0] += job.rows.getRowCount() - job.failedCount;
    for (const auto& [status, count] : job.failedCountByStatus)
        tally.rowCountByStatus[status] += count;
}

}  // namespace

TableTally scoreTable(const ScoringModel& model, ByteSource& source, const std::function<OutputFile&()>& openOutput,
                      const TableOptions& options, const TableEvents& events) {
    const ColumnPlan plan = planColumns(model, options.keptColumns);
    const RowWriter writer(options.outputKind, model, plan.kept);
    const auto reader = openTable(options.inputKind, source, plan.wanted, plan.isOptional);
    TableScorer scorer(model, writer, options.missingTexts);
    // The first rows are read before anything is written: a table that is wrong from its start gives no output.
    JobPool pool;
    Job* first = pool.take();
    const bool hasRows = reader->read(first->rows);
    OutputFile& output = openOutput();
    if (events.onStart)
        events.onStart();
    output.write(writer.makeHeader());
    TableTally tally;
    if (!hasRows)
        return tally;
    const auto next = [&]() -> Job* {
        if (first)
            return std::exchange(first, nullptr);
        Job* job = pool.take();
        return reader->read(job->rows) ? job : nullptr;
    };
    const auto write = [&](Job* job) {
        output.write(job->text);
        add(tally, *job);
        if (events.onRows)
            events.onRows(tally);
        pool.giveBack(job);
    };
    const int threadCount = options.threadCount > 0 ? options.threadCount : tbb::info::default_concurrency();
    runPipeline(
        threadCount, next, [&scorer](Job& job) { scorer.score(job); }, write);
    return tally;
}

}  // namespace brevix
