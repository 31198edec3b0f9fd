// Entry points of libFuzzer, which brings the main function: --target=NAME, an option that it leaves alone, chooses the
// target, and --seeds=DIRECTORY writes where that begins instead of fuzzing: inputs, and its words as DIRECTORY.dict.

#include "target.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using namespace melkar::fuzz;

const Target* chosen = nullptr;

/// As libFuzzer's dictionaries have it.
std::string Quoted(const std::string& word) {
    std::string text;
    for (const char byte : word) {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned char>(byte));
        const bool isPlain = byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\';
        text += isPlain ? std::string(1, byte) : escaped;
    }
    return "\"" + text + "\"\n";
}

void WriteSeeds(const std::string& directory) {
    std::filesystem::create_directories(directory);
    Seeds seeds;
    seeds.add = [&directory](const std::string& name, const std::string& bytes) {
        std::ofstream(directory + "/" + name, std::ios::binary) << bytes;
    };
    chosen->seed(seeds);
    Require(!seeds.words.empty(), "a target has words: libFuzzer takes no empty dictionary");
    std::ofstream dictionary(directory + ".dict");
    for (const std::string& word : seeds.words)
        dictionary << (word.empty() ? "" : Quoted(word));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    std::string directory;
    for (int i = 1; i < *count; ++i) {
        const std::string argument = (*arguments)[i];
        if (argument.starts_with("--target="))
            chosen = FindTarget(argument.substr(argument.find('=') + 1));
        if (argument.starts_with("--seeds="))
            directory = argument.substr(argument.find('=') + 1);
    }
    if (chosen == nullptr) {
        for (const Target& target : Targets())
            std::printf("--target=%-12s %s\n", target.name, target.says);
        std::exit(2);
    }
    if (!directory.empty()) {
        WriteSeeds(directory);
        std::exit(0);
    }
    Begin();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    chosen->run({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
