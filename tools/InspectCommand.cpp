// brevix inspect: what a model is, and what has no effect in it.
#include "tools/InspectCommand.h"

#include <CLI/CLI.hpp>

#include "runtime/ModelDescription.h"
#include "runtime/OutputFile.h"
#include "runtime/PreparedDocument.h"
#include "runtime/ScoringModel.h"
#include "runtime/one_error_type.h"
#include "tools/description_text.h"

namespace brevix {

InspectCommand::InspectCommand(CLI::App& app) {
    app.add_option("MODEL", fModel, "the PMML document")->required();
    app.add_flag("--json", fWantsJson, "write JSON");
    app.add_flag("--as-is", fIsAsIs, "hand the document to the plug-in unprepared");
    app.add_option("--plugin", fPlugin, "the plug-in library");
}

int InspectCommand::run() {
    ModelOptions options;
    options.plugin = fPlugin;
    const ModelDescription description = withFileName(fModel, [&] {
        const auto prepared = PreparedDocument::openFile(fModel, !fIsAsIs);
        return ModelDescription::describe(prepared, *ScoringModel::openPrepared(prepared, options));
    });
    OutputFile output("-");
    output.write(fWantsJson ? describeAsJson(description) : describeAsText(description));
    output.commit();
    return 0;
}

}  // namespace brevix
