#include "command.h"
#include "options.h"
#include "output.h"

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/registry/data_reference.h>

#include <cerrno>
#include <iostream>

namespace melkar::tool {
namespace {

struct DataOptions {
    std::string kind;
    bool example = false;
    std::string out;
};

void AddOptions(CLI::App& app, DataOptions& options) {
    app.add_option("KIND", options.kind, "The file of this kind alone")->type_name("");
    app.add_flag("--example", options.example, "Print a small file that draws");
    app.add_option("-o,--output", options.out, "Write the example there, and what the kind reads beside it")
        ->type_name("FILE");
    app.footer(AllKinds() + "\n" + Examples({"melkar data steps", "melkar data simulation --example -o plan.csv"}));
}

DataTables FilesOf(const DataOptions& options) {
    const KindRow* kind = FindKind(options.kind);
    DataTables files = kind ? FilesReadBy(*kind) : DataTables();
    if (kind && (files.empty() || files.front().columns.empty()))
        throw UsageError{"this kind takes no file of rows: " + options.kind};
    return files;
}

int WriteExample(const DataOptions& options) {
    for (const DataTable& table : FilesOf(options)) {
        const std::string name = options.out + table.suffix;
        FileWriter file(name.c_str());
        file.Write(ExampleFile(table));
        errno = file.Commit();
        if (errno != 0)
            return FailToWrite(name);
    }
    return kDone;
}

int RunData(const DataOptions& options) {
    const std::string page = options.kind.empty() ? DataReference() : DataReferenceOf(options.kind);
    if (page.empty())
        throw UsageError{"unknown kind: " + options.kind + " (melkar data --help lists them)"};
    if (options.kind.empty() && (options.example || !options.out.empty()))
        throw UsageError{"an example needs a kind"};
    if (!options.out.empty())
        return WriteExample(options);
    std::cout << (options.example ? ExampleFile(FilesOf(options).front()) : page);
    return kDone;
}

} // namespace

Run AddData(CLI::App& app) { return WithOptions(app, AddOptions, RunData); }

} // namespace melkar::tool
