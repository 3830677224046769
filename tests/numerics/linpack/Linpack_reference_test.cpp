// Golden values: pivots and condition estimates computed without rounding, and what the LINPACK that R compiles gives.
// The tables say how they were made.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <map>
#include <string>

#include "numerics/linpack/Linpack.h"
#include "tests/numerics/linpack/Guarded.h"
#include "tests/support/reference_rows.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

std::vector<std::vector<std::string>> ReadRows(const std::string& name) {
    std::ifstream file(std::string(BREVIX_SOURCE_DIR) + "/tests/reference/linpack/" + name);
    std::vector<std::vector<std::string>> rows;
    bool isNamed = false;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("#")) {
            if (isNamed) {
                rows.push_back(Split(line, ','));
            }
            isNamed = true;
        }
    }
    return rows;
}

Vector Numbers(const std::string& text) {
    Vector numbers;
    for (const std::string& part : Split(text, ';')) {
        numbers.push_back(test_support::ParseReferenceNumber(part));
    }
    return numbers;
}

int Whole(const std::string& text) {
    return text.empty() ? 0 : static_cast<int>(test_support::ParseReferenceNumber(text));
}

Matrix Shaped(int rows, int columns, const Vector& values) {
    Matrix result(rows, columns);
    EXPECT_EQ(values.size(), result.values.size());
    result.values = values;
    return result;
}

// ---- Without rounding

// What a routine made of a matrix of the table.
struct Found {
    std::vector<int> pivots;
    double rcond;
};
using Routine = std::function<Found(const Matrix& a, int ml, int mu)>;

Found CallGeneral(const Matrix& a, int, int) {
    Guarded lu(Full(a.rows, a.rows), a);
    GuardedInts pivots(a.rows);
    Guarded z(a.rows);
    const double rcond = Linpack::Dgeco(lu.Data(), lu.Ld(), a.rows, pivots.Data(), z.Data());
    return {pivots.Read(), rcond};
}

Found CallBand(const Matrix& a, int ml, int mu) {
    Guarded lu(Band(a.rows, ml, mu, true), a, [ml, mu](int i, int j) { return i - j <= ml && j - i <= mu; });
    GuardedInts pivots(a.rows);
    Guarded z(a.rows);
    const double rcond = Linpack::Dgbco(lu.Data(), lu.Ld(), a.rows, ml, mu, pivots.Data(), z.Data());
    return {pivots.Read(), rcond};
}

Found CallDefinite(const Matrix& a, int, int) {
    Guarded factor(Upper(a.rows), a);
    Guarded z(a.rows);
    return {{}, Linpack::Dpoco(factor.Data(), factor.Ld(), a.rows, z.Data())};
}

Found CallPackedDefinite(const Matrix& a, int, int) {
    Guarded factor(Packed(a.rows), a);
    Guarded z(a.rows);
    return {{}, Linpack::Dppco(factor.Data(), a.rows, z.Data())};
}

Found CallDefiniteBand(const Matrix& a, int, int m) {
    Guarded factor(Band(a.rows, 0, m, false), a);
    Guarded z(a.rows);
    return {{}, Linpack::Dpbco(factor.Data(), factor.Ld(), a.rows, m, z.Data())};
}

Found CallIndefinite(const Matrix& a, int, int) {
    Guarded factor(Upper(a.rows), a);
    GuardedInts pivots(a.rows);
    Guarded z(a.rows);
    const double rcond = Linpack::Dsico(factor.Data(), factor.Ld(), a.rows, pivots.Data(), z.Data());
    return {pivots.Read(), rcond};
}

Found CallPackedIndefinite(const Matrix& a, int, int) {
    Guarded factor(Packed(a.rows), a);
    GuardedInts pivots(a.rows);
    Guarded z(a.rows);
    const double rcond = Linpack::Dspco(factor.Data(), a.rows, pivots.Data(), z.Data());
    return {pivots.Read(), rcond};
}

Found CallTriangular(const Matrix& a, int, int job) {
    Guarded t(job == 0 ? Lower(a.rows) : Upper(a.rows), a);
    Guarded z(a.rows);
    return {{}, Linpack::Dtrco(t.Data(), t.Ld(), a.rows, z.Data(), job)};
}

Found CallCholesky(const Matrix& a, int, int) {
    Guarded factor(Upper(a.rows), a);
    GuardedInts pivots(a.rows, std::vector<int>(static_cast<std::size_t>(a.rows)));
    Guarded work(a.rows);
    Linpack::Dchdc(factor.Data(), factor.Ld(), a.rows, work.Data(), pivots.Data(), 1);
    return {pivots.Read(), 0.0};
}

Found CallQr(const Matrix& a, int, int) {
    Guarded x(Full(a.rows, a.columns), a);
    GuardedInts pivots(a.columns, std::vector<int>(static_cast<std::size_t>(a.columns)));
    Guarded qraux(a.columns);
    Guarded work(a.columns);
    Linpack::Dqrdc(x.Data(), x.Ld(), a.rows, a.columns, qraux.Data(), pivots.Data(), work.Data(), 1);
    return {pivots.Read(), 0.0};
}

const std::map<std::string, std::vector<Routine>> kRoutines = {
    {"dgeco", {CallGeneral}},      {"dgbco", {CallBand}},       {"dpoco", {CallDefinite, CallPackedDefinite}},
    {"dpbco", {CallDefiniteBand}}, {"dtrco", {CallTriangular}}, {"dsico", {CallIndefinite, CallPackedIndefinite}},
    {"dchdc", {CallCholesky}},     {"dqrdc", {CallQr}}};

TEST(LinpackReference, PivotsAndConditionsAreThoseWithoutRounding) {
    std::map<std::string, int> counts;
    for (const auto& row : ReadRows("PivotsAndConditions.csv")) {
        ASSERT_EQ(row.size(), 7u);
        const int n = Whole(row[1]);
        const Matrix a = Shaped(n, n, Numbers(row[4]));
        for (const Routine& routine : kRoutines.at(row[0])) {
            const Found found = routine(a, Whole(row[2]), Whole(row[3]));
            SCOPED_TRACE(testing::Message() << row[0] << ' ' << n << ", row " << ++counts[row[0]]);
            if (!row[5].empty()) {
                const Vector pivots = Numbers(row[5]);
                EXPECT_EQ(found.pivots, std::vector<int>(pivots.begin(), pivots.end()));
            }
            if (!row[6].empty()) {
                const double rcond = test_support::ParseReferenceNumber(row[6]);
                EXPECT_NEAR(found.rcond, rcond, 256.0 * kEps);  // REL(256 eps / rcond)
            }
        }
    }
    for (const auto& [name, routines] : kRoutines) {
        EXPECT_GE(counts[name], 3) << name;
    }
}

// ---- R

using Arrays = std::vector<Vector>;

struct Row {
    int n;
    int p;
    int job;
    Arrays inputs;
};

Matrix Square(const Row& row) {
    return Shaped(row.n, row.n, row.inputs[0]);
}

Guarded DefiniteFactor(const Row& row) {
    Guarded factor(Upper(row.n), Square(row));
    EXPECT_EQ(Linpack::Dpofa(factor.Data(), factor.Ld(), row.n), 0);
    return factor;
}

// A band is kept as it stands in the table, with ld = m + 1.
Guarded BandFactor(const Row& row) {
    const int m = row.p;
    Layout layout = Full(m + 1, row.n, 0);
    layout.contains = [m](int i, int j) { return i >= m - j; };
    Guarded factor(layout, Shaped(m + 1, row.n, row.inputs[0]));
    EXPECT_EQ(Linpack::Dpbfa(factor.Data(), m + 1, row.n, m), 0);
    return factor;
}

Vector FromInts(const GuardedInts& values) {
    const std::vector<int> all = values.Read();
    return Vector(all.begin(), all.end());
}

Arrays Rcond(double rcond) {
    return {{rcond}};
}

Arrays CallDpodi(const Row& row) {
    Guarded factor = DefiniteFactor(row);
    Guarded det(2);
    Linpack::Dpodi(factor.Data(), factor.Ld(), row.n, det.Data(), row.job);
    return {factor.ReadVector(), det.ReadVector()};
}

Arrays CallDposl(const Row& row) {
    Guarded factor = DefiniteFactor(row);
    Guarded b(row.inputs[1]);
    Linpack::Dposl(factor.Data(), factor.Ld(), row.n, b.Data());
    return {b.ReadVector()};
}

Arrays CallDpbsl(const Row& row) {
    Guarded factor(Full(row.p + 1, row.n, 0), Shaped(row.p + 1, row.n, row.inputs[0]));
    Guarded b(row.inputs[1]);
    Linpack::Dpbfa(factor.Data(), row.p + 1, row.n, row.p);
    Linpack::Dpbsl(factor.Data(), row.p + 1, row.n, row.p, b.Data());
    return {b.ReadVector()};
}

Arrays CallDtrsl(const Row& row) {
    Guarded t(row.job % 10 == 0 ? Lower(row.n) : Upper(row.n), Square(row));
    Guarded b(row.inputs[1]);
    EXPECT_EQ(Linpack::Dtrsl(t.Data(), t.Ld(), row.n, b.Data(), row.job), 0);
    return {b.ReadVector()};
}

Arrays CallDchdc(const Row& row) {
    Guarded a(Upper(row.n), Square(row));
    Guarded work(row.n);
    GuardedInts jpvt(row.n, std::vector<int>(static_cast<std::size_t>(row.n)));
    EXPECT_EQ(Linpack::Dchdc(a.Data(), a.Ld(), row.n, work.Data(), jpvt.Data(), 1), row.n);
    return {a.ReadVector(), FromInts(jpvt)};
}

struct Qr {
    explicit Qr(const Row& row)
        : k(std::min(row.n, row.p)),
          x(Full(row.n, row.p), Shaped(row.n, row.p, row.inputs[0])),
          qraux(row.p),
          work(row.p),
          jpvt(row.p, std::vector<int>(static_cast<std::size_t>(row.p))) {
        Linpack::Dqrdc(x.Data(), x.Ld(), row.n, row.p, qraux.Data(), jpvt.Data(), work.Data(), row.job);
        if (row.job == 0) {
            for (int j = 0; j < row.p; ++j) {
                jpvt.Data()[j] = j + 1;
            }
        }
    }
    int k;
    Guarded x;
    Guarded qraux;
    Guarded work;
    GuardedInts jpvt;
};

Arrays CallDqrdc(const Row& row) {
    const Qr qr(row);
    Vector qraux = qr.qraux.ReadVector();
    qraux.resize(static_cast<std::size_t>(qr.k));
    return {qr.x.ReadVector(), qraux, FromInts(qr.jpvt)};
}

Arrays CallDqrsl(const Row& row) {
    Qr qr(row);
    Guarded y(row.inputs[1]);
    Guarded qy(row.n);
    Guarded qty(row.n);
    Guarded b(qr.k);
    Guarded rsd(row.n);
    Guarded xb(row.n);
    EXPECT_EQ(Linpack::Dqrsl(qr.x.Data(), qr.x.Ld(), row.n, qr.k, qr.qraux.Data(), y.Data(), qy.Data(), qty.Data(),
                             b.Data(), rsd.Data(), xb.Data(), 11111),
              0);
    return {qy.ReadVector(), qty.ReadVector(), b.ReadVector(), rsd.ReadVector(), xb.ReadVector()};
}

Arrays CallDsvdc(const Row& row) {
    Guarded x(Full(row.n, row.p), Shaped(row.n, row.p, row.inputs[0]));
    Guarded s(std::min(row.n + 1, row.p));
    Guarded e(row.p);
    Guarded work(row.n);
    EXPECT_EQ(
        Linpack::Dsvdc(x.Data(), x.Ld(), row.n, row.p, s.Data(), e.Data(), nullptr, 1, nullptr, 1, work.Data(), 0), 0);
    return {s.ReadVector()};
}

const std::map<std::string, std::function<Arrays(const Row&)>> kCompiled = {
    {"dpoco", [](const Row& row) { return Rcond(CallDefinite(Square(row), 0, 0).rcond); }},
    {"dpofa", [](const Row& row) { return Arrays{DefiniteFactor(row).ReadVector()}; }},
    {"dposl", CallDposl},
    {"dpodi", CallDpodi},
    {"dpbfa", [](const Row& row) { return Arrays{BandFactor(row).ReadVector()}; }},
    {"dpbsl", CallDpbsl},
    {"dtrco", [](const Row& row) { return Rcond(CallTriangular(Square(row), 0, row.job).rcond); }},
    {"dtrsl", CallDtrsl},
    {"dchdc", CallDchdc},
    {"dqrdc", CallDqrdc},
    {"dqrsl", CallDqrsl},
    {"dsvdc", CallDsvdc}};

TEST(LinpackReference, AgreesWithTheRoutinesThatRCompiles) {
    std::map<std::string, int> counts;
    for (const auto& line : ReadRows("CompiledLinpack.csv")) {
        ASSERT_EQ(line.size(), 6u);
        Row row{Whole(line[1]), Whole(line[2]), Whole(line[3]), {}};
        for (const std::string& array : Split(line[4], '|')) {
            row.inputs.push_back(Numbers(array));
        }
        const Arrays found = kCompiled.at(line[0])(row);
        const std::vector<std::string> expected = Split(line[5], '|');
        ASSERT_EQ(found.size(), expected.size());
        ++counts[line[0]];
        for (std::size_t k = 0; k < found.size(); ++k) {
            const Vector values = Numbers(expected[k]);
            SCOPED_TRACE(testing::Message()
                         << line[0] << " n " << row.n << " p " << row.p << " job " << row.job << " array " << k);
            ASSERT_EQ(found[k].size(), values.size());
            double largest = 0.0;
            for (const double value : values) {
                largest = std::max(largest, std::abs(value));
            }
            for (std::size_t i = 0; i < values.size(); ++i) {
                EXPECT_NEAR(found[k][i], values[i], 2048.0 * kEps * largest) << i;
            }
        }
    }
    for (const auto& [name, routine] : kCompiled) {
        EXPECT_GE(counts[name], 3) << name;
    }
}

}  // namespace
}  // namespace linpack_samples
