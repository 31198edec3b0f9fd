#include "output.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <system_error>

namespace melkar::tool {

namespace fs = std::filesystem;

Output FormatOf(std::string word) {
    std::transform(word.begin(), word.end(), word.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return word == "png" ? Output::Png : word == "svg" ? Output::Svg : word == "pdf" ? Output::Pdf : Output::None;
}

Output FormatOfName(const std::string& path) {
    const std::string suffix = fs::path(path).extension().string();
    return suffix.empty() ? Output::None : FormatOf(suffix.substr(1));
}

int FailToWrite(const std::string& what) {
    const int reason = errno;
    std::cerr << "melkar: can't be written: " << what;
    if (reason != 0)
        std::cerr << ": " << std::strerror(reason);
    std::cerr << '\n';
    return 1;
}

int FlushStandardOutput() {
    std::cout.flush();
    return std::cout ? 0 : FailToWrite("the standard output");
}

TemporaryFile::TemporaryFile() : m_path((fs::temp_directory_path() / "melkar-XXXXXX").string()) {
    const int descriptor = mkstemp(m_path.data());
    if (descriptor < 0)
        throw std::runtime_error("no temporary file: " + std::generic_category().message(errno));
    close(descriptor);
}

TemporaryFile::~TemporaryFile() { unlink(m_path.c_str()); }

void TemporaryFile::CopyToStandardOutput() const { std::cout << std::ifstream(m_path, std::ios::binary).rdbuf(); }

} // namespace melkar::tool
