#include "pixel_story.h"

#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/tracing.h>

#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace melkar::tool {
namespace {

/// Calls look(chart, surface) once it is drawn. @return the result of reading and drawing
template <class Look> long Trace(Request request, const Look& look) {
    const auto [width, height] = request.size;
    const ScopedSurface trace(CreateTracingSurface(width, height));
    if (trace == nullptr)
        throw std::runtime_error("no memory for the picture");
    const auto chart = MakeChart(*request.kind, request.chart);
    if (const long code = chart->Read(request.data.data()); code != kOk && code != kNoDays)
        return code;
    chart->Bind({trace, trace, nullptr, nullptr, true});
    const long result = chart->Paint(CRect(0, 0, width, height), request.data.data());
    if (result == kOk)
        look(*chart, trace);
    return result;
}

} // namespace

bool PixelStory::EndsLike(const PixelStory& other) const {
    const bool bothEnd = Top() != nullptr && other.Top() != nullptr;
    return result == other.result && (bothEnd ? *Top() == *other.Top() : Top() == other.Top());
}

PixelStory StoryOf(const Request& request, CPoint at) {
    PixelStory story;
    story.result = Trace(request, [&](const Chart& chart, HDC trace) {
        const std::vector<TracedLine> lines = TraceOf(trace);
        for (const auto& [line, color] : LayersAt(trace, at)) {
            const auto& [text, step] = lines.at(line);
            story.layers.push_back({line + 1, text, std::string(step.owner), std::string(step.operation), color});
        }
        story.shown = chart.Shown();
    });
    return story;
}

long ListOperations(const Request& request, std::string& list) {
    return Trace(request, [&](const Chart&, HDC trace) {
        std::ostringstream text;
        int number = 0;
        for (const auto& [line, step] : TraceOf(trace))
            text << ++number << ' ' << NameOfStep(std::string(step.owner), std::string(step.operation)) << ' ' << line
                 << '\n';
        list = text.str();
    });
}

std::string NameOfStep(const std::string& owner, const std::string& step) {
    return owner.empty() ? "-" : owner + "::" + (step.empty() ? "?" : step);
}

std::string HexOf(COLORREF color) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", color & 0xFFU, color >> 8U & 0xFFU, color >> 16U & 0xFFU);
    return text;
}

} // namespace melkar::tool
