#pragma once

#include <MelkarCommon/widgets/picture.h>

#include <QWidget>

#include <memory>
#include <string>
#include <vector>

class QPrinter;

/// @file
/// A chart in a window of Qt 6.
///
/// @code{.cpp}
/// melkar::qt6::Chart chart(melkar::MakeGraph<CStepGraph>, {"STEPS",
/// "app/bin"}, "steps.csv"); chart.SetDarkLooks({"STEPS_DARK", "app/bin"});
/// QObject::connect(&chart, &melkar::qt6::Chart::dayClicked, [](long day) {
/// qInfo() << day; }); chart.show();
/// @endcode

namespace melkar::qt6 {

/// Shows any graph in the size that it gets, in the pixels of its screen,
/// fractions of a pixel a unit included.
///
/// Pointer: balloons, or a tooltip for graphs that have none; a click tells its
/// day; the other button opens a menu to copy, save and print the picture.
/// Keyboard: the arrow keys, Home, End, Page Up and Page Down walk from day to
/// day, or slice to slice; Enter clicks, Escape ends the walk, Menu and
/// Shift+F10 open the menu. Programs that read aloud have the description of
/// the picture and a table with a row for each day.
///
/// A graph lives as long as its looks. Where the data file can't be read, or
/// drawing fails, the last good picture stays.
class MELKAR_API Chart : public QWidget {
    Q_OBJECT

public:
    /// @param make makes the graph @param looks of its picture @param data path
    /// of its data file; empty: it is filled
    explicit Chart(GraphMaker make, ChartLooks looks, std::string data = "", QWidget* parent = nullptr);
    /// The same for what is no graph, such as sheets of a week.
    explicit Chart(PictureMaker make, ChartLooks looks, std::string data = "", QWidget* parent = nullptr);
    ~Chart() override;

    /// @name What is shown, from the next event on
    /// @{
    void SetLooks(ChartLooks looks);     ///< makes the graph anew
    void SetDarkLooks(ChartLooks looks); ///< likewise, where the desktop is dark
    void SetData(std::string path);      ///< reads another file
    void Reload();                       ///< the profile and the data have changed: makes the graph anew
    void Redraw();                       ///< the data have changed, or what the host has set of the graph
    /// @}

    void SetMenuWords(const ChartMenuWords& words); ///< of the menu, from now on
    QSize sizeHint() const override;                ///< 720 x 400; it takes what room there is
    QSize minimumSizeHint() const override;         ///< less shows nothing of any chart

    long Result() const;                        ///< of the last drawing; `ResultText` says it in words
    bool IsDark() const;                        ///< whether the desktop is
    const std::vector<Contents>& Shown() const; ///< of the picture that is shown
    ChartPicture* Picture() const;              ///< that is shown, the widget's; null before the first good one

    void Copy();                               ///< the picture to the clipboard
    std::string Save(const std::string& path); ///< png, svg, pdf, ... by the suffix. @return
                                               ///< empty, or why it failed
    void PrintOn(QPrinter& printer);           ///< on a page of a host's own dialog, as
                                               ///< large as it can be
    void Print();                              ///< by a dialog

signals:
    void dayClicked(long day);     ///< the index of a day, or of an item of the picture
    void darkChanged(bool isDark); ///< by the desktop
    void drawn(long result);       ///< well or not

protected:
    bool event(QEvent* event) override;                       ///< tooltips, looks of the desktop, finer screens
    void paintEvent(QPaintEvent* event) override;             ///< shows the picture
    void resizeEvent(QResizeEvent* event) override;           ///< draws it in that size
    void mouseMoveEvent(QMouseEvent* event) override;         ///< balloons
    void mousePressEvent(QMouseEvent* event) override;        ///< waits for its release
    void mouseReleaseEvent(QMouseEvent* event) override;      ///< tells the day
    void leaveEvent(QEvent* event) override;                  ///< no balloon
    void keyPressEvent(QKeyEvent* event) override;            ///< walks
    void focusInEvent(QFocusEvent* event) override;           ///< shows itself where the keyboard brought it
    void focusOutEvent(QFocusEvent* event) override;          ///< ends the walk
    void contextMenuEvent(QContextMenuEvent* event) override; ///< opens the menu

private:
    friend class SpokenChart;
    class Works;
    std::unique_ptr<Works> m_works;
};

} // namespace melkar::qt6
