#include <MelkarCommon/support/activity_figures.h>

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMets[melkar::kLevels] = {1.8, 2.3, 2.9, 3.6, 4.3, 5.2, 6.1, 7.1, 8.3};
constexpr int kNone = -1;

constexpr int kLeastMets = 2;
constexpr int kLevelOfMets[] = {2, 4, 5, 6, 7, 8, 9}; ///< from `kLeastMets` on
constexpr int kMostMets = 8;

constexpr std::size_t kLineLimit = 1022;
constexpr int kNoDataStatus = 3;

double ToOneDecimal(double value) { return melkar::ToDouble(melkar::FormatFixed(value, 1)); }

/// Rounded sum of the levels from `first` to `last` that there are.
double SumOf(const CStringArray& totals, int first, int last) {
    double sum = 0;
    for (int level = std::max(first, 1); level <= std::min(last, melkar::kLevels); ++level)
        sum += melkar::ToDouble(totals[level - 1]);
    return ToOneDecimal(sum);
}

void Give(double* to, double value) {
    if (to)
        *to = value;
}

template <class IsData> int FirstPosition(const CStringArray* entries, IsData isData) {
    for (int i = 0; entries && i < entries->GetSize(); ++i)
        if (isData((*entries)[i]))
            return i + 1;
    return 0;
}

} // namespace

double Intensity2MetsDouble(int level) { return level >= 1 && level <= melkar::kLevels ? kMets[level - 1] : kNone; }

int Intensity2MetsInt(int level) { return static_cast<int>(Intensity2MetsDouble(level)); }

int MetsInt2Intensity(int mets) {
    return mets >= kLeastMets && mets <= kMostMets ? kLevelOfMets[mets - kLeastMets] : kNone;
}

int MetsDouble2Intensity(double mets) { return MetsInt2Intensity(melkar::Truncate(std::floor(mets))); }

void CalcLMV(double* light, double* moderate, double* vigorous, CStringArray& totals, int p, int q) {
    const double total = SumOf(totals, 1, melkar::kLevels);
    double l = SumOf(totals, 1, melkar::SubtractEdge(p, 1));
    double m = SumOf(totals, p, q);
    double v = SumOf(totals, melkar::AddEdge(q, 1), melkar::kLevels);
    if (l >= m && l >= v)
        l = total - m - v;
    if (m >= l && m >= v)
        m = total - l - v;
    if (v >= m && v >= l)
        v = total - m - l;
    Give(light, l);
    Give(moderate, m);
    Give(vigorous, v);
}

int ExistData(CStringArray* entries) {
    return FirstPosition(entries, [](const CString& entry) { return !entry.IsEmpty(); });
}

int ExistData(const char* file, int index) {
    melkar::LineReader lines(file);
    lines.Next(kLineLimit);
    lines.Next(kLineLimit);
    for (int row = 1; const char* line = lines.Next(kLineLimit); ++row)
        if (melkar::ToInt(getCSV(line, index)) != kNoDataStatus)
            return row;
    return 0;
}

int ExistExcludedData(CStringArray* entries) {
    return FirstPosition(entries, [](const CString& entry) { return entry != "0"; });
}
