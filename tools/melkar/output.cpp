#include "output.h"

#include "messages.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace melkar::tool {

namespace fs = std::filesystem;

const std::vector<Format>& Formats() {
    static const std::vector<Format> formats = [] {
        std::vector<Format> all;
        for (const PictureFormat& format : PictureFormats())
            all.push_back({format.suffix, format.says, PixelOutput{format.suffix}});
        all.push_back({"svg", "a page of shapes and texts", PageFormat::Svg});
        all.push_back({"pdf", "a page with its fonts", PageFormat::Pdf});
        return all;
    }();
    return formats;
}

const Format* FindFormat(std::string word) {
    std::transform(word.begin(), word.end(), word.begin(), [](unsigned char letter) { return std::tolower(letter); });
    const auto found = std::find_if(Formats().begin(), Formats().end(),
                                    [&word](const Format& format) { return format.suffix == word; });
    return found != Formats().end() ? &*found : nullptr;
}

const Format* FindFormatOfName(const std::string& path) {
    const std::string suffix = fs::path(path).extension().string();
    return suffix.empty() ? nullptr : FindFormat(suffix.substr(1));
}

std::string FormatNames(const char* before, const char* between, const char* last) {
    std::string names;
    for (const Format& format : Formats()) {
        const bool isLast = &format == &Formats().back();
        names += (names.empty() ? "" : isLast ? last : between) + (before + format.suffix);
    }
    return names;
}

std::string FormatList() {
    std::ostringstream list;
    list << "Formats:\n" << std::left;
    for (const Format& format : Formats())
        list << "  " << std::setw(17) << format.suffix << format.says << '\n';
    return list.str();
}

int FailToWrite(const std::string& what) {
    const int reason = errno;
    Complain("can't be written: " + what + (reason != 0 ? std::string(": ") + std::strerror(reason) : ""));
    return 1;
}

int FlushStandardOutput() {
    std::cout.flush();
    return std::cout ? 0 : FailToWrite("the standard output");
}

} // namespace melkar::tool
