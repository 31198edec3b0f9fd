#include "command.h"
#include "draw_options.h"
#include "files.h"
#include "progress.h"

namespace melkar::tool {
namespace {

void AddOptions(CLI::App& app, DrawOptions& options) {
    AddDrawOptions(app, options);
    app.footer(
        KindList() + "\n" + FormatList() + "\n" +
        Examples({
            "melkar draw bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv -o week.png",
            "melkar draw bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv"
            " --click 373,420",
        }));
}

int RunDraw(const DrawOptions& options) {
    Request request = RequestOf(options);
    const InputFile data(options.chart.data);
    request.data = data.Path();
    const bool isPrinted = options.out.empty() || request.toStandardOutput;
    const Progress progress(isPrinted ? Progress::Text() : [] { return "drawing"; });
    return DrawFromBase(std::move(request));
}

} // namespace

Run AddDraw(CLI::App& app) { return WithOptions(app, AddOptions, RunDraw); }

} // namespace melkar::tool
