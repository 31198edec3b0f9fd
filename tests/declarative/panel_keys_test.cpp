#include "panel_fixture.h"

#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/frame/key_table.h>

namespace {

using melkar::KeyInfo;
using melkar::KeyType;

std::ostream& operator<<(std::ostream& out, const POINT& point) { return out << point.x << ',' << point.y; }
std::ostream& operator<<(std::ostream& out, const value_set& set) { return out << set.x << ',' << set.y; }

/// Everything that keys of the panel can reach, in one text.
class SeenPanel : public CGraphBase {
public:
    using CGraphBase::CGraphBase;

    std::string State() const {
        std::ostringstream all;
        const auto put = [&all](const auto&... members) { ((all << members << ' '), ...); };
        put(m_crBaseBk, m_crBaseBorder, m_nBaseBorderWidth, m_strTitleLabel.GetString(), m_ptTitleOffsetLT,
            m_nTitleOffsetR, m_nTitleHeight, m_nTitleFont, m_crTitleLabel, m_crTitleBk, m_ptGraphOffsetLT,
            m_ptGraphOffsetRB);
        put(m_nGraphVDivideL, m_nGraphVDivideR, m_nGraphHDivide, m_nGraphVDivideWidthL, m_nGraphVDivideWidthR,
            m_nGraphHDivideHeight, m_bGraphVGridL, m_bGraphVGridR, m_bGraphHGrid, m_crGraphBk, m_crGraphGrid);
        put(m_bVScaleL, m_bVScaleR, m_vsMaxL, m_vsMinL, m_vsMaxR, m_vsMinR, m_nVScaleOffsetL, m_nVScaleOffsetR,
            m_nHScaleOffset, m_nVScaleWidthL, m_nVScaleWidthR, m_nHScaleHeight, m_nVScaleFontL, m_nVScaleFontR);
        put(m_nHScaleFont, m_strVScaleFormatL.GetString(), m_strVScaleFormatR.GetString(),
            m_strHScaleFormat.GetString(), m_nVLabelWidthL, m_nVLabelWidthR, m_nHLabelHeight, m_nVLabelFontL,
            m_nVLabelFontR, m_nHLabelFont, m_strVLabelL.GetString(), m_strVLabelR.GetString(), m_strHLabel.GetString());
        put(m_bNoteShow, m_ptNoteOffsetLT, m_ptNoteOffsetRB, m_crNoteBk, m_nNoteFont, m_nNoteMarkWidth);
        for (const note_label& row : m_vecNoteLabels)
            put(row.text.GetString(), row.mark_color);
        return all.str();
    }
};

class SeenPie : public CCircleGraphBase {
public:
    using CCircleGraphBase::CCircleGraphBase;

    std::string State() const {
        std::ostringstream all;
        all << m_nValueFont << m_strValueFormat.GetString() << m_strValueUnit.GetString();
        for (const circle_value& slice : m_vecValues)
            all << ' ' << slice.color;
        return all.str();
    }
};

class SeenText : public CFixedText {
public:
    using CFixedText::CFixedText;

    std::string State() const {
        std::ostringstream all;
        all << m_strText.GetString() << ' ' << m_strFontName.GetString() << m_nFontSize << ' ' << m_crText;
        return all.str();
    }
};

/// A value that no key of the type has by default.
std::string OtherValue(const KeyInfo& key) {
    switch (key.type) {
    case KeyType::TrueWord:
        return "True";
    case KeyType::Real:
        return "3.5";
    case KeyType::Color:
        return "1,2,3";
    case KeyType::Point:
        return "4,5";
    case KeyType::Number:
        return "77";
    default:
        return "other";
    }
}

/// The default of the key, written out.
std::string DefaultValue(const KeyInfo& key) {
    if (key.type == KeyType::Color)
        return std::to_string(key.fallback & 0xFF) + "," + std::to_string(key.fallback >> 8 & 0xFF) + "," +
               std::to_string(key.fallback >> 16 & 0xFF);
    if (key.type == KeyType::Number)
        return std::to_string(key.fallback);
    if (key.type == KeyType::Point)
        return "0,0";
    return key.type == KeyType::Text ? key.fallbackText : "0";
}

class PanelKeys : public PanelTest {
protected:
    /// The lines that name `key`, and its gate if `isOpen`.
    static std::string Lines(const KeyInfo& key, const std::string& value, bool isOpen) {
        std::string name = key.name;
        if (const auto at = name.find("%s"); at != std::string::npos)
            name.replace(at, 2, "ADVICE");
        if (const auto at = name.find("%d"); at != std::string::npos)
            name.replace(at, 2, std::to_string(key.firstIndex));
        std::string lines = name + "=" + value + "\n";
        if (*key.gate && isOpen)
            lines += std::string(key.gate) + "=true\n";
        return lines + Rest(key);
    }
    /// The first row of the list that other keys belong to.
    static std::string Rest(const KeyInfo& key) {
        return std::string_view(key.name) == "NOTE_LABEL%d" ? "" : "NOTE_LABEL1=row\n";
    }

    template <class Make> void HoldEachKeyToItsTable(const std::vector<KeyInfo>& keys, Make stateOf) {
        ASSERT_FALSE(keys.empty());
        for (const KeyInfo& key : keys) {
            const std::string open = *key.gate ? std::string(key.gate) + "=true\n" : "";
            const std::string none = stateOf(Rest(key) + open);
            EXPECT_NE(stateOf(Lines(key, OtherValue(key), true)), none) << key.name << " isn't read";
            if (!*key.fallbackKey) {
                EXPECT_EQ(stateOf(Lines(key, DefaultValue(key), true)), none) << key.name << " has another default";
            }
            if (*key.gate) {
                EXPECT_EQ(stateOf(Lines(key, OtherValue(key), false)), stateOf(Rest(key)))
                    << key.name << " is read behind its closed gate";
            }
        }
    }

    void Profile(const std::string& keys) const {
        m_files.Write("conf/graph.cnf", "[COMMON]\nFONT=Fixed\n[OWN]\n" + keys);
    }
};

TEST_F(PanelKeys, EachKeyOfThePanelHasTheDefaultAndTheGateOfItsTable) {
    HoldEachKeyToItsTable(CGraphBase::ProfileKeys().keys, [this](const std::string& lines) {
        Profile(lines);
        auto panel = Make<SeenPanel>();
        ReadProfile(panel);
        return panel.State();
    });
}

TEST_F(PanelKeys, SoHasEachKeyOfPiesAndTexts) {
    HoldEachKeyToItsTable(CCircleGraphBase::ProfileKeys().keys, [this](const std::string& lines) {
        Profile(lines);
        return Make<SeenPie>(0.0F).State();
    });
    HoldEachKeyToItsTable(CFixedText::ProfileKeys().keys, [this](const std::string& lines) {
        Profile(lines);
        return SeenText(nullptr, m_record, "OWN", "ADVICE", nullptr, nullptr, nullptr, 0, 0).State();
    });
}

TEST_F(PanelKeys, AnotherKeysValueStandsInForAMissingOne) {
    Profile("BASE_RGB=1,2,3\nADVICE=x\n");
    auto panel = Make<SeenPanel>();
    ReadProfile(panel);
    EXPECT_EQ(panel.State().substr(0, 14), "197121 197121 ") << "the border takes the colour of the ground";
    panel.ResetBaseColor(5);
    ReadProfile(panel);
    EXPECT_EQ(panel.GetBaseColor(), 197121U) << "reading undoes what a host has set";
    EXPECT_EQ(SeenText(nullptr, m_record, "OWN", "ADVICE", nullptr, nullptr, nullptr, 0, 0).State(), "x Fixed20 0");
}

} // namespace
