#include <MelkarCommon/checker/color_difference.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/data_reference.h>
#include <frame/host_fixture.h>

#include <fstream>
#include <iterator>
#include <regex>

namespace {

constexpr int kWidth = 900;
constexpr int kHeight = 500;

double Contrast(std::uint32_t a, std::uint32_t b) {
    const auto colorOf = [](std::uint32_t pixel) {
        return RGB(pixel >> 16 & 0xFFU, pixel >> 8 & 0xFFU, pixel & 0xFFU);
    };
    return melkar::ContrastOf(colorOf(a), colorOf(b));
}

/// The dark application of the samples, its texts in any colour.
class Dark : public HostTest {
protected:
    std::vector<std::uint32_t> Draw(const melkar::KindRow& row, const char* section, const std::string& texts) {
        m_files.Write("conf/graph.cnf", std::regex_replace(m_profile, std::regex("(TEXTCOLOR_RGB=).*"), "$01" + texts));
        const melkar::DataTables files = melkar::FilesReadBy(row);
        if (files.size() > 1)
            m_files.Write("bin/data.csv.sim", melkar::ExampleFile(files[1]));
        std::string data = DataFile(files.empty() ? "" : melkar::ExampleFile(files.front()));
        HDC const view = CreateMemorySurface(kWidth, kHeight);
        row.make(nullptr, view, section, view, nullptr, nullptr)->Draw({0, 0, kWidth, kHeight}, data.data());
        WritePng(view, (std::string("/tmp/dk/t-") + row.kind + ".png").c_str());
        const std::uint32_t* pixels = GetPixels(view).pixels;
        std::vector<std::uint32_t> copy(pixels, pixels + kWidth * kHeight);
        DeleteDC(view);
        return copy;
    }

    static std::string Read(const char* path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string m_profile = Read(MELKAR_SAMPLES "/app-dark/conf/graph.cnf");
};

/// What is drawn below a letter is what lies left of it: pixels that are the same whatever colour texts have. Few of
/// them may be those of lines.
TEST_F(Dark, TextsStandOut) {
    const std::pair<const char*, const char*> kinds[] = {
        {"bar", "BAR_WEEK"},      {"line", "LINE"},
        {"steps", "STEPS"},       {"expenditure", "EXPENDITURE"},
        {"activity", "ACTIVITY"}, {"simulation", "SIMULATION"},
        {"day", "DAY"},           {"circle", "CIRCLE"},
        {"himand", "HIMAND"},     {"quadrant", "QUADRANT"},
        {"plot", "PANEL_DARK"},   {"pie", "PIE_MINUTES"},
    };
    ASSERT_THAT(m_profile, HasSubstr("TEXTCOLOR_RGB=226,234,243"));
    for (const auto& [kind, section] : kinds) {
        const melkar::KindRow& row = *melkar::FindKind(kind);
        const bool isLight = std::string(kind) == "pie"; // slices and notes are
        const auto shown = Draw(row, section, isLight ? "0,0,0" : "226,234,243");
        const auto other = Draw(row, section, isLight ? "255,0,0" : "120,0,0");
        const std::uint32_t text = isLight ? 0x000000 : 0xE2EAF3;
        int letters = 0;
        int dim = 0;
        for (std::size_t at = 1, ground = 0; at < shown.size(); ++at) {
            if (shown[at] == other[at])
                ground = at;
            else if (Contrast(text, shown[at]) < 1.3) { // the middle of a stroke
                ++letters;
                dim += Contrast(text, shown[ground]) < 4.5;
            }
        }
        EXPECT_GT(letters, 50) << kind;
        EXPECT_LE(dim, letters / 20) << kind << ": of " << letters;
    }
}

} // namespace
