// The dump functions: each appends its text to the label and writes it as one piece. Test: display_test.cpp.
#include "numerics/display/display.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <ctime>
#include <iostream>
#include <string_view>

#include "numerics/display/local_time.h"
#include "numerics/power/KwMV.h"

namespace KwDisplay_930 {

namespace {

using KwCommon_930::KwMV;

constexpr std::size_t kElementsPerLine = 10;
constexpr int kShortPrecision = 6;  // that of "%g"
constexpr int kFullPrecision = 17;

// The stream set by SetOutStream; null, hence ready before any code runs, while that is standard output.
constinit std::ostream* gReplacement = nullptr;

int Precision(bool full) {
    return full ? kFullPrecision : kShortPrecision;
}

std::size_t Count(int n) {
    return n > 0 ? static_cast<std::size_t>(n) : 0;
}

template <class Integer>
void AppendInteger(std::string& text, Integer value) {
    char buffer[24];
    text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

void AppendNumber(std::string& text, double value, int precision = kShortPrecision) {
    if (KwMV::IsMissing(value)) {
        text += "miss";
        return;
    }
    char buffer[32];
    text.append(buffer,
                std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, precision).ptr);
}

void AppendBool(std::string& text, bool value) {
    text += value ? "true" : "false";
}

void AppendTwoDigits(std::string& text, int value) {
    if (value < 10) {
        text += '0';
    }
    AppendInteger(text, value);
}

// Calls append(k) for each element, ten to a line; append writes the element with the blank before it.
template <class Append>
void AppendElements(std::string& text, std::size_t count, Append append) {
    for (std::size_t k = 0; k < count; ++k) {
        if (k != 0 && k % kElementsPerLine == 0) {
            text += '\n';
        }
        append(k);
    }
}

void AppendNumbers(std::string& text, const double* values, std::size_t count, int precision) {
    AppendElements(text, count, [&](std::size_t k) {
        text += ' ';
        AppendNumber(text, values[k], precision);
    });
}

void AppendStrings(std::string& text, const std::vector<std::string>& values) {
    AppendElements(text, values.size(), [&](std::size_t k) {
        text += ' ';
        text += values[k];
    });
}

void AppendFlags(std::string& text, const std::vector<bool>& values, std::size_t count) {
    AppendElements(text, count, [&](std::size_t k) {
        text += ' ';
        AppendBool(text, values[k]);
    });
}

void AppendSize(std::string& text, std::size_t size) {
    text += " (size = ";
    AppendInteger(text, size);
    text += ')';
}

void AppendPairMember(std::string& text, int value) {
    AppendInteger(text, value);
}

void AppendPairMember(std::string& text, double value) {
    if (KwMV::IsMissing(value)) {
        text += ' ';
    }
    AppendNumber(text, value);
}

// The pairs of a vector or the entries of a map, as " (first,second)".
template <class Pairs>
void AppendPairs(std::string& text, const Pairs& pairs) {
    auto pair = pairs.begin();
    AppendElements(text, pairs.size(), [&](std::size_t) {
        text += " (";
        AppendPairMember(text, pair->first);
        text += ',';
        AppendPairMember(text, pair->second);
        text += ')';
        ++pair;
    });
}

template <class Map>
void AppendMap(std::string& text, const Map& entries, bool withCount) {
    if (entries.empty()) {
        text += " <empty>";
        return;
    }
    if (withCount) {
        text += " map size = ";
        AppendInteger(text, entries.size());
    }
    AppendPairs(text, entries);
}

// A map of strings: the heading, then key and value of each entry on lines of their own; appendValue writes the value.
template <class Map, class AppendValue>
void AppendStringMap(std::string& text, std::string_view heading, const Map& entries, AppendValue appendValue) {
    if (entries.empty()) {
        text += " <empty>";
        return;
    }
    text += heading;
    for (const auto& [key, value] : entries) {
        text += "\nMap key = ";
        text += key;
        text += "\nMap value =";
        appendValue(value);
    }
}

void AppendTriangle(std::string& text, const std::vector<double>& packed, int n) {
    text += " (number of elements = ";
    AppendInteger(text, packed.size());
    text += ", number of rows = ";
    AppendInteger(text, Count(n));
    text += ')';
    std::size_t start = 0;
    for (std::size_t row = 0; row < Count(n) && start < packed.size(); ++row) {
        text += "\nrow ";
        AppendInteger(text, row);
        text += ':';
        const std::size_t length = std::min(row + 1, packed.size() - start);
        AppendNumbers(text, packed.data() + start, length, kShortPrecision);
        start += length;
    }
}

// breaks line breaks, each flushed, then text as one piece, then a flush. Unformatted, so that neither width nor locale
// of the stream shows.
void Write(long breaks, std::string_view text) {
    std::ostream& stream = *GetOutStream();
    for (long k = 0; k < breaks; ++k) {
        stream.put('\n').flush();
    }
    stream.write(text.data(), static_cast<std::streamsize>(text.size())).flush();
}

// A dump never fails its caller: out of memory, or on a stream that throws, it is dropped.
template <class Action>
void Quietly(Action action) {
    try {
        action();
    } catch (...) {
        return;
    }
}

// Completes the text that starts with the label and writes it.
template <class Append>
void Dump(std::string& text, Append append) {
    Quietly([&] {
        append();
        Write(1, text);
    });
}

template <class Integer>
void DumpIntegers(std::string& label, const std::vector<Integer>& values) {
    Dump(label, [&] {
        AppendSize(label, values.size());
        AppendElements(label, values.size(), [&](std::size_t k) {
            label += ' ';
            AppendInteger(label, values[k]);
        });
    });
}

template <class Pair>
void DumpPairs(std::string& label, const std::vector<Pair>& pairs) {
    Dump(label, [&] {
        AppendSize(label, pairs.size());
        AppendPairs(label, pairs);
    });
}

}  // namespace

std::ostream* GetOutStream() {
    // Standard output may be asked for while other objects are still being initialised.
    static const std::ios_base::Init standardStreams;
    return gReplacement != nullptr ? gReplacement : &std::cout;
}

void SetOutStream(std::ostream& stream) {
    gReplacement = &stream;
}

void DisplayD(std::string label, double value) {
    Dump(label, [&] {
        label += " = ";
        AppendNumber(label, value);
    });
}

void DisplayDF(std::string label, double value) {
    Dump(label, [&] {
        label += " = ";
        AppendNumber(label, value, kFullPrecision);
    });
}

void DisplayI(std::string label, int value) {
    DisplayL(std::move(label), value);
}

void DisplayL(std::string label, long value) {
    Dump(label, [&] {
        label += " = ";
        AppendInteger(label, value);
    });
}

void DisplayB(std::string label, bool value) {
    Dump(label, [&] {
        label += " = ";
        AppendBool(label, value);
    });
}

void DisplayS(std::string label, std::string value) {
    Dump(label, [&] {
        label += " = ";
        label += value;
    });
}

void DisplayTimeStamp(std::string label) {
    const std::tm local = GetLocalTime(std::time(nullptr));
    Dump(label, [&] {
        label += ": ";
        AppendInteger(label, local.tm_year + 1900);
        for (const int part : {local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec}) {
            label += '-';
            AppendTwoDigits(label, part);
        }
    });
}

void DisplayText(const long& breaks, const char* text) {
    if (text != nullptr) {
        Quietly([&] { Write(breaks, text); });
    }
}

void DisplayText(const long& breaks, const std::string& text) {
    Quietly([&] { Write(breaks, text); });
}

void DisplayDV(std::string label, const std::vector<double>& values, bool fullPrecision) {
    Dump(label, [&] {
        AppendSize(label, values.size());
        AppendNumbers(label, values.data(), values.size(), Precision(fullPrecision));
    });
}

void DisplayDA(std::string label, const double* values, int n, bool fullPrecision) {
    Dump(label, [&] {
        AppendSize(label, Count(n));
        AppendNumbers(label, values, Count(n), Precision(fullPrecision));
    });
}

void DisplayDAS(const double* values, int n) {
    std::string text;
    Dump(text, [&] { AppendNumbers(text, values, Count(n), kShortPrecision); });
}

void DisplayIV(std::string label, const std::vector<int>& values) {
    DumpIntegers(label, values);
}

void DisplayUV(std::string label, const std::vector<unsigned int>& values) {
    DumpIntegers(label, values);
}

void DisplayBV(std::string label, const std::vector<bool>& values) {
    Dump(label, [&] {
        AppendSize(label, values.size());
        AppendFlags(label, values, values.size());
    });
}

void DisplaySV(std::string label, const std::vector<std::string>& values) {
    Dump(label, [&] {
        AppendSize(label, values.size());
        AppendStrings(label, values);
    });
}

void DisplayDVV(std::string label, const std::vector<std::vector<double>>& vectors, bool fullPrecision) {
    Dump(label, [&] {
        if (vectors.empty()) {
            label += " <none>";
        }
        for (std::size_t k = 0; k < vectors.size(); ++k) {
            label += "\nvec[";
            AppendInteger(label, k);
            label += ']';
            AppendNumbers(label, vectors[k].data(), vectors[k].size(), Precision(fullPrecision));
        }
    });
}

void DisplayBVV(std::string label, const std::vector<std::vector<bool>>& rows, int nRows, int nCols) {
    Dump(label, [&] {
        const std::size_t shownRows = nRows < 0 ? rows.size() : std::min(Count(nRows), rows.size());
        std::size_t longest = 0;
        for (std::size_t i = 0; i < shownRows; ++i) {
            longest = std::max(longest, rows[i].size());
        }
        const std::size_t shownCols = nCols < 0 ? longest : std::min(Count(nCols), longest);
        label += " ( number of rows = ";
        AppendInteger(label, shownRows);
        label += ", number of columns = ";
        AppendInteger(label, shownCols);
        label += ')';
        for (std::size_t i = 0; i < shownRows; ++i) {
            label += '\n';
            AppendFlags(label, rows[i], std::min(shownCols, rows[i].size()));
        }
    });
}

void DisplayDVTR(std::string label, const std::vector<double>& packed, int n) {
    Dump(label, [&] { AppendTriangle(label, packed, n); });
}

void DisplayDVTRS(const std::vector<double>& packed, int n) {
    DisplayDVTR(std::string(), packed, n);
}

void DisplayVPII(std::string label, std::vector<std::pair<int, int>>& pairs) {
    DumpPairs(label, pairs);
}

void DisplayVPDI(std::string label, std::vector<std::pair<double, int>>& pairs) {
    DumpPairs(label, pairs);
}

void DisplayVPD(std::string label, std::vector<std::pair<double, double>>& pairs) {
    DumpPairs(label, pairs);
}

void DisplayDDM(std::string label, std::map<double, double>& entries) {
    Dump(label, [&] { AppendMap(label, entries, true); });
}

void DisplayIIM(std::string label, std::map<int, int>& entries) {
    Dump(label, [&] { AppendMap(label, entries, true); });
}

void DisplayVIM(std::string label, std::map<int, int>& entries) {
    Dump(label, [&] { AppendMap(label, entries, false); });
}

void DisplaySSLM(std::string label, const std::map<std::string, std::vector<std::string>>& entries) {
    Dump(label, [&] {
        AppendStringMap(label, " Map's StringList:", entries,
                        [&](const std::vector<std::string>& values) { AppendStrings(label, values); });
    });
}

void DisplaySDM(std::string label, const std::map<std::string, double>& entries) {
    Dump(label, [&] {
        AppendStringMap(label, " Map's double", entries, [&](double value) {
            label += ' ';
            AppendNumber(label, value);
        });
    });
}

}  // namespace KwDisplay_930
