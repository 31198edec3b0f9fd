#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/reports/header_cells.h>
#include <MelkarCommon/reports/text_slot.h>
#include <MelkarCommon/support/ini_reader.h>

/// @file
/// The block that opens a printed report.

/// The block that opens a printed report: the person, the period and its figures. It reads the profile's labels and
/// samples and the report header data file, and owns the cells; the layouts stand in the classes below it.
///
/// In the data file a row beyond its end repeats the last one that is there. The text formats of the slots are fixed;
/// every slot holds at most 255 bytes.
class MELKAR_API CReportHeader {
public:
    /// Reads the block's keys from "..\conf\graph.cnf". @param section the block's own section
    explicit CReportHeader(const char* section);
    CReportHeader(const CReportHeader&) = default;            ///< the same texts and cells
    CReportHeader& operator=(const CReportHeader&) = default; ///< the same texts and cells
    virtual ~CReportHeader() = default;

    /// Fills the slots from the data file. @return 0; -1, with all slots as they were, if it can't be opened.
    virtual int GetData(CString dataFile);
    /// Stores today's date in its slot and clears the block. @return 0.
    virtual int Draw(HDC surface, CRect block, CString dataFile);
    virtual int ReadIniFile(char* path); ///< reads the keys. @return 0.
    /// Lays nothing out; a derived class reads the data file and places the cells. @return 0.
    virtual int CalcRect(HDC surface, CRect block, CString dataFile);

    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    /// Where its profile, the formats of its dates and its log are: where they were when it was made.
    const melkar::HostPlace& Host() const { return m_Ini.Host(); }
    static melkar::DataTables DataFiles(); ///< the data file that it reads

protected:
    HFONT HeaderFont(HDC surface, int size) const; ///< size in points, 11 if it is 0 or below; the caller's
    /// The sample texts as they measure on `m_hDC` in a font of `size` points.
    melkar::HeaderSamples MeasureSamples(int size) const;

    melkar::TextSlot m_szFont{}; ///< the face once more, as a plain buffer
    CString m_strFont;           ///< face of texts
    CString m_strDateFormatType; ///< key of the date format in the date profile
    int m_nCharset = 0;          ///< character set of texts
    HDC m_hDC = nullptr;         ///< surface of the last layout; the caller's
    CIniReader m_Ini;            ///< bound to the profile of all graphs
    CString m_strSection;        ///< the block's own section of the profile

public:
    melkar::TextSlot m_szName{}; ///< the three parts and the person's unit

    /// @name Texts of the data file
    /// @{

    /// What the data file says under that name, with its unit; the date is that of printing.
    melkar::TextSlot m_szName1{}, m_szName2{}, m_szName3{};
    melkar::TextSlot m_szGroup{}, m_szNickname{}, m_szDate{}, m_szComment{};
    melkar::TextSlot m_szHeight{}, m_szWeight{}, m_szSex{}, m_szAge{}, m_szBmi{};
    melkar::TextSlot m_szExclude{}, m_szDuring{}, m_szSite{}, m_szEffectiveDays{};
    melkar::TextSlot m_szStepTarget{}, m_szCalTarget{}, m_szActTarget{};
    melkar::TextSlot m_szModerate{};
    melkar::TextSlot m_szAveActCal{}, m_szMaxActCal{}, m_szAveTotalCal{}, m_szMaxTotalCal{}, m_szAveStep{},
        m_szMaxStep{};
    /// @}

    /// @name Labels of the profile
    /// @{

    /// What stands beside the text of that name.
    melkar::TextSlot m_szNameLabel{}, m_szGroupLabel{}, m_szNicknameLabel{}, m_szDateLabel{}, m_szCommentLabel{};
    melkar::TextSlot m_szHeightLabel{}, m_szWeightLabel{}, m_szSexLabel{}, m_szAgeLabel{}, m_szBmiLabel{};
    melkar::TextSlot m_szExcludeLabel{}, m_szDuringLabel{}, m_szSiteLabel{}, m_szEffectiveDaysLabel{};
    melkar::TextSlot m_szStepTargetLabel{}, m_szCalTargetLabel{}, m_szActTargetLabel{}, m_szModerateLabel{};
    melkar::TextSlot m_szAveActCalLabel{}, m_szMaxActCalLabel{}, m_szAveTotalCalLabel{}, m_szMaxTotalCalLabel{};
    melkar::TextSlot m_szAveStepLabel{}, m_szMaxStepLabel{};
    /// @}

    melkar::HeaderCells m_rcCells{}; ///< by `melkar::HeaderCell`; empty until a layout fills them

protected:
    /// @name Samples
    /// @{

    /// A text of the profile whose width is that of a column of labels or texts.
    CString m_str1stLabel, m_str2ndLabel, m_str3rdLabel, m_str4thLabel;
    CString m_str1stText, m_str2ndText, m_str3rdText, m_str4thText;
    /// @}

    int m_nHeaderSize = 0; ///< points
    CString m_strLocale;   ///< locale of dates

    /// @name Units
    /// @{

    /// A text of the profile; those of person and age stand behind name and age, the others are kept.
    CString m_strPersonUnit, m_strAgeUnit;
    CString m_strCalUnit, m_strStepUnit, m_strMinUnit, m_strKmUnit, m_strMileUnit, m_strKgUnit, m_strLbsUnit;
    /// @}

    /// @name Headers
    /// @{

    /// A text of the profile, kept.
    CString m_strLeftHeader, m_strCenterHeader, m_strRightHeader;
    /// @}

private:
    struct SlotKeys;
    struct KeyRows;
    struct Slots;
    struct File;
    MELKAR_LOCAL void Put(melkar::TextSlot& slot, const CString& text) const;
};
