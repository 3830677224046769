// Scores a table that is a text.
#pragma once

#include <optional>
#include <string>

#include "runtime/OutputFile.h"
#include "runtime/score_table.h"
#include "tests/runtime/TextSource.h"
#include "tests/support/TemporaryFolder.h"

namespace test_support {

struct ScoredText {
    std::string text;
    brevix::TableTally tally;
};

/// The result goes through a file.
inline ScoredText scoreText(const brevix::ScoringModel& model, const std::string& table, const std::string& path,
                            const brevix::TableOptions& options) {
    TextSource source(table);
    std::optional<brevix::OutputFile> output;
    ScoredText result;
    result.tally =
        brevix::scoreTable(model, source, [&]() -> brevix::OutputFile& { return output.emplace(path); }, options, {});
    output->commit();
    result.text = contentOf(path);
    return result;
}

}  // namespace test_support
