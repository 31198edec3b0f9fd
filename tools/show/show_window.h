#pragma once

#include "draw.h"

#include <MelkarCommon/gtk4/chart.h>

#include <string>
#include <vector>

namespace melkar::tool {

/// A chart, and below it what is doubted of its files and what went wrong. It draws anew when one of them changes.
class ShowWindow : public Gtk::Window {
public:
    explicit ShowWindow(Request request);
    ~ShowWindow() override;

private:
    void Watch();
    void Follow(); ///< soon, when the file is whole
    void Check();
    void Tell(long result);

    Request m_request;
    Gtk::Box m_box{Gtk::Orientation::VERTICAL};
    gtk4::Chart m_chart;
    Gtk::ScrolledWindow m_scroll;
    Gtk::Label m_said;
    std::string m_doubts; ///< a line each
    std::vector<Glib::RefPtr<Gio::FileMonitor>> m_monitors;
    sigc::connection m_following;
};

} // namespace melkar::tool
