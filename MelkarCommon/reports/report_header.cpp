#include <MelkarCommon/reports/report_header.h>

#include <MelkarCommon/platform/datetime.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/reports/header_rows.h>
#include <MelkarCommon/support/bounds.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_measure.h>

#include <algorithm>

using melkar::CsvRow;
using melkar::HeaderRows;
using melkar::kWhite;

namespace {

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

/// Keys whose texts go into slots.
struct CReportHeader::SlotKeys : melkar::Keys<CReportHeader> {
    template <auto Slot> static constexpr Row Label(const char* name, const char* says = "label") {
        return {{Own, name, melkar::KeyType::Text, 0, says}, Store<Slot>};
    }
    template <auto Slot> static constexpr Row KeptLabel(const char* name) {
        return Label<Slot>(name, "label; kept for a host");
    }
    template <auto Slot> static void Store(G& header, const melkar::KeyReader& reader, const melkar::KeyInfo& key) {
        header.Put(header.*Slot, reader.Text(key));
    }
};

struct CReportHeader::KeyRows : SlotKeys {
    static constexpr Row rows[] = {
        Text<&G::m_strFont>(Common, "FONT", "face of all texts").Face().Example("DejaVu Sans"),
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
        Text<&G::m_str3rdText>(Own, "3RD_TEXT", "kept; no layout uses it").Idle(),
        Text<&G::m_str4thText>(Own, "4TH_TEXT", "the same, the pair at the top right"),
        Label<&G::m_szNameLabel>("NAME_LABEL"),
        Label<&G::m_szGroupLabel>("GROUP_LABEL"),
        KeptLabel<&G::m_szNicknameLabel>("NICKNAME_LABEL"),
        Label<&G::m_szDateLabel>("DATE_LABEL"),
        Label<&G::m_szCommentLabel>("COMMENT_LABEL"),
        Label<&G::m_szHeightLabel>("HEIGHT_LABEL"),
        Label<&G::m_szWeightLabel>("WEIGHT_LABEL"),
        KeptLabel<&G::m_szSexLabel>("SEX_LABEL"),
        Label<&G::m_szAgeLabel>("AGE_LABEL"),
        KeptLabel<&G::m_szBmiLabel>("BMI_LABEL"),
        KeptLabel<&G::m_szExcludeLabel>("EXCLUDE_LABEL"),
        KeptLabel<&G::m_szDuringLabel>("DURING_LABEL"),
        KeptLabel<&G::m_szSiteLabel>("SITE_LABEL"),
        KeptLabel<&G::m_szEffectiveDaysLabel>("EFFECTIVEDAYS_LABEL"),
        KeptLabel<&G::m_szStepTargetLabel>("STEP_TARGET_LABEL"),
        KeptLabel<&G::m_szCalTargetLabel>("CAL_TARGET_LABEL"),
        KeptLabel<&G::m_szActTargetLabel>("ACT_TARGET_LABEL"),
        KeptLabel<&G::m_szModerateLabel>("MODERATE_LABEL"),
        KeptLabel<&G::m_szAveActCalLabel>("AVE_ACT_CAL_LABEL"),
        KeptLabel<&G::m_szMaxActCalLabel>("MAX_ACT_CAL_LABEL"),
        KeptLabel<&G::m_szAveTotalCalLabel>("AVE_TOTAL_CAL_LABEL"),
        KeptLabel<&G::m_szMaxTotalCalLabel>("MAX_TOTAL_CAL_LABEL"),
        KeptLabel<&G::m_szAveStepLabel>("AVE_STEP_LABEL"),
        KeptLabel<&G::m_szMaxStepLabel>("MAX_STEP_LABEL"),
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

CReportHeader::CReportHeader(const char* section) : m_Ini(melkar::kGraphProfile), m_strSection(section) {
    CReportHeader::ReadIniFile(melkar::GraphProfile());
}

int CReportHeader::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    if (m_strDateFormatType.IsEmpty())
        melkar::ReadKeys(KeyRows::commonDateFormat, *this, path, m_strSection);
    Put(m_szFont, m_strFont);
    return 0;
}

melkar::ClassKeys CReportHeader::ProfileKeys() {
    auto keys = melkar::InfoOf(KeyRows::rows);
    keys.push_back(KeyRows::commonDateFormat[0].info);
    return {"CReportHeader", keys};
}

void CReportHeader::Put(melkar::TextSlot& slot, const CString& text) const { melkar::PutText(slot, text, m_nCharset); }

/// The texts stand in the slots as they are painted: a row says which words stand around the field.
struct CReportHeader::Slots : melkar::Columns<CReportHeader> {
    using Shown = CString (*)(const G&, const CsvRow& line, int column);

    static CString AsItIs(const G&, const CsvRow& line, int column) { return line.Field(column); }
    static CString Led(const G&, const CsvRow& line, int column) { return " " + line.Field(column); }
    static CString Around(const G&, const CsvRow& line, int column) { return Spaced(line.Field(column)); }
    static CString Years(const G& header, const CsvRow& line, int column) {
        return WithUnit(line.Field(column), header.m_strAgeUnit);
    }
    static CString Days(const G&, const CsvRow& line, int column) { return WithUnit(line.Field(column), kDays); }
    static CString Steps(const G&, const CsvRow& line, int column) { return WithUnit(line.Field(column), kSteps); }
    static CString Minutes(const G&, const CsvRow& line, int column) { return WithUnit(line.Field(column), kMinutes); }
    static CString Calories(const G&, const CsvRow& line, int column) {
        return WithUnit(line.Field(column), kCalories);
    }
    /// Of two columns.
    static CString FromTo(const G&, const CsvRow& line, int column) {
        return Range(line.Field(column), line.Field(column + 1));
    }

    template <auto Slot, Shown Format = AsItIs>
    static constexpr Row In(int head, int column, const char* name, const char* example) {
        return Row{{melkar::ColumnKind::Text, column, name}, Store<Slot, Format>, Show<Slot>}.InHead(head).Example(
            example);
    }
    template <auto Slot, Shown Format>
    static void Store(G& header, const CsvRow& line, const melkar::ColumnInfo& column) {
        header.Put(header.*Slot, Format(header, line, column.index));
    }
    template <auto Slot> static std::string Show(const G& header, const melkar::ColumnInfo&, int, int) {
        return header.*Slot;
    }
};

struct CReportHeader::File : Slots {
    static constexpr int kPeriod = 3; ///< row of the period
    static constexpr int kSource = 6; ///< its column that says which rows hold the targets
    static constexpr int kEnd = 10;   ///< rows, if row 4 holds all targets
    static constexpr const char* kOwnSource = "1";

    static constexpr Form form = Form{14, ""}
                                     .Limit(melkar::kHeaderRowLimit)
                                     .Note("With 1 in column 6 of row 3 the file ends with row 9, else the "
                                           "targets of steps and activity are those of row 13. A row that "
                                           "isn't there repeats the last one.");
    static constexpr Row rows[] = {
        In<&G::m_szName1>(0, 0, "name 1", "Dr."),
        In<&G::m_szName2>(0, 1, "name 2", "Ann"),
        In<&G::m_szName3>(0, 2, "name 3", "Weaver"),
        In<&G::m_szNickname>(0, 3, "nickname", "annie"),
        In<&G::m_szGroup, Led>(0, 4, "group", "Morning walkers"),
        In<&G::m_szComment, Led>(1, 0, "comment", "Walks to work since February"),
        In<&G::m_szAge, Years>(2, 0, "age", "46"),
        In<&G::m_szSex, Around>(2, 1, "sex", "female"),
        In<&G::m_szHeight, Around>(2, 2, "height", "179 cm"),
        In<&G::m_szWeight, Around>(2, 3, "weight", "71.8 kg"),
        In<&G::m_szBmi, Around>(2, 4, "BMI", "22.4"),
        In<&G::m_szDuring, FromTo>(3, 0, "period", "2026/03/01|2026/03/31").Each(2).Means("first and last day"),
        In<&G::m_szEffectiveDays, Days>(3, 2, "days", "26").Means("with records"),
        Unread(kSource, "source").InHead(kPeriod).Means("1: row 4 holds all targets").Example(kOwnSource),
        In<&G::m_szStepTarget, Steps>(4, 0, "step target", "8000"),
        In<&G::m_szCalTarget, Calories>(4, 1, "calorie target", "2100"),
        In<&G::m_szActTarget, Minutes>(4, 2, "activity target", "30"),
        In<&G::m_szModerate, FromTo>(4, 3, "moderate", "3|6").Each(2).Means("ends of the moderate range"),
        In<&G::m_szExclude, Around>(5, 0, "excluded", "none"),
        In<&G::m_szAveActCal, Calories>(6, 0, "average activity calories", "375"),
        In<&G::m_szAveTotalCal, Calories>(6, 1, "average total calories", "2225"),
        In<&G::m_szAveStep, Steps>(6, 2, "average steps", "7402"),
        In<&G::m_szMaxActCal, Calories>(7, 0, "highest activity calories", "573"),
        In<&G::m_szMaxTotalCal, Calories>(7, 1, "highest total calories", "2423"),
        In<&G::m_szMaxStep, Steps>(7, 2, "highest steps", "11911"),
        In<&G::m_szSite, Led>(9, 0, "site", "Riverside clinic"),
        In<&G::m_szActTarget, Minutes>(13, 0, "activity target", ""),
        In<&G::m_szStepTarget, Steps>(13, 1, "step target", ""),
    };
};

melkar::DataTables CReportHeader::DataFiles() { return {melkar::TableOf<File>()}; }

int CReportHeader::GetData(CString dataFile) {
    const melkar::HostDirectory here(Host());
    HeaderRows rows(dataFile);
    if (!rows.IsOpen())
        return -1;
    int end = File::form.heads;
    for (int row = 0; row < end; ++row) {
        const CsvRow& line = rows.Next();
        melkar::TakeRow<File>(*this, line, row);
        if (row == File::kPeriod && line.Field(File::kSource) == File::kOwnSource)
            end = File::kEnd;
    }
    Put(m_szName, CString(" ") + m_szName1 + " " + m_szName2 + " " + m_szName3 + m_strPersonUnit);
    return 0;
}

int CReportHeader::CalcRect(HDC, CRect, CString) { return 0; }

int CReportHeader::Draw(HDC surface, CRect block, CString) {
    const melkar::HostDirectory here(Host());
    SYSTEMTIME now{};
    GetLocalTime(&now);
    COleDateTime today;
    today = now;
    Put(m_szDate, Spaced(FormatDateEx(today.Format("%Y%m%d"), m_strDateFormatType, m_strLocale)));
    if (melkar::MakesSense(block))
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
