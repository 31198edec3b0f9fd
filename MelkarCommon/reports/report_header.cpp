#include <MelkarCommon/reports/report_header.h>

#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/reports/header_rows.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_measure.h>

#include <algorithm>
#include <cstring>

using melkar::CsvRow;
using melkar::HeaderRows;
using melkar::kWhite;

namespace {

char kProfile[] = "..\\conf\\graph.cnf"; ///< not constant only because `ReadIniFile` takes such a pointer

// Words of the reader; no key replaces them.
constexpr const char* kDays = "Days";
constexpr const char* kSteps = "Steps";
constexpr const char* kMinutes = "min.";
constexpr const char* kCalories = "Cal";

/// " text "
CString Spaced(const CString& text) { return " " + text + " "; }
/// " figure unit "
CString WithUnit(const CString& figure, const char* unit) { return " " + figure + " " + unit + " "; }
/// " from - to "
CString Range(const CString& from, const CString& to) { return " " + from + " - " + to + " "; }

melkar::TextSize SizeOf(HDC surface, const CString& text) {
    const CRect box = melkar::MeasureText(surface, text, DT_CALCRECT);
    return {box.Width(), box.Height()};
}

} // namespace

struct CReportHeader::KeyRows : melkar::Keys<CReportHeader> {
    static constexpr Row rows[] = {
        Text<&G::m_strFont>(Common, "FONT", "face of all texts").Example("DejaVu Sans"),
        Number<&G::m_nCharset>(Common, "CHARSET", 0, "character set of texts that aren't UTF-8"),
        Text<&G::m_strLocale>(Common, "LOCALE", "locale of dates, such as ja_JP.UTF-8").Example("en_US.UTF-8"),
        Text<&G::m_strDateFormatType>(Own, "DATE_FORMAT_TYPE", "key of the date format in section SYSTEM of config.cnf")
            .Example("DATE_LONG"),
        Text<&G::m_str1stLabel>(Own, "1ST_LABEL", "a text as wide as the first column of labels"),
        Text<&G::m_str2ndLabel>(Own, "2ND_LABEL", "the same, second column"),
        Text<&G::m_str3rdLabel>(Own, "3RD_LABEL", "the same, third column"),
        Text<&G::m_str4thLabel>(Own, "4TH_LABEL", "the same, the pair at the top right"),
        Text<&G::m_str1stText>(Own, "1ST_TEXT", "a text as wide as the first column of texts"),
        Text<&G::m_str2ndText>(Own, "2ND_TEXT", "the same, second column"),
        Text<&G::m_str3rdText>(Own, "3RD_TEXT", "kept; no layout uses it"),
        Text<&G::m_str4thText>(Own, "4TH_TEXT", "the same, the pair at the top right"),
        Text<&G::m_szNameLabel>(Own, "NAME_LABEL", "label"),
        Text<&G::m_szGroupLabel>(Own, "GROUP_LABEL", "label"),
        Text<&G::m_szNicknameLabel>(Own, "NICKNAME_LABEL", "label; kept for a host"),
        Text<&G::m_szDateLabel>(Own, "DATE_LABEL", "label"),
        Text<&G::m_szCommentLabel>(Own, "COMMENT_LABEL", "label"),
        Text<&G::m_szHeightLabel>(Own, "HEIGHT_LABEL", "label"),
        Text<&G::m_szWeightLabel>(Own, "WEIGHT_LABEL", "label"),
        Text<&G::m_szSexLabel>(Own, "SEX_LABEL", "label; kept for a host"),
        Text<&G::m_szAgeLabel>(Own, "AGE_LABEL", "label"),
        Text<&G::m_szBmiLabel>(Own, "BMI_LABEL", "label; kept for a host"),
        Text<&G::m_szExcludeLabel>(Own, "EXCLUDE_LABEL", "label; kept for a host"),
        Text<&G::m_szDuringLabel>(Own, "DURING_LABEL", "label; kept for a host"),
        Text<&G::m_szSiteLabel>(Own, "SITE_LABEL", "label; kept for a host"),
        Text<&G::m_szEffectiveDaysLabel>(Own, "EFFECTIVEDAYS_LABEL", "label; kept for a host"),
        Text<&G::m_szStepTargetLabel>(Own, "STEP_TARGET_LABEL", "label; kept for a host"),
        Text<&G::m_szCalTargetLabel>(Own, "CAL_TARGET_LABEL", "label; kept for a host"),
        Text<&G::m_szActTargetLabel>(Own, "ACT_TARGET_LABEL", "label; kept for a host"),
        Text<&G::m_szModerateLabel>(Own, "MODERATE_LABEL", "label; kept for a host"),
        Text<&G::m_szAveActCalLabel>(Own, "AVE_ACT_CAL_LABEL", "label; kept for a host"),
        Text<&G::m_szMaxActCalLabel>(Own, "MAX_ACT_CAL_LABEL", "label; kept for a host"),
        Text<&G::m_szAveTotalCalLabel>(Own, "AVE_TOTAL_CAL_LABEL", "label; kept for a host"),
        Text<&G::m_szMaxTotalCalLabel>(Own, "MAX_TOTAL_CAL_LABEL", "label; kept for a host"),
        Text<&G::m_szAveStepLabel>(Own, "AVE_STEP_LABEL", "label; kept for a host"),
        Text<&G::m_szMaxStepLabel>(Own, "MAX_STEP_LABEL", "label; kept for a host"),
        Number<&G::m_nHeaderSize>(Own, "HEADER_SIZE", 0, "texts, points; 11 if it is 0").Example("10"),
        Text<&G::m_strPersonUnit>(Own, "PERSON_UNIT", "behind the name").Example("\" (member)\""),
        Text<&G::m_strAgeUnit>(Own, "AGE_UNIT", "behind the age"),
        Text<&G::m_strCalUnit>(Own, "CAL_UNIT", "kept"),
        Text<&G::m_strStepUnit>(Own, "STEP_UNIT", "kept"),
        Text<&G::m_strMinUnit>(Own, "MIN_UNIT", "kept"),
        Text<&G::m_strKmUnit>(Own, "KM_UNIT", "kept"),
        Text<&G::m_strMileUnit>(Own, "MILE_UNIT", "kept"),
        Text<&G::m_strKgUnit>(Own, "KG_UNIT", "kept"),
        Text<&G::m_strLbsUnit>(Own, "LBS_UNIT", "kept"),
        Text<&G::m_strLeftHeader>(Own, "LEFT_HEADER", "kept; for a host"),
        Text<&G::m_strCenterHeader>(Own, "CENTER_HEADER", "kept; for a host"),
        Text<&G::m_strRightHeader>(Own, "RIGHT_HEADER", "kept; for a host"),
    };
    /// Read where the own section has no format of dates.
    static constexpr Row commonDateFormat[] = {
        Text<&G::m_strDateFormatType>(Common, "GRAPH_DATE_FORMAT_TYPE", "the same where DATE_FORMAT_TYPE is empty")
            .Example("DATE_LONG"),
    };
};

CReportHeader::CReportHeader(const char* section) : m_Ini(kProfile), m_strSection(section) {
    CReportHeader::ReadIniFile(kProfile);
}

int CReportHeader::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    if (m_strDateFormatType.IsEmpty())
        melkar::ReadKeys(KeyRows::commonDateFormat, *this, path, m_strSection);
    TextSlot face;
    Put(face, m_strFont);
    std::memcpy(m_szFont, static_cast<const char*>(face), sizeof m_szFont);
    return 0;
}

melkar::ClassKeys CReportHeader::ProfileKeys() {
    auto keys = melkar::InfoOf(KeyRows::rows);
    keys.push_back(KeyRows::commonDateFormat[0].info);
    return {"CReportHeader", keys};
}

int CReportHeader::GetData(CString dataFile) {
    HeaderRows rows(dataFile);
    if (!rows.IsOpen())
        return -1;
    TakePerson(rows);
    const bool isOwnSource = TakePeriod(rows);
    TakeTargets(rows, isOwnSource);
    TakeFigures(rows);
    if (!isOwnSource)
        TakeLateTargets(rows);
    return 0;
}

/// Rows 0 to 2.
void CReportHeader::TakePerson(HeaderRows& rows) {
    enum { Name1, Name2, Name3, Nickname, Group };
    const CsvRow& names = rows.Next();
    Put(m_szName1, names.Field(Name1));
    Put(m_szName2, names.Field(Name2));
    Put(m_szName3, names.Field(Name3));
    Put(m_szNickname, names.Field(Nickname));
    Put(m_szGroup, " " + names.Field(Group));
    Put(m_szName, CString(" ") + m_szName1 + " " + m_szName2 + " " + m_szName3 + m_strPersonUnit);

    Put(m_szComment, " " + rows.Next().Field(0));

    enum { Age, Sex, Height, Weight, Bmi };
    const CsvRow& body = rows.Next();
    Put(m_szAge, WithUnit(body.Field(Age), m_strAgeUnit));
    Put(m_szSex, Spaced(body.Field(Sex)));
    Put(m_szHeight, Spaced(body.Field(Height)));
    Put(m_szWeight, Spaced(body.Field(Weight)));
    Put(m_szBmi, Spaced(body.Field(Bmi)));
}

/// Row 3. @return whether the targets of steps and activity stand with the other ones in row 4; else they come later.
bool CReportHeader::TakePeriod(HeaderRows& rows) {
    enum { First, Last, EffectiveDays, Source = 6 };
    const CsvRow& period = rows.Next();
    Put(m_szDuring, Range(period.Field(First), period.Field(Last)));
    Put(m_szEffectiveDays, WithUnit(period.Field(EffectiveDays), kDays));
    return period.Field(Source) == "1";
}

/// Row 4.
void CReportHeader::TakeTargets(HeaderRows& rows, bool isOwnSource) {
    enum { Step, Calories, Activity, ModerateFrom, ModerateTo };
    const CsvRow& targets = rows.Next();
    if (isOwnSource) {
        Put(m_szStepTarget, WithUnit(targets.Field(Step), kSteps));
        Put(m_szActTarget, WithUnit(targets.Field(Activity), kMinutes));
    }
    Put(m_szCalTarget, WithUnit(targets.Field(Calories), kCalories));
    Put(m_szModerate, Range(targets.Field(ModerateFrom), targets.Field(ModerateTo)));
}

/// Rows 5 to 9.
void CReportHeader::TakeFigures(HeaderRows& rows) {
    enum { Activity, Total, Steps };
    Put(m_szExclude, Spaced(rows.Next().Field(0)));
    const CsvRow& means = rows.Next();
    Put(m_szAveActCal, WithUnit(means.Field(Activity), kCalories));
    Put(m_szAveTotalCal, WithUnit(means.Field(Total), kCalories));
    Put(m_szAveStep, WithUnit(means.Field(Steps), kSteps));
    const CsvRow& maxima = rows.Next();
    Put(m_szMaxActCal, WithUnit(maxima.Field(Activity), kCalories));
    Put(m_szMaxTotalCal, WithUnit(maxima.Field(Total), kCalories));
    Put(m_szMaxStep, WithUnit(maxima.Field(Steps), kSteps));
    rows.Skip(1);
    Put(m_szSite, " " + rows.Next().Field(0));
}

/// Row 13, behind three that nobody reads.
void CReportHeader::TakeLateTargets(HeaderRows& rows) {
    enum { Activity, Step };
    rows.Skip(3);
    const CsvRow& targets = rows.Next();
    Put(m_szActTarget, WithUnit(targets.Field(Activity), kMinutes));
    Put(m_szStepTarget, WithUnit(targets.Field(Step), kSteps));
}

int CReportHeader::CalcRect(HDC, CRect, CString) { return 0; }

int CReportHeader::Draw(HDC surface, CRect block, CString) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    COleDateTime today;
    today = now;
    Put(m_szDate, Spaced(FormatDateEx(today.Format("%Y%m%d"), m_strDateFormatType, m_strLocale)));
    DrawRectangle(surface, block, kWhite, kWhite, 0);
    return 0;
}

HFONT CReportHeader::HeaderFont(HDC surface, int size) const {
    return melkar::MakeChartFont(surface, size, m_nCharset, m_strFont);
}

melkar::HeaderSamples CReportHeader::MeasureSamples(int size) const {
    const melkar::ScopedFont font(m_hDC, HeaderFont(m_hDC, size));
    const auto sizeOf = [this](const CString& text) { return SizeOf(m_hDC, text); };
    return {sizeOf(m_str1stLabel), sizeOf(m_str1stText),  sizeOf(m_str2ndLabel), sizeOf(m_str2ndText),
            sizeOf(m_str3rdLabel), sizeOf(m_str4thLabel), sizeOf(m_str4thText)};
}
