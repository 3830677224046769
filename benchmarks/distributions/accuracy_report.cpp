// Prints, for each member of KwDistFun, the worst and the mean error over its reference table in ulp, beside
// Boost.Math, GSL and R's nmath, as a table in Markdown. An error above 1e15 ulp, a NaN or an infinity counts as wrong
// altogether. The errors of inverses are given as they stand and as multiples of what an error of 4 ulp in p and 1 ulp
// in x allows. Usage: accuracy_report [--rows MEMBER]; with --rows every row of one member with its error, worst first.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <utility>

#include "benchmarks/distributions/peers.h"
#include "tests/numerics/distributions/reference_table.h"

namespace {

constexpr double kWrong = 1e15;

double Ulp(double x) {
    return std::nextafter(std::abs(x), std::numeric_limits<double>::infinity()) - std::abs(x);
}

double Error(double value, double expected) {
    if (!std::isfinite(value)) {
        return kWrong;
    }
    return std::min(kWrong, std::abs(value - expected) / Ulp(expected));
}

struct Summary {
    double worst = 0.0;
    double mean = 0.0;
    double allowed = 0.0;  // worst multiple of |dx| density <= 4 ulp(p) + ulp(x) density
    int wrong = 0;
};

Summary Measure(const std::function<double(const std::vector<double>&)>& member,
                const std::vector<distribution_tables::Row>& rows) {
    Summary summary;
    int counted = 0;
    for (const auto& row : rows) {
        const double value = member(row.arguments);
        const double error = Error(value, row.expected);
        if (error >= kWrong) {
            ++summary.wrong;
            continue;
        }
        ++counted;
        summary.worst = std::max(summary.worst, error);
        summary.mean += error;
        if (row.density > 0.0) {
            const double limit = 4.0 * Ulp(row.arguments[0]) / row.density + Ulp(row.expected);
            summary.allowed = std::max(summary.allowed, std::abs(value - row.expected) / limit);
        }
    }
    summary.mean /= std::max(1, counted);
    return summary;
}

std::string Figures(const Summary& summary) {
    char text[64];
    std::snprintf(text, sizeof text, " %.3g / %.2g", summary.worst, summary.mean);
    return text + (summary.wrong > 0 ? ", " + std::to_string(summary.wrong) + " wrong" : std::string());
}

std::string Cell(const peers::Members& members, const std::string& name,
                 const std::vector<distribution_tables::Row>& rows) {
    const auto found = members.find(name);
    return (found == members.end() ? std::string(" -") : Figures(Measure(found->second, rows))) + " |";
}

int PrintRows(const std::string& name) {
    const auto& member = distribution_tables::Members().at(name);
    std::vector<std::pair<double, const distribution_tables::Row*>> order;
    const auto rows = distribution_tables::ReadTable(BREVIX_SOURCE_DIR, name);
    for (const auto& row : rows) {
        order.emplace_back(Error(member(row.arguments), row.expected), &row);
    }
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& [error, row] : order) {
        std::printf("%.3g ulp:", error);
        for (const double argument : row->arguments) {
            std::printf(" %.17g", argument);
        }
        std::printf(" -> %.17g, expected %.17g\n", member(row->arguments), row->expected);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--rows") == 0) {
        return PrintRows(argv[2]);
    }
    const peers::Members boost = peers::Boost();
    const peers::Members gsl = peers::Gsl();
    const peers::Members nmath = peers::Nmath();
    std::printf("| member | rows | brevix | inverse | Boost.Math | GSL | nmath |\n|---|---|---|---|---|---|---|\n");
    for (const auto& [name, member] : distribution_tables::Members()) {
        const auto rows = distribution_tables::ReadTable(BREVIX_SOURCE_DIR, name);
        const Summary own = Measure(member, rows);
        char allowed[32] = "";
        if (own.allowed > 0.0) {
            std::snprintf(allowed, sizeof allowed, " %.2g", own.allowed);
        }
        // A line at once and on a line of its own: nmath prints its warnings between them, not all with an end of line.
        const std::string line = Figures(own) + " |" + allowed + " |" + Cell(boost, name, rows) +
                                 Cell(gsl, name, rows) + Cell(nmath, name, rows);
        std::printf("\n| `%s` | %zu |%s\n", name.c_str(), rows.size(), line.c_str());
        std::fflush(stdout);
    }
    return 0;
}
