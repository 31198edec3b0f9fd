// The day's figures in words, within the left panel.

#include <MelkarCommon/circadian/circadian_graph.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/text_measure.h>

using melkar::ScopedFont;

namespace {

/// Stands for no text: under `LANG` 0 the summary is indented by its width.
constexpr const char* kIndent = "☆";

} // namespace

/// In the colour and the mode that the panel's other steps have left: a derived class changes them there.
void CCircadianGraph::WriteMessage() {
    if (m_nLang != melkar::kLangExercise)
        m_strActCalUnit.Replace("  ", "\n");
    const ScopedFont font(m_hMemDC, PlainFont(m_nSummaryFontSize));
    CRect box = melkar::SummaryBox(m_rcLeft);
    if (m_nLang == melkar::kLangExercise)
        box.OffsetRect(MeasureText(kIndent, DT_CALCRECT).Width(), 0);
    melkar::PaintTextAsSet(m_hMemDC, SummaryText(), box, DT_LEFT);
}

CString CCircadianGraph::SummaryText() const {
    const bool exercise = m_nLang == melkar::kLangExercise;
    CString text;
    text.Format("%d %s %d %s %d %s", m_nSteps, m_strStepUnit.GetString(), m_nActCal, m_strActCalUnit.GetString(),
                m_nTotalCal, m_strTotalCalUnit.GetString());
    text += exercise ? ExerciseText() : " " + melkar::FormatFixed(m_dTime, 1) + " " + m_strTimeUnit;
    if (m_bToroken)
        text += (exercise ? "\n" : "\n ") + m_strToroken;
    return text;
}

/// Empty for a day without an exercise amount.
CString CCircadianGraph::ExerciseText() const {
    if (!(m_fExercise > -1.0F))
        return {};
    return " " + m_strExerciseLabel + " " + melkar::FormatFixed(m_fExercise, 1) + m_strExerciseUnit;
}
