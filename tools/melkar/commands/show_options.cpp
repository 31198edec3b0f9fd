#include "show_options.h"

#include "command.h"
#include "draw_options.h"

namespace melkar::tool {

void AddShowOptions(CLI::App& app, ShowOptions& options) {
    AddChartArguments(app, options.chart);
    AddSize(app, options.size);
    app.footer(KindList() + "\n" +
               Examples({
                   "melkar show bar --base samples/app/bin --section BAR_WEEK --data samples/data/bar-week.csv",
                   "melkar show week --base samples/app/bin --section WEEK --data samples/data/circadian-week.csv "
                   "--size 900x900",
               }));
}

Request RequestOf(const ShowOptions& options) {
    if (options.chart.data == "-")
        throw UsageError{"what comes through a pipe has no name to follow: --data FILE"};
    Request request = RequestOf(options.chart, options.size);
    CheckBase(request.base, request.chart.section);
    return request;
}

} // namespace melkar::tool
