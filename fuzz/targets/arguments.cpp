// The command with any arguments: it ends with one of its exit codes.

#include "../input.h"
#include "../profiles.h"
#include "../room.h"

#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>

#include <algorithm>
#include <iostream>
#include <sstream>

int CommandMain(int count, char** arguments); // main of tools/melkar

namespace melkar::fuzz {
namespace {

/// The command talks to nobody, and hears one text.
class Quiet {
public:
    explicit Quiet(const std::string& input) : m_input(input) {
        std::cin.rdbuf(m_input.rdbuf());
        std::cin.clear();
        std::cout.rdbuf(m_words.rdbuf());
        std::cerr.rdbuf(m_words.rdbuf());
    }
    ~Quiet() {
        std::cin.rdbuf(m_former[0]);
        std::cout.rdbuf(m_former[1]);
        std::cerr.rdbuf(m_former[2]);
    }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    std::streambuf* m_former[3] = {std::cin.rdbuf(), std::cout.rdbuf(), std::cerr.rdbuf()};
    std::istringstream m_input;
    std::ostringstream m_words;
};

/// No file beyond the room may be written and no machine asked, whatever is typed.
std::string Harmless(std::string argument) {
    std::replace(argument.begin(), argument.end(), '\0', '_');
    std::replace(argument.begin(), argument.end(), '/', '_');
    std::replace(argument.begin(), argument.end(), '\\', '_');
    for (std::size_t at = 0; (at = argument.find("..", at)) != std::string::npos;)
        argument.replace(at, 2, "__");
    return argument;
}

/// The first line holds the arguments, with blanks between them; then come the profile and a data file, which is the
/// standard input, too.
void RunCommand(std::string_view input) {
    Visit visit;
    std::istringstream words{Harmless(std::string(TakeLine(input)))};
    const std::vector<std::string_view> parts = PartsOf(input, 2);
    const std::string data = Harmless(std::string(parts[1])); // a manifest has arguments, too
    visit.Give("conf/graph.cnf", parts[0]);
    visit.Give("bin/data.csv", data);
    std::vector<std::string> arguments{"melkar"};
    for (std::string word; words >> word;)
        arguments.push_back(word);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    {
        const Quiet quiet{data};
        const int code = CommandMain(static_cast<int>(arguments.size()), pointers.data());
        Require(code >= 0 && code <= 2, "an exit code: " + std::to_string(code));
    }
    for (const auto& made : std::filesystem::directory_iterator(Room().Path("bin")))
        if (made.is_directory())
            std::filesystem::remove_all(made); // an application was laid out
        else
            visit.Expect("bin/" + made.path().filename().string());
}

void SeedArguments(Seeds& seeds) {
    AddProfileWords(seeds);
    const std::string between(kBetweenParts);
    const std::string days = "--section OWN --data data.csv --size 240x200";
    const std::string picture = "bar " + days + " -o 'a b.png'\n";
    seeds.add("batch", "batch - -j 2 --state s\n" + StarterProfile("bar", "OWN") + between + picture);
    seeds.add("new", "new app week pie\n" + between);
    const std::string report = "report --printer r.pdf --header data.csv --data . --section OWN";
    for (const KindRow& row : Catalogue()) {
        const std::string kind = row.kind;
        if (kind.empty())
            continue;
        const DataTables files = FilesReadBy(row);
        const std::string rest =
            "\n" + StarterProfile(kind, "OWN") + between + (files.empty() ? "" : ExampleFile(files.front()));
        seeds.add(kind + "-png", "draw " + kind + " " + days + " -o a.png --hover 100,90" + rest);
        seeds.add(kind + "-svg", "draw " + kind + " " + days + " -o a.svg --svg-outlines --series 3 --target 9" + rest);
        seeds.add(kind + "-record",
                  "draw " + kind + " " + days + " --record --date 20260302 --page 1 --dpi 200" + rest);
        seeds.add(kind + "-stdin", "draw " + kind + " --section OWN --data - --click 9,9 --from 2 --to 99" + rest);
        seeds.add(kind + "-told", "data " + kind + " --example" + rest);
        seeds.add(kind + "-keys", "keys " + kind + " --profile --section X" + rest);
        seeds.words.insert(kind);
    }
    for (const std::string line : {"", "--help", "--version", "man", "completion bash", "keys", "data", "draw",
                                   "nonsense", "draw --help", report.c_str()})
        seeds.add("line-" + std::to_string(std::hash<std::string>()(line) % 1000),
                  line + "\n" + StarterProfile("report", "OWN"));
    seeds.words.insert({" --size ", "0x0", "32767x32767", " --dpi ", " --series ", " --format ", "webp", "pdf",
                        " -o - ", " --landscape", " --paper ", "99999999999", "-1", " --base ", " --"});
}

} // namespace

extern const Target kArguments;
const Target kArguments{"arguments", "a line of arguments, a profile and a data file", RunCommand, SeedArguments};

} // namespace melkar::fuzz
