#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/surface.h>

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {
/// What was told to stay on the disk, and what the file's name led to by then.
std::vector<std::string> g_synced;
std::function<std::string()> g_contents;
} // namespace

/// Takes the place of the system's own.
extern "C" int fsync(int descriptor) {
    struct stat status {};
    fstat(descriptor, &status);
    g_synced.push_back((S_ISDIR(status.st_mode) ? "folder of " : "file beside ") + (g_contents ? g_contents() : ""));
    return 0;
}

namespace melkar {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class NewFiles : public testing::Test {
protected:
    /// @return 0 or the number of the error, whether it came at the start or at the end.
    int Write(const std::string& name) const {
        const auto file = NewFile::Create(work.Path(name));
        if (!file)
            return errno;
        file->Write("new", 3);
        return file->Commit();
    }
    /// A process that does this and no more. @return its number, which nobody has from now on, and how it ended
    template <class Do> static std::pair<pid_t, int> Fork(const Do& call) {
        const pid_t child = fork();
        if (child == 0)
            _exit(call());
        int status = -1;
        waitpid(child, &status, 0);
        return {child, status};
    }
    unsigned ModeOf(const std::string& name) const {
        struct stat status {};
        lstat(work.Path(name).c_str(), &status);
        return status.st_mode;
    }
    std::vector<std::string> Entries() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(work.Path("conf")))
            names.push_back(entry.path().filename());
        return names;
    }

    TempWorkdir work;
};

TEST_F(NewFiles, ReplaceNothingButFiles) {
    mkfifo(work.Path("conf/pipe").c_str(), 0600);
    std::filesystem::create_directory(work.Path("conf/folder"));
    std::filesystem::create_symlink("loop", work.Path("conf/loop"));
    EXPECT_EQ(Write("conf/pipe"), ENOTSUP);
    EXPECT_EQ(Write("conf/folder"), EISDIR);
    EXPECT_EQ(Write("conf/loop"), ELOOP);
    EXPECT_TRUE(S_ISFIFO(ModeOf("conf/pipe")));
    EXPECT_THAT(Entries(), UnorderedElementsAre("pipe", "folder", "loop"));
    // what a surface promises can be kept only if it is refused at once
    EXPECT_EQ(CreatePageSurface(work.Path("conf/folder").c_str(), PageFormat::Pdf, 9, 9, 96), nullptr);

    const auto late = NewFile::Create(work.Path("conf/late"));
    mkfifo(work.Path("conf/late").c_str(), 0600);
    EXPECT_EQ(late->Commit(), ENOTSUP);
    EXPECT_TRUE(S_ISFIFO(ModeOf("conf/late")));
}

TEST_F(NewFiles, KeepLinkModeAndOwner) {
    work.Write("log/target", "former");
    std::filesystem::create_symlink("../log/target", work.Path("conf/link"));
    std::filesystem::create_symlink("../log/none", work.Path("conf/dangling"));
    chmod(work.Path("log/target").c_str(), 0640);
    const bool isRoot = geteuid() == 0;
    ASSERT_EQ(isRoot ? chown(work.Path("log/target").c_str(), 65534, 65534) : 0, 0);
    EXPECT_EQ(Write("conf/link"), 0);
    EXPECT_EQ(Write("conf/dangling"), 0);
    EXPECT_TRUE(S_ISLNK(ModeOf("conf/link")));
    EXPECT_EQ(ModeOf("log/target"), S_IFREG | 0640U);
    EXPECT_EQ(work.Read("log/target"), "new");
    EXPECT_EQ(work.Read("log/none"), "new");
    struct stat status {};
    stat(work.Path("log/target").c_str(), &status);
    EXPECT_EQ(status.st_uid, isRoot ? 65534 : geteuid());
    EXPECT_THAT(Entries(), UnorderedElementsAre("link", "dangling"));
}

TEST_F(NewFiles, OnAFullDiskLeaveWhatIsThere) {
    work.Write("conf/former", "former");
    const auto write = [this] {
        std::signal(SIGXFSZ, SIG_IGN); // the limit then fails a write as a full disk does
        const rlimit limit{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &limit);
        const auto file = NewFile::Create(work.Path("conf/former"));
        const std::string many(1 << 20, 'x');
        const bool isWritten = file->Write(many.data(), many.size()) || file->Write("more", 4);
        file->Abandon(ENOMEM); // what the writer makes of it
        std::exit(isWritten ? 0 : file->Commit());
    };
    EXPECT_EXIT(write(), testing::ExitedWithCode(EFBIG), "");
    EXPECT_EQ(work.Read("conf/former"), "former");
    EXPECT_THAT(Entries(), UnorderedElementsAre("former"));
}

TEST_F(NewFiles, LeaveWhatTheCallerMayNotWrite) {
    work.Write("conf/theirs", "former");
    chmod(work.Path("conf/theirs").c_str(), 0444);
    const auto [child, status] = Fork([this] { // nobody, in a folder where anybody may make files
        chmod(work.Path("conf").c_str(), 0777);
        chmod(work.Path(".").c_str(), 0755);
        return geteuid() == 0 && setuid(65534) != 0 ? 99 : Write("conf/theirs");
    });
    EXPECT_EQ(WEXITSTATUS(status), EACCES);
    EXPECT_EQ(work.Read("conf/theirs"), "former");
}

TEST_F(NewFiles, GoWithTheirProcess) {
    const int nameless = open(work.Path("conf").c_str(), O_WRONLY | O_TMPFILE, 0600);
    if (nameless < 0)
        GTEST_SKIP() << "this file system has no files without a name";
    close(nameless);
    const auto [child, status] = Fork([this] {
        const auto file = NewFile::Create(work.Path("conf/picture"));
        file->Write("half", 4);
        return kill(getpid(), SIGKILL);
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_THAT(Entries(), UnorderedElementsAre());
}

TEST_F(NewFiles, AreOnTheDiskBeforeTheyTakeTheirName) {
    work.Write("conf/a.png", "former");
    g_contents = [&] { return work.Read("conf/a.png"); };
    EXPECT_EQ(Write("conf/a.png"), 0);
    EXPECT_THAT(g_synced, ElementsAre()) << "nobody asked for it";
    work.Write("conf/a.png", "former");
    SetDurableFiles(TRUE);
    EXPECT_EQ(Write("conf/a.png"), 0);
    SetDurableFiles(FALSE);
    EXPECT_THAT(g_synced, ElementsAre("file beside former", "folder of new"));
}

TEST_F(NewFiles, SweepWhatTheDeadLeft) {
    const std::string dead = std::to_string(Fork([] { return 0; }).first);
    const std::string alive = std::to_string(getpid());
    const auto hourAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    for (const std::string& name : {"a.png." + dead + ".0.new", "a.png." + alive + ".0.new", "b.png." + dead + ".0.new",
                                    "a.png." + dead + ".0.newer", "a.png." + dead + ".new"}) {
        work.Write("conf/" + name, "half");
        std::filesystem::last_write_time(work.Path("conf/" + name), hourAgo);
    }
    work.Write("conf/a.png." + dead + ".1.new", "another machine's, which is at it");
    EXPECT_EQ(Write("conf/a.png"), 0);
    EXPECT_THAT(Entries(), UnorderedElementsAre("a.png", "a.png." + alive + ".0.new", "b.png." + dead + ".0.new",
                                                "a.png." + dead + ".0.newer", "a.png." + dead + ".new",
                                                "a.png." + dead + ".1.new"));
}

} // namespace
} // namespace melkar
