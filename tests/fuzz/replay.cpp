// SPDX-License-Identifier: MIT
#include "check.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// Gives a fuzz target the empty input, and every file of the directory that is named.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: %s DIRECTORY\n", argv[0]);
        return 2;
    }
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    check(!paths.empty(), "there is a corpus");
    LLVMFuzzerTestOneInput(nullptr, 0);
    for (const auto& path : paths) {
        std::printf("%s\n", path.filename().c_str());
        std::fflush(stdout); // The last name is the one that a failure is about.
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
