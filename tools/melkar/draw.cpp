#include "draw.h"

#include "files.h"
#include "image_chart.h"
#include "messages.h"
#include "warnings.h"

#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/telling/speech.h>

#include <cerrno>
#include <iostream>
#include <sstream>

namespace melkar::tool {
namespace {

int FailWith(long code, const std::string& what) {
    Complain(std::to_string(code) + ": " + melkar::ResultText(code) + ": " + what);
    return 1;
}

void PrintClick(Chart& chart, CPoint point) {
    const long day = chart.Click(point);
    if (day < 0)
        std::cout << "no day\n";
    else
        std::cout << "day " << day << ' ' << chart.DateOf(day) << '\n';
}

long DrawWhole(Chart& chart, Request& request) {
    const CRect area(0, 0, request.size.width, request.size.height);
    const long result = chart.Paint(area, request.data.data());
    if (result == 0 && request.click)
        PrintClick(chart, *request.click);
    if (result == 0 && request.shown)
        request.shown(chart.Shown());
    return result;
}

ScopedSurface MakePicture(const Request& request) {
    const auto [width, height] = request.size;
    return ScopedSurface(request.scale == 1 ? CreateMemorySurface(width, height, request.dpi)
                                            : CreateScaledSurface(width, height, request.scale));
}

/// As a host with a window does it: the picture lands on the shared surface, a clean copy lies on the balloon surface.
/// @param format of the file; null: none is written
int DrawPixels(Chart& chart, Request& request, const char* format) {
    const auto [width, height] = request.size;
    const ScopedSurface shared = MakePicture(request);
    const ScopedSurface second = MakePicture(request);
    const ScopedSurface balloon = MakePicture(request);
    chart.Bind({shared, shared, second, balloon, false});
    if (const long code = DrawWhole(chart, request); code != 0)
        return FailWith(code, request.data);
    if (request.hover) {
        BitBlt(balloon, 0, 0, width, height, shared, 0, 0, SRCCOPY);
        chart.Hover(*request.hover);
    }
    errno = 0;
    return format != nullptr && WritePicture(shared, request.out.c_str(), format) != 0 ? FailToWrite(request.out) : 0;
}

int DrawAs(const PixelOutput& pixels, Chart& chart, Request& request) {
    return DrawPixels(chart, request, pixels.format.c_str());
}

/// Draws straight onto the surface, as onto a printer's page.
long DrawDirect(Chart& chart, Request& request, HDC surface) {
    chart.Bind({surface, surface, nullptr, nullptr, true});
    return DrawWhole(chart, request);
}

/// What nobody can tell about stays a picture without words.
void SayWords(HDC page, const Chart& chart, const Request& request) {
    const std::vector<Contents> pictures = chart.Shown();
    if (!pictures.empty())
        SetPageWords(page, request.isWalked ? WalkedWordsFor(pictures) : WordsFor(pictures));
}

/// A page becomes a file whatever came of its drawing, unless it is given up.
int DrawAs(PageFormat format, Chart& chart, Request& request) {
    errno = 0;
    ScopedSurface page(
        CreatePageSurface(request.out.c_str(), format, request.size.width, request.size.height, request.dpi));
    if (page == nullptr)
        return FailToWrite(request.out);
    if (const long code = DrawDirect(chart, request, page); code != 0) {
        AbortDoc(page);
        return FailWith(code, request.data);
    }
    SayWords(page, chart, request);
    errno = 0;
    return page.Close() ? 0 : FailToWrite(request.out);
}

/// @param out gets the record
int DrawRecord(Chart& chart, Request& request, std::ostream& out) {
    const ScopedSurface record(CreateRecordingSurface(request.size.width, request.size.height, request.dpi));
    if (const long code = DrawDirect(chart, request, record); code != 0)
        return FailWith(code, request.data);
    out << GetRecording(record);
    return 0;
}

int DrawAs(const RecordOutput&, Chart& chart, Request& request) { return DrawRecord(chart, request, std::cout); }

int DrawAs(const NoOutput&, Chart& chart, Request& request) {
    std::ostringstream nowhere;
    return request.isRecorded ? DrawRecord(chart, request, nowhere) : DrawPixels(chart, request, nullptr);
}

int DrawOutput(Chart& chart, Request& request) {
    return std::visit([&](const auto& output) { return DrawAs(output, chart, request); }, request.output);
}

/// Through a file, for the library writes those whole or not at all.
int DrawToStandardOutput(Chart& chart, Request& request) {
    const TemporaryFile file("picture");
    request.out = file.Path();
    const int exitCode = DrawOutput(chart, request);
    if (exitCode == 0)
        file.CopyToStandardOutput();
    return exitCode;
}

} // namespace

int Draw(Request request) {
    const auto chart = MakeChart(*request.kind, request.chart);
    if (WarnOfDoubts(request) > 0 && request.isStrict) {
        Complain("nothing was drawn: --strict takes no doubts");
        return 1;
    }
    // A graph draws its former days if the file is missing and doesn't tell; so the file is tried first. One without
    // day rows (102 in some classes) is a picture with a message.
    if (const long code = chart->Read(request.data.data()); code != 0 && code != melkar::kNoDays)
        return FailWith(code, request.data);

    return request.toStandardOutput ? DrawToStandardOutput(*chart, request) : DrawOutput(*chart, request);
}

std::vector<std::string> FilesReadFor(const Request& request) {
    std::vector<std::string> files{request.base + "/../conf/graph.cnf", request.base + "/../conf/config.cnf"};
    for (const DataTable& file : FilesReadBy(*request.kind)) {
        files.push_back(request.data + file.suffix);
        if (file.columns.empty()) // a picture
            files.push_back(MaskBeside(request.data));
    }
    return files;
}

} // namespace melkar::tool
