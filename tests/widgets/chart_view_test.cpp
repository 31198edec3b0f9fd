#include "chart_view.h"

#include <MelkarCommon/support/support.h>
#include <frame/host_fixture.h>

namespace {

using melkar::ChartPicture;
using melkar::widgets::ChartView;
using melkar::widgets::Stride;

constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kGreen = RGB(0, 255, 0);

/// What pictures are asked for, and what they answer.
struct Script {
    std::string asked; ///< "make OWN, read data.csv, draw 30x20 data.csv"
    long readResult = melkar::kOk;
    long drawResult = melkar::kOk;
    bool hasBalloons = true;
    melkar::Contents shown;

    std::string Take() { return std::exchange(asked, ""); }
    void Add(const std::string& what) { asked += (asked.empty() ? "" : ", ") + what; }
};

void Fill(HDC surface, const CRect& area, COLORREF color) { DrawRectangle(surface, area, color, color, 1); }

/// Blue in its left half and green in the right one; its balloon is a white pixel at the pointer.
class Scripted : public ChartPicture {
public:
    explicit Scripted(Script& script) : m_script(script) {}

    void Bind(const melkar::LentSurfaces& surfaces) override { m_lent = surfaces; }
    long Read(char* path) override {
        m_script.Add(std::string("read ") + path);
        return m_script.readResult;
    }
    long Draw(CRect area, char* path) override {
        m_script.Add("draw " + std::to_string(area.Width()) + "x" + std::to_string(area.Height()) + " " + path +
                     (m_lent.isPage ? "on a page" : ""));
        if (m_script.drawResult == melkar::kOk) {
            Fill(m_lent.shared, area, kBlue);
            Fill(m_lent.shared, {area.Width() / 2, 0, area.right, area.bottom}, kGreen);
        }
        return m_script.drawResult;
    }
    std::vector<melkar::Contents> Shown() const override { return {m_script.shown}; }
    bool HasBalloons() const override { return m_script.hasBalloons; }
    long DayAt(CPoint point) override { return point.x; }
    bool Hover(CPoint point) override {
        BitBlt(m_lent.shared, 0, 0, 99, 99, m_lent.balloon, 0, 0, SRCCOPY);
        Fill(m_lent.shared, {point.x, point.y, point.x + 1, point.y + 1}, RGB(255, 255, 255));
        return true;
    }

private:
    Script& m_script;
    melkar::LentSurfaces m_lent;
};

class ChartViewTest : public HostTest {
protected:
    ChartViewTest() : HostTest("[OWN]\n") {
        view.SetSize(30, 20, 1);
        const auto add = [this](const char* caption, int series, const CRect& area) {
            melkar::ShownItem item;
            item.caption = caption;
            item.figures.push_back({series, "1", 1, false, area, ""});
            item.area = area;
            script.shown.items.push_back(item);
        };
        script.shown.series = {{"blue", kBlue, {}}, {"green", kGreen, {}}};
        add("a slice", 0, {0, 0, 30, 10}); // which share a box
        add("another", 1, {0, 0, 30, 10});
        add("a dot", 0, {24, 15, 26, 17});
    }

    std::string Asked(bool tried = true) {
        EXPECT_EQ(view.Update(), tried);
        return script.Take();
    }
    std::uint32_t PixelAt(int x, int y) const {
        const PixelView pixels = view.Pixels().view;
        return x < pixels.width && y < pixels.height ? pixels.pixels[y * pixels.stride + x] & 0xFFFFFF : 0;
    }

    Script script;
    ChartView view{[this](const melkar::ChartLooks& looks) {
                       script.Add("make " + looks.section);
                       return std::make_unique<Scripted>(script);
                   },
                   {"OWN", ""},
                   "d.csv"};
};

/// A graph lives as long as its looks, data are tried before they are drawn, and nothing is done twice.
TEST_F(ChartViewTest, DrawsWhatIsOutOfDate) {
    EXPECT_EQ(Asked(), "make OWN, read d.csv, draw 30x20 d.csv");
    EXPECT_EQ(Asked(false), "");
    view.SetSize(40, 20, 1);
    EXPECT_EQ(Asked(), "draw 40x20 d.csv");
    view.SetSize(40, 20, 2);
    EXPECT_EQ(Asked(), "draw 40x20 d.csv");
    EXPECT_EQ(view.Pixels().view.width, 80);
    view.SetSize(40, 20, 0.5); // what surfaces take
    EXPECT_EQ(Asked(), "draw 40x20 d.csv");
    EXPECT_EQ(view.Pixels().view.width, 40);
    view.SetSize(0, 20, 1);
    EXPECT_EQ(Asked(false), "");
    view.SetSize(40, 20, 1);
    Asked();
    view.Redraw();
    EXPECT_EQ(Asked(), "read d.csv, draw 40x20 d.csv");
    view.Remake();
    EXPECT_EQ(Asked(), "make OWN, read d.csv, draw 40x20 d.csv");
    view.SetDark(true); // without looks of its own
    EXPECT_EQ(Asked(false), "");
    view.SetDarkLooks({"NIGHT", ""});
    EXPECT_EQ(Asked(), "make NIGHT, read d.csv, draw 40x20 d.csv");
    view.SetLooks({"DAY", ""});
    view.SetDark(false);
    view.SetData("");
    EXPECT_EQ(Asked(), "make DAY, draw 40x20 ");
}

TEST_F(ChartViewTest, KeepsTheLastGoodPicture) {
    script.readResult = melkar::kNoFile;
    EXPECT_EQ(Asked(), "make OWN, read d.csv");
    EXPECT_FALSE(view.HasPicture());
    EXPECT_EQ(view.Result(), melkar::kNoFile);
    EXPECT_EQ(view.Save("none.png"), melkar::ResultText(melkar::kNoFile));
    EXPECT_EQ(Asked(false), "");         // until something changes
    script.readResult = melkar::kNoDays; // a message is a picture
    view.Redraw();
    EXPECT_EQ(Asked(), "make OWN, read d.csv, draw 30x20 d.csv");
    EXPECT_EQ(PixelAt(29, 0), 0x00FF00U);

    script.readResult = melkar::kNoFile;
    view.Redraw();
    EXPECT_EQ(Asked(), "read d.csv");
    view.SetSize(40, 20, 1);
    EXPECT_EQ(Asked(), "draw 40x20 d.csv");
    EXPECT_EQ(view.Result(), melkar::kNoFile) << "another size hides that the file is missing";

    script.drawResult = melkar::kDrawFailed;
    view.SetSize(90, 90, 1);
    Asked();
    EXPECT_EQ(view.Result(), melkar::kDrawFailed);
    EXPECT_EQ(view.Pixels().view.width, 40);
    EXPECT_TRUE(view.HoverAt({5, 5})) << "the picture draws on surfaces that are shown no more";
    EXPECT_EQ(PixelAt(5, 5), 0xFFFFFFU);
}

TEST_F(ChartViewTest, BalloonsComeAndGo) {
    Asked();
    EXPECT_FALSE(view.EndHover());
    EXPECT_TRUE(view.HoverAt({5, 5}));
    EXPECT_TRUE(view.HoverAt({6, 5}));
    EXPECT_EQ(PixelAt(5, 5), 0x0000FFU) << "the former balloon is still there";
    EXPECT_EQ(PixelAt(6, 5), 0xFFFFFFU);
    view.Redraw();
    Asked();
    EXPECT_EQ(PixelAt(6, 5), 0x0000FFU);
    EXPECT_TRUE(view.HoverAt({7, 5}));
    EXPECT_EQ(view.Save("clean.png"), "");
    EXPECT_EQ(PixelAt(7, 5), 0x0000FFU) << "a balloon is in the file";
    EXPECT_EQ(view.DayAt({17, 0}), 17);
    EXPECT_EQ(view.TipAt({2, 2}), "");
}

TEST_F(ChartViewTest, FindsItemsWithoutBalloons) {
    script.hasBalloons = false;
    Asked();
    EXPECT_FALSE(view.HoverAt({5, 5}));
    const std::tuple<const char*, CPoint, long> cases[] = {
        {"of two in one box that of the colour there", {2, 2}, 0},
        {"the other", {28, 2}, 1},
        {"a dot from a few pixels away", {22, 18}, 2},
        {"nothing", {2, 18}, -1},
    };
    for (const auto& [why, point, item] : cases)
        EXPECT_EQ(view.DayAt(point), item) << why;
    EXPECT_THAT(view.TipAt({28, 2}), HasSubstr("another"));
}

TEST_F(ChartViewTest, WalksFromItemToItem) {
    EXPECT_FALSE(view.Walk(Stride::Next)) << "without a picture";
    Asked();
    const std::tuple<const char*, Stride, std::size_t> cases[] = {
        {"from the end, before the walk begins", Stride::Previous, 2},
        {"no further", Stride::Next, 2},
        {"back", Stride::Previous, 1},
        {"first", Stride::First, 0},
        {"nothing before it", Stride::WeekBack, 0},
        {"a week that isn't whole", Stride::WeekOn, 2},
    };
    for (const auto& [why, stride, item] : cases) {
        EXPECT_TRUE(view.Walk(stride)) << why;
        EXPECT_EQ(view.Current(), item) << why;
    }
    EXPECT_EQ(PixelAt(25, 16), 0xFFFFFFU) << "no balloon at the right edge of the item";
    EXPECT_EQ(view.Ring(), CRect(22, 13, 28, 19)) << "two units around it";
    script.shown.items.resize(1);
    view.Redraw();
    Asked();
    EXPECT_FALSE(view.Current()) << "an item that is there no more";
}

/// What a page leaves is the picture of the screen, drawn anew.
TEST_F(ChartViewTest, WritesPages) {
    Asked();
    EXPECT_EQ(view.Save("page.svg"), "");
    EXPECT_EQ(script.Take(), "draw 30x20 d.csvon a page, draw 30x20 d.csv");
    EXPECT_THAT(m_files.Read("bin/page.svg"), HasSubstr("<title"));
    EXPECT_THAT(view.Save("nowhere/page.pdf"), HasSubstr("No such file or directory"));
    script.drawResult = melkar::kDrawFailed;
    EXPECT_EQ(view.Save("failed.pdf"), melkar::ResultText(melkar::kDrawFailed));
    EXPECT_EQ(m_files.Read("bin/failed.pdf"), "");
}

} // namespace
