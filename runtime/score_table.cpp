// Scores a table: one thread at a time reads, any number score, one at a time writes, in the order of reading.
#include "runtime/score_table.h"

#include <algorithm>
#include <memory>
#include <span>

#include <tbb/concurrent_queue.h>
#include <tbb/enumerable_thread_specific.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/parallel_pipeline.h>
#include <tbb/task_arena.h>

#include "runtime/OutputFile.h"
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

// What one thread needs for scoring.
struct Scorer {
    std::vector<Record> records;
    std::vector<Outcome> outcomes;
    NumberTexts texts;
};

// Rows that are scored in one call.
constexpr std::size_t kMostTogether = 32;

// A batch on its way through the pipeline.
struct Job {
    RowBatch rows;
    std::string text;
    std::map<std::int32_t, std::uint64_t> rowCountByStatus;
};

class TableScorer {
public:
    TableScorer(const ScoringModel& model, const RowWriter& writer, const std::vector<std::string>& missingTexts)
        : fModel(model), fWriter(writer), fMissingTexts(missingTexts) {}

    void score(Job& job) {
        Scorer& scorer = fScorers.local();
        while (scorer.records.size() < kMostTogether)
            scorer.records.push_back(fModel.makeRecord());
        scorer.outcomes.resize(kMostTogether);
        for (std::size_t first = 0; first < job.rows.getRowCount(); first += kMostTogether) {
            const std::size_t count = std::min(kMostTogether, job.rows.getRowCount() - first);
            for (std::size_t i = 0; i < count; ++i)
                fill(scorer.records[i], job.rows, first + i);
            fModel.score(std::span(scorer.records).first(count), scorer.outcomes);
            for (std::size_t i = 0; i < count; ++i) {
                ++job.rowCountByStatus[scorer.outcomes[i].status];
                fWriter.append(job.text, job.rows, first + i, scorer.outcomes[i], scorer.texts);
            }
        }
    }

private:
    void fill(Record& record, const RowBatch& rows, std::size_t row) const {
        for (std::size_t i = 0; i < fModel.getInputs().size(); ++i) {
            const std::string_view text = rows.getText(row, i);
            const bool isMissing = rows.getKind(row, i) == Row::kMissing ||
                                   std::find(fMissingTexts.begin(), fMissingTexts.end(), text) != fMissingTexts.end();
            if (isMissing)
                record.setMissing(i);
            else
                record.setText(i, text);
        }
    }

    const ScoringModel& fModel;
    const RowWriter& fWriter;
    const std::vector<std::string>& fMissingTexts;
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
        job->text.clear();
        job->rowCountByStatus.clear();
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
    for (const auto& [status, count] : job.rowCountByStatus)
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
