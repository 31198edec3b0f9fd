#include "../import/import.h"
#include "../import/plan.h"
#include "command.h"
#include "files.h"
#include "messages.h"
#include "options.h"
#include "progress.h"

#include <iomanip>
#include <iostream>
#include <sstream>

namespace melkar::tool {
namespace {

namespace in = melkar::importer;

struct ImportOptions {
    std::string form;
    std::string file;
    in::Request request;
    bool all = false;
};

std::string FormNames(const char* between) {
    std::string names;
    for (const in::Form& form : in::Forms())
        names.append(names.empty() ? "" : between).append(form.name);
    return names;
}

std::string FormList() {
    std::ostringstream list;
    list << "Forms:\n" << std::left;
    for (const in::Form& form : in::Forms())
        list << "  " << std::setw(17) << form.name << form.says << '\n';
    return list.str();
}

void AddOptions(CLI::App& app, ImportOptions& options) {
    in::Request& request = options.request;
    app.add_option("FORM", options.form, "What the file is; the list stands below")
        ->required()
        ->type_name(FormNames("|"));
    app.add_option("FILE", options.file, "The file; - reads the standard input")->required()->type_name("FILE");
    app.add_option("--kind", request.kind, "Of the chart that the data file is for")->required()->type_name("KIND");
    app.add_option("-o,--output", request.output, "Data file to write; - prints it")->required()->type_name("FILE");
    app.add_option("--date", request.date, "Column of the day, which may have a time behind it")->type_name("COLUMN");
    app.add_option(
           "--figure", request.figures,
           "Column of a figure; where the kind has several, NAME=COLUMN with a name that melkar data KIND tells."
           " Can be given several times")
        ->take_all()
        ->type_name("COLUMN");
    app.add_option("--unit", request.units,
                   "Unit of the source, in the order of the figures; else as the head row has it in brackets")
        ->take_all()
        ->type_name("UNIT");
    app.add_option("--as", request.become, "Unit to convert to, likewise, for kinds that have none of their own")
        ->take_all()
        ->type_name("UNIT");
    app.add_option("--date-format", request.dateFormat,
                   "How dates are written, as in DD.MM.YYYY or 'MMM D, YYYY'; else the year comes first")
        ->type_name("PATTERN");
    app.add_option("--decimal", request.decimals, "How decimals are written; else each column is looked through")
        ->type_name("point|comma");
    app.add_flag("--sum", request.sum, "Add the figures of a day up, but for weights; else the last one holds");
    app.add_option("--from", request.from, "First day")->type_name("YYYYMMDD");
    app.add_option("--to", request.to, "Last day")->type_name("YYYYMMDD");
    app.add_option("--caption", request.caption, "What stands below a day; MMM D if nothing else is told")
        ->type_name("PATTERN");
    app.add_flag("--all", options.all, "List each note, not the first fifty of a sort");
    app.footer(FormList() + "\nKinds: " + in::PlannedKinds() + "\n\n" +
               Examples({
                   "melkar import csv samples/import/steps.csv --date Datum --date-format DD.MM.YYYY --figure Schritte"
                   " --kind steps -o steps.csv",
                   "melkar import fhir samples/import/bundle.json --kind steps -o -",
               }));
}

/// The file itself, or one that is printed in the end.
int Import(const in::Form& form, ImportOptions options) {
    const InputFile input(options.file);
    const bool isPrinted = options.request.output == "-";
    std::optional<TemporaryFile> printed;
    options.request.path = input.Path();
    if (isPrinted)
        options.request.output = printed.emplace("data").Path();
    in::Notes notes(options.file, options.all, Progress::WriteLine);
    try {
        const auto run = [&] {
            const Progress progress([] { return "importing"; });
            return form.run(options.request, notes);
        };
        notes.Finish(run());
    } catch (const in::WrongRequest& wrong) {
        throw UsageError{wrong.what()};
    } catch (const in::Refusal& refusal) {
        Complain(options.file + ": " + refusal.what());
        return kFailed;
    }
    if (isPrinted)
        printed->CopyToStandardOutput();
    return kDone;
}

int RunImport(const ImportOptions& options) {
    const in::Form* form = in::FindForm(options.form);
    if (form == nullptr)
        throw UsageError{"unknown form: " + options.form + "; there are " + FormNames(", ")};
    return Import(*form, options);
}

} // namespace

Run AddImport(CLI::App& app) { return WithOptions(app, AddOptions, RunImport); }

} // namespace melkar::tool
