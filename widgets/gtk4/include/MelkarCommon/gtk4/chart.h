#pragma once

#include <MelkarCommon/widgets/picture.h>

#include <glibmm/extraclassinit.h>
#include <gtkmm.h>

#include <memory>
#include <string>
#include <vector>

/// @file
/// A chart in a window of GTK 4.
///
/// @code{.cpp}
/// auto* chart = Gtk::make_managed<melkar::gtk4::Chart>(
///     melkar::MakeGraph<CStepGraph>, melkar::ChartLooks{"STEPS", "app/bin"}, "steps.csv");
/// chart->SetDarkLooks({"STEPS_DARK", "app/bin"});
/// chart->signal_day().connect([](long day) { g_print("%ld\n", day); });
/// window.set_child(*chart);
/// @endcode

namespace melkar::gtk4 {

/// What the type of the widget adds to that of its base. Internal.
class MELKAR_API ChartType : public Glib::ExtraClassInit {
protected:
    ChartType();
};

/// Shows any graph in the size that it gets, in the pixels of its screen.
///
/// Pointer: balloons, or a tooltip for graphs that have none; a click tells its day; the other button, or a long press,
/// opens a menu to copy, save and print the picture. Keyboard: the arrow keys, Home, End, Page Up and Page Down walk
/// from day to day, or slice to slice; Enter clicks, Escape ends the walk, Menu and Shift+F10 open the menu. Programs
/// that read aloud have the description of the picture and a table with a row for each day.
///
/// A graph lives as long as its looks. Where the data file can't be read, or drawing fails, the last good picture
/// stays.
class MELKAR_API Chart : public ChartType, public Gtk::Widget {
public:
    /// @param make makes the graph @param looks of its picture @param data path of its data file; empty: it is filled
    explicit Chart(GraphMaker make, ChartLooks looks, std::string data = "");
    /// The same for what is no graph, such as sheets of a week.
    explicit Chart(PictureMaker make, ChartLooks looks, std::string data = "");
    ~Chart() override;

    /// @name What is shown, soon after the call
    /// @{
    void SetLooks(ChartLooks looks);     ///< makes the graph anew
    void SetDarkLooks(ChartLooks looks); ///< likewise, where the desktop is dark
    void SetData(std::string path);      ///< reads another file
    void Reload();                       ///< the profile and the data have changed: makes the graph anew
    void Redraw();                       ///< the data have changed, or what the host has set of the graph
    /// @}

    void SetMenuWords(const ChartMenuWords& words);
    void SetNaturalSize(int width, int height); ///< units; 720 x 400 at the start. It takes what room there is

    long Result() const;                        ///< of the last drawing; `ResultText` says it in words
    bool IsDark() const;                        ///< whether the desktop is
    const std::vector<Contents>& Shown() const; ///< of the picture that is shown
    ChartPicture* Picture() const;              ///< that is shown, the widget's; null before the first good one

    void Copy();                                 ///< the picture to the clipboard
    std::string Save(const std::string& path);   ///< png, svg, pdf, ... by the suffix. @return empty, or why it failed
    void SetUpPrint(Gtk::PrintOperation& print); ///< for a host's own dialog: one page, as large as it can be
    void Print();                                ///< by a dialog

    /// Somebody clicked: the index of a day, or of an item of the picture.
    sigc::signal<void(long day)>& signal_day();
    sigc::signal<void(bool isDark)>& signal_dark_changed(); ///< by the desktop
    sigc::signal<void(long result)>& signal_drawn();        ///< well or not

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural, int& minimumBaseline,
                       int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;
    bool on_query_tooltip(int x, int y, bool keyboard, const Glib::RefPtr<Gtk::Tooltip>& tooltip) override;

private:
    friend class ChartType;
    class Works;
    std::unique_ptr<Works> m_works;
};

} // namespace melkar::gtk4
