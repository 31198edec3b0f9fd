#include <frame/host_fixture.h>

#include <MelkarCommon/bars/activity_cal_graph.h>
#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/hosts.h>
#include <MelkarCommon/quadrant/square_graph.h>
#include <MelkarCommon/reports/report_header.h>
#include <MelkarCommon/support/support.h>

#include <filesystem>
#include <thread>

namespace {

using melkar::HostDirectory;
namespace fs = std::filesystem;

/// Two hosts, beside the one in whose directory the process stands, which has no profile.
class HostDirectoryTest : public HostTest {
protected:
    HostDirectoryTest() {
        for (const char* host : {"mine", "theirs"}) {
            for (const char* folder : {"bin", "conf", "log"})
                fs::create_directories(m_files.Path(std::string(host) + "/" + folder));
            const std::string name = host;
            m_files.Write(name + "/conf/graph.cnf",
                          "[COMMON]\nGRAPH_DATE_FORMAT_TYPE=D\n[OWN]\nTITLELABEL=" + name + "\n");
            m_files.Write(name + "/conf/config.cnf", "[SYSTEM]\nD=" + name + " %d\n");
        }
        fs::remove(m_files.Path("conf/graph.cnf"));
    }

    std::string Bin(const char* host) const { return m_files.Path(std::string(host) + "/bin"); }
    static std::string Title() {
        const CGraph graph(nullptr, nullptr, "OWN", nullptr, nullptr, nullptr);
        return graph.m_Title.m_strText.GetString();
    }
};

TEST_F(HostDirectoryTest, NamesCountFromTheInnermost) {
    fs::create_directory(m_files.Path(R"(back\slash)"));
    fs::rename(m_files.Path("theirs"), m_files.Path(R"(back\slash\theirs)"));
    EXPECT_EQ(Title(), "") << "none yet: the current directory of the process";
    const HostDirectory relative("..\\mine\\bin");
    fs::current_path("/");
    EXPECT_EQ(Title(), "mine") << "as the current directory was when the scope began";
    {
        const HostDirectory inner(m_files.Path(R"(back\slash\theirs/bin)").c_str());
        EXPECT_EQ(Title(), "theirs") << "the directory's own backslash is none of the name";
        const HostDirectory none("");
        EXPECT_EQ(Title(), "");
        std::string ofAnother = "?", handedOver = "?";
        const HostDirectory mine(m_files.Path("mine/bin").c_str());
        std::thread([&] { ofAnother = Title(); }).join();
        std::thread([&, here = melkar::HostPlace()] {
            const HostDirectory there(here);
            handedOver = Title();
        }).join();
        EXPECT_EQ(ofAnother, "") << "a thread has none of another's";
        EXPECT_EQ(handedOver, "mine");
    }
    EXPECT_EQ(Title(), "mine") << "what counted before counts again";
    const std::string profile = m_files.Path("back\\slash\\theirs/conf/graph.cnf");
    EXPECT_EQ(CIniReader(profile.c_str()).ReadString("", "OWN", "TITLELABEL", ""), "theirs") << "absolute names stay";
}

/// Whatever is done with an object that was made there, also out of all scopes and under another.
TEST_F(HostDirectoryTest, ObjectsKeepTheirs) {
    struct Made {
        CBarGraph bars{nullptr, nullptr, "OWN", nullptr, nullptr, nullptr};
        CActivityCalGraph periods{nullptr, nullptr, "OWN", nullptr, nullptr, nullptr};
        CSquareGraph square{nullptr, nullptr, "OWN", nullptr, nullptr, nullptr};
        CWeeklyCircadian week{nullptr, nullptr, "OWN", nullptr, nullptr, nullptr};
        CReportHeader header{"OWN"};
    };
    struct Use {
        const char* why;
        std::string (*result)(Made& made);
        const char* expected;
        const char* logged = ""; ///< what it leaves in the log of its own host
    };
    static char missing[] = "missing.csv";
    const Use uses[] = {
        {"a date", [](Made& made) { return made.bars.m_saDates.Add("20260102"), std::string(made.bars.FormatDate(0)); },
         "mine 02"},
        {"keys read anew",
         [](Made& made) {
             return made.bars.ReadIniFile(melkar::GraphProfile()), std::string(made.bars.m_Title.m_strText);
         },
         "mine"},
        {"a key read by itself",
         [](Made& made) { return std::string(made.bars.m_Ini.ReadString("", "OWN", "TITLELABEL", "")); }, "mine"},
        {"a reader", [](Made& made) { return std::to_string(made.bars.ReadDataFile(missing)); }, "101",
         "CBarGraph::ReadDataFile"},
        {"a reader of its own", [](Made& made) { return std::to_string(made.periods.ReadDataFile(missing)); }, "101",
         "CActivityCalGraph::ReadDataFile"},
        {"another", [](Made& made) { return std::to_string(made.square.ReadDataFile(missing)); }, "101",
         "CSquareGraph::ReadDataFile"},
        {"a cycle", [](Made& made) { return std::to_string(made.bars.Draw(CRect(0, 0, 9, 9), missing)); }, "201",
         "CBarGraph::ReadDataFile"},
        {"a week", [](Made& made) { return std::to_string(made.week.ReadDataFile(missing)); }, "210",
         "CWeeklyCircadian::ReadDataFile"},
        {"a week on paper", [](Made& made) { return std::to_string(made.week.ReadWeekDataFile(missing, 0)); }, "210",
         "CODE = [210]"},
        {"a report's block",
         [](Made& made) {
             made.header.Draw(nullptr, CRect(), "");
             return std::string(made.header.m_szDate).substr(0, 6);
         },
         " mine "},
    };
    std::unique_ptr<Made> made;
    {
        const HostDirectory here(Bin("mine").c_str());
        made = std::make_unique<Made>();
    }
    for (const auto& [why, result, expected, logged] : uses) {
        fs::remove(m_files.Path("mine/log/graph.log"));
        {
            const HostDirectory others(Bin("theirs").c_str());
            EXPECT_EQ(result(*made), expected) << why;
        }
        EXPECT_THAT(m_files.Read("mine/log/graph.log"), HasSubstr(logged)) << why;
    }
    EXPECT_FALSE(fs::exists(m_files.Path("theirs/log/graph.log")));
    EXPECT_FALSE(fs::exists(m_files.Path("log/graph.log")));
}

} // namespace
