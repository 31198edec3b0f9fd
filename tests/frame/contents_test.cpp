#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>
#include <MelkarCommon/registry/shown_by.h>
#include <MelkarCommon/support/numbers.h>
#include <frame/contents_text.h>
#include <frame/host_fixture.h>

#include <algorithm>
#include <numbers>
#include <optional>
#include <regex>

namespace {

using melkar::Contents;
using melkar::ShownItem;

constexpr CRect kArea(0, 0, 900, 500);

std::string WithoutBlanks(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    return text;
}

/// All texts of a record, without blanks, a line each. What wraps stands on several lines of a record.
struct PaintedTexts {
    explicit PaintedTexts(const std::string& record) {
        static const std::regex form(R"re(text "((?:[^"\\]|\\.)*)" .*)re");
        for (const std::string& line : LinesOf(record))
            if (std::smatch part; std::regex_match(line, part, form)) {
                lines.push_back(WithoutBlanks(part[1]));
                all += lines.back();
            }
    }
    bool Hold(const std::string& text) const {
        const std::string one = WithoutBlanks(text);
        return std::ranges::find(lines, one) != lines.end() || (one != text && all.find(one) != std::string::npos);
    }

    std::vector<std::string> lines;
    std::string all;
};

/// The room of a slice, found by walking along its rim.
CRect SliceBoxOf(double x, double y, double across, double down, double from, double sweep) {
    double left = x, top = y, right = x, bottom = y;
    constexpr int kSteps = 3600;
    for (int step = 0; step <= kSteps; ++step) {
        const double angle = (from + sweep * step / kSteps) * std::numbers::pi / 180;
        left = std::min(left, x + across * std::cos(angle));
        right = std::max(right, x + across * std::cos(angle));
        top = std::min(top, y - down * std::sin(angle));
        bottom = std::max(bottom, y - down * std::sin(angle));
    }
    const auto edge = [](double value) { return static_cast<int>(std::lround(value)); };
    return {edge(left), edge(top), edge(right), edge(bottom)};
}

/// Where each filled shape of a record stands; a frame of a pixel around a fill counts as well.
std::vector<CRect> ShapesOf(const std::string& record) {
    std::vector<CRect> shapes;
    for (const std::string& line : LinesOf(record)) {
        double x = 0, y = 0, width = 0, height = 0, from = 0, sweep = 0;
        if (std::sscanf(line.c_str(), "fill %lf,%lf %lfx%lf", &x, &y, &width, &height) == 4) {
            shapes.emplace_back(int(x), int(y), int(x + width), int(y + height));
            shapes.push_back(shapes.back());
            shapes.back().DeflateRect(-1, -1);
        } else if (std::sscanf(line.c_str(), "ellipse %lf,%lf %lfx%lf fill", &x, &y, &width, &height) == 4) {
            shapes.push_back(SliceBoxOf(x, y, width, height, 0, 360));
        } else if (std::sscanf(line.c_str(), "slice %lf,%lf %lfx%lf from %lf sweep %lf", &x, &y, &width, &height, &from,
                               &sweep) == 6) {
            shapes.push_back(SliceBoxOf(x, y, width, height, from, sweep));
        } else if (line.starts_with("polygon ")) {
            CRect box(INT_MAX, INT_MAX, INT_MIN, INT_MIN);
            const char* corner = line.c_str() + std::string_view("polygon").size();
            for (int read = 0; std::sscanf(corner, " %lf,%lf%n", &x, &y, &read) == 2; corner += read)
                box = {std::min(box.left, int(x)), std::min(box.top, int(y)), std::max(box.right, int(x)),
                       std::max(box.bottom, int(y))};
            shapes.push_back(box);
        }
    }
    return shapes;
}

bool IsNear(const CRect& one, const CRect& other) {
    return std::abs(one.left - other.left) <= 1 && std::abs(one.top - other.top) <= 1 &&
           std::abs(one.right - other.right) <= 1 && std::abs(one.bottom - other.bottom) <= 1;
}

bool IsIn(const CRect& one, const CRect& whole) {
    return one.left >= whole.left && one.top >= whole.top && one.right <= whole.right && one.bottom <= whole.bottom;
}

/// Every kind as its starter draws its example.
class ShownExamples : public HostTest {
protected:
    struct Example {
        Contents shown;
        std::string record;
        std::vector<std::string> rows; ///< of the data file, behind its heads
    };

    Example Draw(const melkar::KindRow& kind) {
        m_files.Write("conf/config.cnf", "");
        m_files.Write("conf/graph.cnf",
                      melkar::StarterProfile(kind.kind, "OWN") + "IS_PRINTTARGET=1\nTARGETLABEL=goal\nDATESIZE=7\n");
        const melkar::DataTables files = melkar::FilesReadBy(kind);
        if (files.size() > 1)
            m_files.Write("bin/data.csv.sim", melkar::ExampleFile(files[1]));
        const std::string data = files.empty() ? "" : melkar::ExampleFile(files.front());
        const auto graph = kind.make(nullptr, m_record, "OWN", nullptr, nullptr, nullptr);
        Example example{{}, Record(*graph, data, kArea), {}};
        example.shown = melkar::ShownBy(*graph);
        example.rows = LinesOf(data);
        if (!files.empty())
            example.rows.erase(example.rows.begin(), example.rows.begin() + files.front().form.heads);
        return example;
    }
};

/// What a class's contents say that its painters don't, or elsewhere, once one of them was changed without the other.
TEST_F(ShownExamples, AreThoseOfTheRecord) {
    for (const melkar::KindRow& kind : melkar::Catalogue()) {
        const bool isOfAnotherTest =
            std::string_view(kind.kind) == "host"; // registered for as long as the process runs
        if (!kind.make || *kind.starter == '\0' || isOfAnotherTest)
            continue;
        SCOPED_TRACE(kind.kind);
        const auto& [shown, record, rows] = Draw(kind);
        const PaintedTexts texts(record);
        EXPECT_EQ(shown.kind, kind.kind);
        EXPECT_TRUE(shown.area == kArea);
        std::vector<std::string> painted = shown.texts;
        painted.push_back(shown.title);
        for (const melkar::ShownAxis& axis : shown.axes)
            painted.push_back(axis.label);
        for (const ShownItem& item : shown.items)
            painted.push_back(item.text);
        for (const std::string& text : painted)
            EXPECT_TRUE(text.empty() || texts.Hold(text)) << text << " is no text of\n" << record;

        const std::vector<CRect> shapes = ShapesOf(record);
        for (const ShownItem& item : shown.items) {
            EXPECT_TRUE(item.isMissing || IsIn(item.area, kArea)) << item.caption << " " << Text(item.area);
            for (const melkar::ShownFigure& figure : item.figures) {
                const bool isPartOfLine = shown.kind == "simulation" && figure.series == 2;
                const bool isShape =
                    std::ranges::any_of(shapes, [&](const CRect& shape) { return IsNear(shape, figure.area); });
                EXPECT_TRUE(isShape || isPartOfLine || figure.area.Width() == 0 || figure.area.Height() == 0)
                    << item.caption << ": " << Text(figure.area) << " is no shape of\n"
                    << record;
                EXPECT_LT(figure.series, std::ssize(shown.series)) << item.caption;
                EXPECT_NEAR(melkar::ToDouble(WithoutBlanks(figure.text).c_str()), figure.value, 0.5) << item.caption;
            }
        }
    }
}

/// Figures by the columns that hold them: one that was lost, or came to another day, on the way from the file.
TEST_F(ShownExamples, AreThoseOfTheDataFile) {
    const struct {
        const char* kind;
        std::optional<int> series; ///< none: that of the item, which has no other
        int column;
    } cases[] = {{"bar", 0, 2},         {"line", 0, 2}, {"line", 1, 3}, {"steps", 0, 4}, {"activity", 0, 11},
                 {"expenditure", 0, 3}, {"plot", 0, 1}, {"pie", {}, 0}, {"bmi", 0, 0},   {"himand", 0, 0}};
    for (const auto& [kind, series, column] : cases) {
        SCOPED_TRACE(kind);
        const Example example = Draw(*melkar::FindKind(kind));
        ASSERT_EQ(example.shown.items.size(), example.rows.size());
        for (std::size_t row = 0; row < example.rows.size(); ++row) {
            const CString field = melkar::CsvRow(example.rows[row].c_str()).Field(column);
            const auto& figures = example.shown.items[row].figures;
            const auto figure = std::ranges::find_if(figures, [only = series](const melkar::ShownFigure& one) {
                return one.series == only.value_or(one.series);
            });
            if (figure != figures.end())
                EXPECT_NEAR(figure->value, melkar::ToDouble(field), 1e-6) << row;
            else
                EXPECT_EQ(field, "") << row;
        }
    }
}

} // namespace
