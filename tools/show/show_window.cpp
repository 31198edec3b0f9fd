#include "show_window.h"

#include "kinds.h"
#include "messages.h"
#include "warnings.h"

#include <MelkarCommon/hosts.h>

#include <filesystem>
#include <iostream>
#include <utility>

namespace melkar::tool {
namespace {

constexpr int kMostSaid = 160;        // units of height for what is said below the chart
constexpr unsigned kSettleTime = 150; // milliseconds without a change, in which an editor has written a file

/// A picture of the command in a widget.
class CommandPicture final : public ChartPicture {
public:
    explicit CommandPicture(const Request& request) : m_chart(MakeChart(*request.kind, request.chart)) {}

    void Bind(const LentSurfaces& lent) override {
        m_chart->Bind({lent.shared, lent.shared, lent.shared, lent.balloon, lent.isPage});
    }
    /// A kind may throw what it has to say; only a code gets through.
    long Read(char* path) override {
        try {
            return m_chart->Read(path);
        } catch (const std::exception& error) {
            Warn(error.what());
            return kReadFailed;
        }
    }
    long Draw(CRect area, char* path) override { return m_chart->Paint(area, path); }
    std::vector<Contents> Shown() const override { return m_chart->Shown(); }
    bool HasBalloons() const override { return m_chart->HasBalloons(); }
    long DayAt(CPoint point) override { return m_chart->Click(point); }
    bool Hover(CPoint point) override { return m_chart->Hover(point); }

private:
    std::unique_ptr<Chart> m_chart;
};

PictureMaker MakerFor(const Request& request) {
    return [&request](const ChartLooks&) { return std::make_unique<CommandPicture>(request); };
}

/// As `melkar draw --click` does.
void PrintDay(const std::vector<Contents>& shown, long day) {
    std::cout << "day " << day;
    if (shown.size() == 1 && static_cast<std::size_t>(day) < shown.front().items.size())
        std::cout << ' ' << shown.front().items[static_cast<std::size_t>(day)].caption;
    std::cout << std::endl;
}

} // namespace

ShowWindow::ShowWindow(Request request)
    : m_request(std::move(request)),
      m_chart(MakerFor(m_request), {m_request.chart.section, m_request.base}, m_request.data) {
    set_title(std::string(m_request.kind->kind) + " " + m_request.chart.section);
    m_chart.SetNaturalSize(m_request.size.width, m_request.size.height);
    m_said.set_wrap();
    m_said.set_selectable();
    m_said.set_xalign(0);
    m_said.set_margin(8);
    m_scroll.set_child(m_said);
    m_scroll.set_propagate_natural_height();
    m_scroll.set_max_content_height(kMostSaid);
    m_scroll.hide();
    m_box.append(m_chart);
    m_box.append(m_scroll);
    set_child(m_box);
    m_chart.signal_drawn().connect([this](long result) { Tell(result); });
    m_chart.signal_day().connect([this](long day) { PrintDay(m_chart.Shown(), day); });
    Watch();
    Check();
}

ShowWindow::~ShowWindow() { m_following.disconnect(); }

void ShowWindow::Watch() {
    for (const std::string& path : FilesReadFor(m_request)) {
        const auto file = Gio::File::create_for_path(std::filesystem::path(path).lexically_normal());
        const auto monitor = file->monitor_file(Gio::FileMonitorFlags::WATCH_MOVES);
        monitor->signal_changed().connect([this](const auto&, const auto&, Gio::FileMonitor::Event) { Follow(); });
        m_monitors.push_back(monitor);
    }
}

void ShowWindow::Follow() {
    m_following.disconnect();
    m_following = Glib::signal_timeout().connect(
        [this] {
            Check();
            m_chart.Reload();
            return false;
        },
        kSettleTime);
}

void ShowWindow::Check() {
    const HostDirectory host(m_request.base.c_str());
    const KeptMessages kept;
    WarnOfDoubts(m_request);
    m_doubts.clear();
    for (const KeptMessages::Message& message : kept.messages)
        m_doubts += message.what + "\n";
}

void ShowWindow::Tell(long result) {
    std::string said = m_doubts;
    if (result != kOk)
        said = std::to_string(result) + ": " + ResultText(result) + ": " + m_request.data + "\n" + said;
    if (!said.empty())
        said.pop_back();
    m_said.set_text(said);
    m_scroll.set_visible(!said.empty());
}

} // namespace melkar::tool
