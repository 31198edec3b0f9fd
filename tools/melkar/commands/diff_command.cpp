#include "command.h"
#include "draw.h"
#include "explain/differences.h"
#include "explain/trial_host.h"
#include "files.h"
#include "messages.h"
#include "options.h"

#include <MelkarCommon/checker/effective_keys.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/platform/host_surfaces.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <variant>

namespace melkar::tool {
namespace {

enum DiffExitCode { kSame = 0, kDiffers = 1, kTrouble = 2 };

struct DiffOptions {
    std::string profiles[2];
    ChartArguments chart;
    std::string size = "900x500";
    std::string out;
};

void AddOptions(CLI::App& app, DiffOptions& options) {
    app.add_option("A", options.profiles[0], "A profile")->required()->type_name("FILE");
    app.add_option("B", options.profiles[1], "Another one")->required()->type_name("FILE");
    AddChartArguments(app, options.chart);
    AddSize(app, options.size);
    app.add_option("-o,--output", options.out,
                   "Picture to write: that of A, that of B, and where they differ in red. Of pixels")
        ->type_name("FILE");
    app.footer("Exit codes: 0 both pictures are the same, 1 they differ, 2 there is no answer. --base only has the "
               "formats of dates.\n\n" +
               KindList() + "\n" +
               Examples({
                   "melkar diff samples/app/conf/graph.cnf samples/app/conf/graph.cnf bar --section BAR_WEEK"
                   " --data samples/data/bar-week.csv",
                   "melkar diff samples/app/conf/graph.cnf samples/app-dark/conf/graph.cnf bar --section BAR_WEEK"
                   " --data samples/data/bar-week.csv -o difference.png || echo they differ",
               }));
}

std::vector<EffectiveKey> KeysOf(const std::string& profile, const Request& request) {
    ProfileUse use;
    use.kind = request.kind->kind;
    use.section = request.chart.section;
    use.key = request.chart.key;
    std::vector<EffectiveKey> keys = EffectiveKeys(profile, use);
    const auto isOwn = [&](const EffectiveKey& key) { return key.line > 0 && key.section == use.section; };
    if (std::none_of(keys.begin(), keys.end(), isOwn))
        throw UsageError{"the profile has no key of this kind in section " + use.section + ": " + profile};
    return keys;
}

/// As `Draw` does it. @param shared gets the picture
void DrawPicture(HDC shared, const std::string& profile, const TrialHost& trial, Request request) {
    trial.WriteProfile(BytesOf(profile));
    const HostDirectory host(trial.Base().c_str());
    const auto [width, height] = request.size;
    const ScopedSurface second(CreateMemorySurface(width, height));
    const ScopedSurface balloon(CreateMemorySurface(width, height));
    const auto chart = MakeChart(*request.kind, request.chart);
    long code = chart->Read(request.data.data());
    if (code == kOk || code == kNoDays) {
        chart->Bind({shared, shared, second, balloon, false});
        code = chart->Paint(CRect(0, 0, width, height), request.data.data());
    }
    if (code != kOk)
        throw std::runtime_error(std::to_string(code) + ": " + ResultText(code) + ": " + request.data);
}

std::string ValueIn(const std::string& profile, const EffectiveKey& key) {
    const std::string name = std::filesystem::path(profile).filename().string();
    return (key.value.empty() ? "empty" : key.value) +
           (key.line > 0 ? " (" + name + ":" + std::to_string(key.line) + ")" : " (not in " + name + ")");
}

/// Null if there is none, as in a shorter list of another profile.
const EffectiveKey* Find(const std::vector<EffectiveKey>& keys, const EffectiveKey& like) {
    const auto found = std::find_if(keys.begin(), keys.end(), [&](const EffectiveKey& key) {
        return key.section == like.section && key.name == like.name;
    });
    return found != keys.end() ? &*found : nullptr;
}

EffectiveKey Without(EffectiveKey key) {
    key.value.clear();
    key.line = 0;
    return key;
}

/// @return whether they have the same value
bool PrintKey(const DiffOptions& options, const EffectiveKey& one, const EffectiveKey& other) {
    const bool isSame = one.value == other.value || (one.line == 0 && other.line == 0);
    if (!isSame)
        std::cout << '[' << one.section << "] " << one.name << ": " << ValueIn(options.profiles[0], one) << " | "
                  << ValueIn(options.profiles[1], other) << "; " << one.meaning << '\n';
    return isSame;
}

/// @return whether none differs
bool PrintKeys(const DiffOptions& options, const Request& request) {
    const std::vector<EffectiveKey> ones = KeysOf(options.profiles[0], request);
    const std::vector<EffectiveKey> others = KeysOf(options.profiles[1], request);
    bool areSame = true;
    for (const EffectiveKey& one : ones) {
        const EffectiveKey* other = Find(others, one);
        areSame = PrintKey(options, one, other ? *other : Without(one)) && areSame;
    }
    for (const EffectiveKey& other : others)
        if (!Find(ones, other))
            areSame = PrintKey(options, Without(other), other) && areSame;
    return areSame;
}

void PrintPixels(const PictureDifference& difference) {
    const auto& [pixels, all, area] = difference;
    std::cout << pixels << " of " << all << " pixels differ";
    if (pixels > 0)
        std::cout << ", within " << area.left << ',' << area.top << " to " << area.right - 1 << ',' << area.bottom - 1;
    std::cout << '\n';
}

int Compare(const DiffOptions& options, const Request& request, const std::string& format) {
    if (PrintKeys(options, request))
        std::cout << "no key differs\n";
    const TrialHost trial(options.chart.base);
    const ScopedSurface one(CreateMemorySurface(request.size.width, request.size.height));
    const ScopedSurface other(CreateMemorySurface(request.size.width, request.size.height));
    DrawPicture(one, options.profiles[0], trial, request);
    DrawPicture(other, options.profiles[1], trial, request);
    const PictureDifference difference = DifferenceOf(one, other);
    PrintPixels(difference);
    if (!options.out.empty() && !WriteSideBySide(one, other, options.out, format)) {
        FailToWrite(options.out);
        return kTrouble;
    }
    return difference.pixels > 0 ? kDiffers : kSame;
}

/// Of the picture to write, if there is one.
std::string FormatOf(const std::string& out) {
    if (out.empty())
        return {};
    const Format* format = FindFormatOfName(out);
    const auto* pixels = format != nullptr ? std::get_if<PixelOutput>(&format->output) : nullptr;
    return pixels != nullptr ? pixels->format : throw UsageError{"-o needs a picture of pixels: -o NAME.png"};
}

int RunDiff(const DiffOptions& options) {
    try {
        const std::string format = FormatOf(options.out);
        Request request;
        request.kind = &KindOf(options.chart);
        request.size = SizeOf(options.size);
        request.chart = options.chart.options;
        const InputFile data(options.chart.data);
        request.data = data.Path();
        return Compare(options, request, format);
    } catch (const std::exception& error) { // 1 has another meaning here
        Complain(error.what());
        return kTrouble;
    }
}

} // namespace

Run AddDiff(CLI::App& app) { return WithOptions(app, AddOptions, RunDiff); }

} // namespace melkar::tool
