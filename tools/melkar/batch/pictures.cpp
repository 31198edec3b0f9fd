#include "pictures.h"

#include "commands/command.h"
#include "commands/draw_options.h"
#include "messages.h"
#include "progress.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <thread>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

constexpr int kMostJobs = 256;

/// Parses one row after the other: a parser costs more to make than to use.
class RowParser {
public:
    RowParser() {
        m_app.set_help_flag();
        m_app.option_defaults()->take_last();
        AddDrawOptions(m_app, m_options);
    }

    /// Throws UsageError or CLI::ParseError.
    Request Parse(const ManifestRow& row) {
        m_options = {};
        m_app.parse(std::vector<std::string>(row.words.rbegin(), row.words.rend())); // as the parser wants them
        if (m_options.out.empty() || m_options.out == "-" || m_options.record || !m_options.click.empty())
            throw UsageError{"a row writes a picture, -o FILE, and prints nothing"};
        if (m_options.chart.data == "-")
            throw UsageError{"a row has no standard input: --data FILE"};
        return RequestOf(m_options);
    }

private:
    CLI::App m_app;
    DrawOptions m_options;
};

std::string PlaceOf(const ManifestOptions& options, int line) {
    return options.manifest + ":" + std::to_string(line) + ": ";
}

std::vector<ManifestRow> RowsOf(const ManifestOptions& options) {
    if (options.manifest == "-")
        return ReadManifest(std::cin, "standard input");
    std::ifstream file(options.manifest);
    if (!file || fs::is_directory(options.manifest))
        throw UsageError{"the manifest can't be read: " + options.manifest};
    return ReadManifest(file, options.manifest);
}

Shard ShardOf(const ManifestOptions& options) {
    const auto shard = options.shard.empty() ? Shard() : ParseShard(options.shard);
    return shard ? *shard : throw UsageError{"--shard takes I/N with I from 1 to N, as in 2/5: " + options.shard};
}

/// Each row of the manifest as a picture.
class Reader {
public:
    explicit Reader(const ManifestOptions& options) : m_options(options) {}

    std::vector<Picture> Read() {
        std::vector<Picture> pictures;
        for (ManifestRow& row : RowsOf(m_options))
            Take(std::move(row), pictures);
        if (m_faults > 0)
            throw UsageError{"nothing was done: " + std::to_string(m_faults) + " faulty lines in " +
                             m_options.manifest};
        return pictures;
    }

private:
    void Take(ManifestRow row, std::vector<Picture>& pictures) {
        try {
            Request request = m_parser.Parse(row);
            const auto [first, isNew] = m_lineOf.emplace(fs::path(request.out).lexically_normal(), row.line);
            if (!isNew)
                throw UsageError{"line " + std::to_string(first->second) + " writes that picture, too: " + request.out};
            pictures.push_back({std::move(row), std::move(request)});
        } catch (const UsageError& error) {
            Fault(row.line, error.sentence);
        } catch (const CLI::ParseError& error) {
            Fault(row.line, error.what());
        }
    }

    void Fault(int line, const std::string& what) {
        ++m_faults;
        Complain(PlaceOf(m_options, line) + what);
    }

    const ManifestOptions& m_options;
    RowParser m_parser;
    std::map<std::string, int> m_lineOf; ///< of each picture
    int m_faults = 0;
};

using Messages = std::vector<KeptMessages::Message>;

/// One picture; whatever it throws becomes a complaint.
Outcome WorkOn(const Picture& picture, const std::function<Outcome(const Picture&)>& work, Messages& messages) {
    KeptMessages kept;
    Outcome outcome = Outcome::Failed;
    try {
        outcome = work(picture);
    } catch (const UsageError& error) {
        Complain(error.sentence);
    } catch (const std::exception& error) {
        Complain(error.what());
    }
    messages = std::move(kept.messages);
    return outcome;
}

/// "drawing: 1200 of 4000, 210 a second".
class Pace {
public:
    Pace(const char* doing, std::size_t count) : m_doing(doing), m_count(count) {}

    std::string Text(std::size_t done) const {
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - m_start;
        const auto rate = static_cast<long>(static_cast<double>(done) / seconds.count());
        return std::string(m_doing) + ": " + std::to_string(done) + " of " + std::to_string(m_count) + ", " +
               std::to_string(rate) + " a second";
    }

private:
    const char* m_doing;
    std::size_t m_count;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

int JobsFor(const ManifestOptions& options, std::size_t pictures) {
    const int wanted = options.jobs > 0 ? options.jobs : static_cast<int>(std::thread::hardware_concurrency());
    return std::clamp(wanted, 1, std::max(static_cast<int>(std::min<std::size_t>(pictures, kMostJobs)), 1));
}

} // namespace

void AddManifestOptions(CLI::App& app, ManifestOptions& options) {
    app.add_option("MANIFEST", options.manifest,
                   "A picture a line: the arguments of melkar draw, quoted as in a shell; # begins a comment."
                   " - reads the standard input")
        ->required()
        ->type_name("FILE");
    app.add_option("-j,--jobs", options.jobs, "Pictures at a time; as many as there are cores if not told")
        ->check(CLI::Range(1, kMostJobs));
    app.add_option("--shard", options.shard, "Of N machines that share the manifest this is number I, from 1")
        ->type_name("I/N");
}

std::vector<Picture> PicturesOf(const ManifestOptions& options) {
    const Shard shard = ShardOf(options);
    std::vector<Picture> pictures = Reader(options).Read();
    std::erase_if(pictures, [&shard](const Picture& picture) { return !shard.Has(picture.row.line); });
    return pictures;
}

std::vector<Outcome> ForEach(const std::vector<Picture>& pictures, const ManifestOptions& options, const char* doing,
                             const std::function<Outcome(const Picture& picture)>& work) {
    constexpr int kUnlessTold = 0;
    setenv("SOURCE_DATE_EPOCH", "0", kUnlessTold); // pages of PDF tell when they were made: the same whenever that was
    std::vector<Outcome> outcomes(pictures.size());
    std::vector<Messages> messages(pictures.size());
    std::atomic<std::size_t> next = 0;
    std::atomic<std::size_t> done = 0;
    {
        const Pace pace(doing, pictures.size());
        const Progress progress([&] { return pace.Text(done); });
        std::vector<std::jthread> workers;
        for (int worker = JobsFor(options, pictures.size()); worker > 0; --worker)
            workers.emplace_back([&] {
                for (std::size_t at = next++; at < pictures.size(); at = next++, ++done)
                    outcomes[at] = WorkOn(pictures[at], work, messages[at]);
            });
    }
    for (std::size_t at = 0; at < pictures.size(); ++at)
        for (const auto& [say, what] : messages[at])
            say(PlaceOf(options, pictures[at].row.line) + what);
    return outcomes;
}

} // namespace melkar::tool
