// This library as an application uses it: a data file for each redraw, and a line in the log.

#include "work.h"

#include <MelkarCommon/MelkarCommon.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace fs = std::filesystem;

namespace {

/// A directory with the profile of the samples, the current one while it lives.
class Directory {
public:
    Directory() {
        std::string root = (fs::temp_directory_path() / "melkar-peer-XXXXXX").string();
        if (!mkdtemp(root.data()))
            std::abort();
        m_root = root;
        for (const char* folder : {"bin", "conf", "log"})
            fs::create_directory(m_root / folder);
        for (const char* profile : {"graph.cnf", "config.cnf"})
            fs::copy_file(fs::path(MELKAR_SAMPLES) / "app" / "conf" / profile, m_root / "conf" / profile);
        m_start = fs::current_path();
        fs::current_path(m_root / "bin");
    }
    ~Directory() {
        fs::current_path(m_start);
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }
    std::string Path(const char* name) const { return (m_root / "bin" / name).string(); }
    fs::path FromStart(const char* path) const { return m_start / path; }

private:
    fs::path m_root;
    fs::path m_start;
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
            m_files.push_back(m_directory.Path(("month" + std::to_string(turn) + ".csv").c_str()));
            std::ofstream file(m_files.back());
            file << "head\nhead\n";
            for (int day = 0; day < kDays; ++day)
                file << "0," << MonthData::Date(day) << "," << month.steps[static_cast<std::size_t>(day)] << "\n";
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
