// PLplot on its bare memory driver: strokes for letters, no anti-aliasing. The picture is written by its cairo driver.

#include "work.h"

#include <plplot/plplot.h>

#include <vector>

namespace {

class Plotter : public Peer {
public:
    void Draw(const MonthData& month) override {
        m_month = month;
        m_pixels.resize(std::size_t{3} * MonthData::kWidth * MonthData::kHeight);
        plsdev("mem");
        plsmem(MonthData::kWidth, MonthData::kHeight, m_pixels.data());
        DrawMonth(month);
        plend1();
    }

    void Write(const char* path) override {
        plsdev("pngcairo");
        plsfnam(path);
        plspage(0, 0, MonthData::kWidth, MonthData::kHeight, 0, 0);
        DrawMonth(m_month);
        plend1();
    }

private:
    static void Color(int red, int green, int blue) {
        plscol0(1, red, green, blue);
        plcol0(1);
    }

    static void DrawMonth(const MonthData& month) {
        plscolbg(255, 255, 255);
        plinit();
        pladv(0);
        plschr(0, 0.6);
        plvpor(0.08, 0.98, 0.09, 0.88);
        plwind(-0.5, kDays - 0.5, 0, MonthData::kTop);
        Color(198, 206, 216);
        plbox("b", 0, 0, "bcg", MonthData::kStep, 0);
        Color(0, 0, 0);
        plbox("", 0, 0, "nv", MonthData::kStep, 0);
        plmtex("l", 5, 0.5, 0.5, "steps");
        plmtex("t", 1, 0, 0, MonthData::Title());
        plmtex("t", 1, 1, 1, MonthData::TargetText());
        for (int day = 0; day < kDays; ++day) {
            const double steps = month.steps[static_cast<std::size_t>(day)];
            PLFLT x[] = {day - 0.25, day - 0.25, day + 0.25, day + 0.25};
            PLFLT y[] = {0, steps, steps, 0};
            steps >= MonthData::kTarget ? Color(14, 92, 72) : Color(124, 146, 172);
            plfill(4, x, y);
            Color(0, 0, 0);
            plptex(day, steps + 250, 1, 0, 0.5, std::to_string(month.steps[static_cast<std::size_t>(day)]).c_str());
            if (day % MonthData::kDateStep == 0)
                plmtex("b", 1.5, (day + 0.5) / kDays, 0.5, MonthData::Date(day).c_str());
        }
        Color(186, 72, 8);
        plwidth(4);
        pllsty(2);
        pljoin(-0.5, MonthData::kTarget, kDays - 0.5, MonthData::kTarget);
        pllsty(1);
        plwidth(1);
    }

    std::vector<unsigned char> m_pixels;
    MonthData m_month;
};

} // namespace

int main(int argc, char** argv) {
    Plotter plotter;
    return RunPeer(argc, argv, plotter);
}
