// Labelled dumps of scalars, vectors, arrays, maps and time stamps on one replaceable text stream.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "numerics/Export.h"

/// The dump functions. A dump is a line break (with flush), its text written as one piece, and a flush; no line break
/// follows, so the next dump starts a new line. Elements stand ten to a line, each after a blank.
/// Numbers:  "%g", in full precision "%.17g", whole numbers "%d"; never dependent on a locale. The missing value of
///           KwMV is written as "miss".
/// Fails:    never throws; a dump that cannot be built or written is dropped.
/// Note:     for people who read a trace; nothing parses a dump back. Replacing the stream while another thread dumps
///           is not supported.
namespace KwDisplay_930 {

/// Returns: the dump stream, standard output until SetOutStream replaces it; usable before main.
/// Owns:    not the caller's to delete.
KW_EXPORT std::ostream* GetOutStream();

/// Makes stream the dump stream.
/// Owns:    nothing; stream must outlive its last dump.
KW_EXPORT void SetOutStream(std::ostream& stream);

/// Writes "label = value".
KW_EXPORT void DisplayD(std::string label, double value);
/// As DisplayD, in full precision.
KW_EXPORT void DisplayDF(std::string label, double value);
/// Writes "label = value".
KW_EXPORT void DisplayI(std::string label, int value);
/// Writes "label = value".
KW_EXPORT void DisplayL(std::string label, long value);
/// Writes "label = true" or "label = false".
KW_EXPORT void DisplayB(std::string label, bool value);
/// Writes "label = value".
KW_EXPORT void DisplayS(std::string label, std::string value);

/// Writes "label: " and the local time now as year-month-day-hour-minute-second, all but the year of two digits.
KW_EXPORT void DisplayTimeStamp(std::string label);

/// Writes as many line breaks as breaks says, each flushed, then text, then a flush; nothing when text is null.
KW_EXPORT void DisplayText(const long& breaks, const char* text);
/// As the form above, for a string.
KW_EXPORT void DisplayText(const long& breaks, const std::string& text);

/// Writes "label (size = n)" and the elements, in full precision if asked.
KW_EXPORT void DisplayDV(std::string label, const std::vector<double>& values, bool fullPrecision = false);
/// As DisplayDV, for a plain array of n values; a negative n counts as 0.
KW_EXPORT void DisplayDA(std::string label, const double* values, int n, bool fullPrecision = false);
/// As DisplayDA, but only the elements, without label and size.
KW_EXPORT void DisplayDAS(const double* values, int n);

/// Writes "label (size = n)" and the elements.
KW_EXPORT void DisplayIV(std::string label, const std::vector<int>& values);
/// As DisplayIV.
KW_EXPORT void DisplayUV(std::string label, const std::vector<unsigned int>& values);
/// As DisplayIV, the elements as "true" and "false".
KW_EXPORT void DisplayBV(std::string label, const std::vector<bool>& values);
/// As DisplayIV.
KW_EXPORT void DisplaySV(std::string label, const std::vector<std::string>& values);

/// Writes the label, then each inner vector on a line that starts with "vec[index]"; "label <none>" if there is none.
KW_EXPORT void DisplayDVV(std::string label, const std::vector<std::vector<double>>& vectors,
                          bool fullPrecision = false);

/// Writes "label ( number of rows = r, number of columns = c)" and each row on a line of its own.
/// Shape:   nRows and nCols say how much is shown, at most what there is; a negative count (the default) shows all,
///          the columns being those of the longest row.
KW_EXPORT void DisplayBVV(std::string label, const std::vector<std::vector<bool>>& rows, int nRows = -1,
                          int nCols = -1);

/// Writes "label (number of elements = m, number of rows = n)" and each row on a line that starts with "row i:".
/// Shape:   packed holds the lower triangle of order n row by row; when it holds fewer than n(n+1)/2 elements the
///          rows end where it ends. A negative n counts as 0.
KW_EXPORT void DisplayDVTR(std::string label, const std::vector<double>& packed, int n);
/// As DisplayDVTR, without label.
KW_EXPORT void DisplayDVTRS(const std::vector<double>& packed, int n);

/// Writes "label (size = n)" and each pair as "(first,second)", a missing double as " miss".
KW_EXPORT void DisplayVPII(std::string label, std::vector<std::pair<int, int>>& pairs);
/// As DisplayVPII.
KW_EXPORT void DisplayVPDI(std::string label, std::vector<std::pair<double, int>>& pairs);
/// As DisplayVPII.
KW_EXPORT void DisplayVPD(std::string label, std::vector<std::pair<double, double>>& pairs);

/// Writes "label map size = n" and each entry as "(key,value)", a missing double as " miss"; "label <empty>" for an
/// empty map.
KW_EXPORT void DisplayDDM(std::string label, std::map<double, double>& entries);
/// As DisplayDDM.
KW_EXPORT void DisplayIIM(std::string label, std::map<int, int>& entries);
/// As DisplayIIM, without the count.
KW_EXPORT void DisplayVIM(std::string label, std::map<int, int>& entries);

/// Writes "label Map's StringList:", then for each entry a line "Map key = key" and a line "Map value =" with the
/// strings; "label <empty>" for an empty map.
KW_EXPORT void DisplaySSLM(std::string label, const std::map<std::string, std::vector<std::string>>& entries);
/// Writes "label Map's double", then for each entry a line "Map key = key" and a line "Map value = value"; "label
/// <empty>" for an empty map.
KW_EXPORT void DisplaySDM(std::string label, const std::map<std::string, double>& entries);

}  // namespace KwDisplay_930
