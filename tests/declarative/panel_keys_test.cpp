#include "panel_fixture.h"

#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/frame/key_table.h>

#include <map>
#include <regex>

namespace {

using melkar::KeyInfo;
using melkar::KeyType;

std::ostream& operator<<(std::ostream& out, const POINT& point) { return out << point.x << ',' << point.y; }
std::ostream& operator<<(std::ostream& out, const value_set& set) { return out << set.x << ',' << set.y; }
std::ostream& operator<<(std::ostream& out, const CString& text) { return out << text.GetString(); }

/// All `members` in one text.
template <class... Members> std::string Text(const Members&... members) {
    std::ostringstream text;
    ((text << members << ' '), ...);
    return text.str();
}

/// Everything that keys of the panel can reach, in one text.
class SeenPanel : public CGraphBase {
public:
    using CGraphBase::CGraphBase;

    std::string State() const {
        std::string state = Text(
            m_crBaseBk, m_crBaseBorder, m_nBaseBorderWidth, m_strTitleLabel, m_ptTitleOffsetLT, m_nTitleOffsetR,
            m_nTitleHeight, m_nTitleFont, m_crTitleLabel, m_crTitleBk, m_ptGraphOffsetLT, m_ptGraphOffsetRB,
            m_nGraphVDivideL, m_nGraphVDivideR, m_nGraphHDivide, m_nGraphVDivideWidthL, m_nGraphVDivideWidthR,
            m_nGraphHDivideHeight, m_bGraphVGridL, m_bGraphVGridR, m_bGraphHGrid, m_crGraphBk, m_crGraphGrid,
            m_bVScaleL, m_bVScaleR, m_vsMaxL, m_vsMinL, m_vsMaxR, m_vsMinR, m_nVScaleOffsetL, m_nVScaleOffsetR,
            m_nHScaleOffset, m_nVScaleWidthL, m_nVScaleWidthR, m_nHScaleHeight, m_nVScaleFontL, m_nVScaleFontR,
            m_nHScaleFont, m_strVScaleFormatL, m_strVScaleFormatR, m_strHScaleFormat, m_nVLabelWidthL, m_nVLabelWidthR,
            m_nHLabelHeight, m_nVLabelFontL, m_nVLabelFontR, m_nHLabelFont, m_strVLabelL, m_strVLabelR, m_strHLabel,
            m_bNoteShow, m_ptNoteOffsetLT, m_ptNoteOffsetRB, m_crNoteBk, m_nNoteFont, m_nNoteMarkWidth);
        for (const note_label& row : m_vecNoteLabels)
            state += Text(row.text, row.mark_color);
        return state;
    }
};

class SeenPie : public CCircleGraphBase {
public:
    using CCircleGraphBase::CCircleGraphBase;
    std::string State() const {
        std::string state = Text(m_nValueFont, m_strValueFormat, m_strValueUnit);
        for (const circle_value& slice : m_vecValues)
            state += Text(slice.color);
        return state;
    }
};

class SeenText : public CFixedText {
public:
    using CFixedText::CFixedText;
    std::string State() const { return Text(m_strText, m_strFontName, m_nFontSize, m_crText); }
};

class PanelKeys : public PanelTest {
protected:
    void Profile(const std::string& keys) const {
        m_files.Write("conf/graph.cnf", "[COMMON]\nFONT=Fixed\n[OWN]\n" + keys);
    }

    template <class State> void EachKeyHasAMemberOfItsOwn(const std::vector<KeyInfo>& keys, State stateOf) {
        std::string rest = "NOTE_LABEL1=row\n"; // all switches on, and a row for the keys of rows
        for (const KeyInfo& key : keys)
            if (key.type == KeyType::TrueWord)
                rest += std::string(key.name) + "=true\n";
        std::map<std::string, std::string> keyOf{{stateOf(rest), "no key at all"}};
        for (const KeyInfo& key : keys) {
            const auto name =
                std::regex_replace(std::regex_replace(key.name, std::regex("%d"), "1"), std::regex("%s"), "TEXT");
            // a number, a colour, a point and a text other than the default, and not the word "true"
            const auto [same, isNew] = keyOf.insert({stateOf(name + "=7,8,9\n" + rest), name});
            EXPECT_TRUE(isNew) << name << " has the effect of " << same->second;
        }
    }
};

TEST_F(PanelKeys, OfThePanelOfPiesAndOfTexts) {
    EachKeyHasAMemberOfItsOwn(CGraphBase::ProfileKeys().keys, [this](const std::string& keys) {
        Profile(keys);
        auto panel = Make<SeenPanel>();
        ReadProfile(panel);
        return panel.State();
    });
    EachKeyHasAMemberOfItsOwn(CCircleGraphBase::ProfileKeys().keys, [this](const std::string& keys) {
        Profile(keys);
        return Make<SeenPie>(0.0F).State();
    });
    EachKeyHasAMemberOfItsOwn(CFixedText::ProfileKeys().keys, [this](const std::string& keys) {
        Profile(keys);
        return SeenText(nullptr, m_record, "OWN", "TEXT", nullptr, nullptr, nullptr, 0, 0).State();
    });
}

} // namespace
