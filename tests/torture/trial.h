#pragma once

#include <MelkarCommon/MelkarCommon.h>

#include <chrono>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// What the trials share: a clock, a host's folders, charts of all kinds in them, and processes that may die.

namespace torture {

/// What a trial did and found.
struct Tally {
    long tries = 0;
    long faults = 0;
    std::string says = {}; ///< figures for the table
};

class Deadline {
public:
    explicit Deadline(double seconds)
        : m_end(Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds))) {}
    bool IsOver() const { return Clock::now() >= m_end; }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point m_end;
};

/// A number from 0 up to and without `end`, another one in each run.
inline int Random(int end) {
    static thread_local std::mt19937 engine{std::random_device()()};
    return std::uniform_int_distribution<int>(0, end - 1)(engine);
}

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, std::string_view bytes);

/// A host's folders, of which bin is the current one: a profile with a section for each kind, examples of all data
/// files. Gone with the object.
class Host {
public:
    Host();
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    std::string Path(const std::string& name) const { return m_root + "/" + name; }
    /// A new folder that is empty.
    std::string EmptyFolder(const std::string& name) const;

private:
    std::string m_root;
};

/// Where the data file of a kind is, from the current folder.
std::string DataOf(const melkar::KindRow& kind);

/// The kinds of the catalogue that a graph can be made for.
std::vector<const melkar::KindRow*> Kinds();

constexpr int kWidth = 320;
constexpr int kHeight = 240;

/// Draws a chart as a host does: at once on a page or a record, else by way of a working surface.
long Draw(const melkar::KindRow& kind, HDC surface, bool isDirect);

/// Ways in which a chart becomes bytes.
std::string PixelsOf(const melkar::KindRow& kind);
std::string RecordOf(const melkar::KindRow& kind);
/// @param path of the page that is written and read again
std::string PageOf(const melkar::KindRow& kind, PageFormat format, const std::string& path);
/// A document of two charts. @return what `EndDoc` does
int Print(const melkar::KindRow& kind, const std::string& path);

/// Whether readers find whole records up to the last one; or no log.
bool IsWholeLog(const std::string& log);
/// Whether the end mark stands behind the last record: after a kill it does from the next line on.
bool HasEndMark(const std::string& log);
/// The lines in it.
std::vector<std::string> LinesOf(const std::string& log);

/// Runs `work` in a process of its own. @return as `waitpid` tells
int InChild(const std::function<int()>& work);
/// Runs this program anew, so that nothing is warm: `name` is one of main's works. @param prepare runs in it before
int InColdChild(const char* name, const std::function<void()>& prepare);
/// Draws all kinds on all surfaces once: the work of a cold child. @return 0
int DrawAll();

Tally Kills(const Deadline& end);
Tally FullDisks(const Deadline& end);
Tally Writers(const Deadline& end);
Tally Changes(const Deadline& end);
Tally NoMemory(const Deadline& end);
Tally Descriptors(const Deadline& end);
Tally NoFonts(const Deadline& end);
Tally Signals(const Deadline& end);
Tally Crowd(const Deadline& end);

/// The work of a cold child whose memory runs out.
int DrawColdAndPoor();

} // namespace torture
