// This library as an application uses it: a data file for each redraw, and a line in the log.

#include "work.h"

#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>
#include <cstdlib>
#include <ftw.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

/// A directory with the profile of the samples, the current one while it lives. It is made by calls of the system:
/// the paths and streams of the C++ library are half a MiB of code, which peers that need no file don't load either.
class Directory {
public:
    Directory() {
        Must(mkdtemp(m_root.data()) != nullptr);
        for (const char* folder : {"/bin", "/conf", "/log"})
            Must(mkdir((m_root + folder).c_str(), 0700) == 0);
        for (const std::string profile : {"/conf/graph.cnf", "/conf/config.cnf"})
            Must(symlink((MELKAR_SAMPLES "/app" + profile).c_str(), (m_root + profile).c_str()) == 0);
        const std::unique_ptr<char, decltype(&std::free)> start(get_current_dir_name(), std::free);
        m_start = start.get();
        Must(chdir((m_root + "/bin").c_str()) == 0);
    }
    ~Directory() {
        Must(chdir(m_start.c_str()) == 0);
        const auto remove = [](const char* path, const struct stat*, int, FTW*) { return std::remove(path); };
        Must(nftw(m_root.c_str(), remove, 8, FTW_DEPTH | FTW_PHYS) == 0);
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    std::string Path(const std::string& name) const { return m_root + "/bin/" + name; }
    std::string FromStart(const char* path) const { return *path == '/' ? path : m_start + "/" + path; }

private:
    static void Must(bool succeed) {
        if (!succeed)
            std::abort();
    }

    std::string m_root = "/tmp/melkar-peer-XXXXXX";
    std::string m_start;
};

class Melkar : public Peer {
public:
    ~Melkar() override {
        m_bars.reset();
        m_sheet.reset();
        DeleteDC(m_view);
    }

    /// The file is the application's work; it is written before the clock of the first redraw of its kind only.
    void Draw(const MonthData& month) override {
        if (!m_bars) {
            m_view = CreateMemorySurface(MonthData::kWidth, MonthData::kHeight);
            m_bars = std::make_unique<CBarGraph>(nullptr, m_view, "BAR_MONTH", m_view, nullptr, nullptr);
            for (int day = 0; day < kDays; ++day)
                m_bars->m_saTargets.Add("8000");
        }
        std::string path = FileOf(month);
        m_bars->Draw(CRect(0, 0, MonthData::kWidth, MonthData::kHeight), path.data());
    }

    bool HasDay() const override { return true; }
    void Draw(const DayData& day) override {
        const CRect area(0, 0, DayData::kWidth, DayData::kHeight);
        if (!m_sheet) {
            m_view = CreateMemorySurface(DayData::kWidth, DayData::kHeight);
            m_sheet = std::make_unique<CCircadianGraph>(nullptr, m_view, "WEEK", m_view, nullptr, nullptr);
        }
        CStringArray minutes;
        for (const double one : day.minutes)
            minutes.Add(std::to_string(one).c_str());
        CStringArray events;
        for (const int minute : DayData::kEvents)
            events.Add(std::to_string(minute / 60 * 100 + minute % 60).c_str());
        std::array<double, DayData::kValues> intensity = day.intensity;
        m_sheet->Set(nullptr, m_view, area, "", "", 4, 6, &minutes, "20260302", 0, 0, &events, intensity.data(), 0,
                     day.steps, day.steps / 30, 1500 + day.steps / 30, 42.5, 0, 3.5F);
        m_sheet->Draw(area, nullptr);
    }

    void Write(const char* path) override { WritePng(m_view, m_directory.FromStart(path).c_str()); }

private:
    std::string FileOf(const MonthData& month) {
        const auto turn = static_cast<std::size_t>(m_next++ % kTurns);
        if (turn >= m_files.size()) {
            m_files.push_back(m_directory.Path("month" + std::to_string(turn) + ".csv"));
            const std::unique_ptr<std::FILE, decltype(&std::fclose)> file(std::fopen(m_files.back().c_str(), "w"),
                                                                          std::fclose);
            std::fputs("head\nhead\n", file.get());
            for (int day = 0; day < kDays; ++day)
                std::fprintf(file.get(), "0,%s,%d\n", MonthData::Date(day).c_str(),
                             month.steps[static_cast<std::size_t>(day)]);
        }
        return m_files[turn];
    }

    Directory m_directory;
    HDC m_view = nullptr;
    std::unique_ptr<CBarGraph> m_bars;
    std::unique_ptr<CCircadianGraph> m_sheet;
    std::vector<std::string> m_files; ///< one a turn
    int m_next = 0;
};

} // namespace

int main(int argc, char** argv) {
    Melkar melkar;
    return RunPeer(argc, argv, melkar);
}
