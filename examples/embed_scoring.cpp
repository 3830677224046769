// Scores one case from a C++ program: embed_scoring MODEL.pmml [NAME=VALUE ...]
#include <iostream>
#include <string>

#include "runtime/ScoringModel.h"

namespace {

void listInputs(const brevix::ScoringModel& model) {
    for (const brevix::InputField& input : model.getInputs()) {
        std::cout << "input " << input.name << ": " << input.type;
        const char* separator = ", one of ";
        for (const std::string& value : input.values) {
            std::cout << separator << value;
            separator = ", ";
        }
        if (input.missingReplacement)
            std::cout << ", " << *input.missingReplacement << " where it is missing";
        std::cout << '\n';
    }
}

void show(const brevix::ScoringModel& model, const brevix::Outcome& outcome) {
    for (const brevix::OutputColumn& column : model.getOutputColumns()) {
        const brevix::OutputValue value = model.getValue(outcome, column);
        std::cout << column.name << " = ";
        if (value.kind == brevix::OutputValue::kNumber)
            std::cout << value.number;
        else
            std::cout << (value.kind == brevix::OutputValue::kText ? value.text : "(nothing)");
        std::cout << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "embed_scoring MODEL.pmml [NAME=VALUE ...]\n";
        return 2;
    }
    try {
        const auto model = brevix::ScoringModel::openFile(argv[1]);
        listInputs(*model);
        // One record and one outcome for each thread: their memory serves every case.
        brevix::Record record = model->makeRecord();
        brevix::Outcome outcome;
        for (int i = 2; i < argc; ++i) {
            const std::string argument = argv[i];
            const auto sign = argument.find('=');
            record.setText(argument.substr(0, sign), sign == std::string::npos ? "" : argument.substr(sign + 1));
        }
        model->score(record, outcome);
        show(*model, outcome);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return 1;
    }
    return 0;
}
