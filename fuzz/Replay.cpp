// SPDX-License-Identifier: Apache-2.0
// Goes through the files of a folder, where no fuzzer's own main does: what was found once is tried by each test run.
#include "fuzz/Promise.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char **argv)
{
    promise(argc == 2, "one folder is named");
    int inputs = 0;
    for (const std::filesystem::directory_entry &entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        std::printf("%s\n", entry.path().c_str()); // the last one named is the one that broke it
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
        ++inputs;
    }
    promise(inputs > 0, "the folder holds inputs");
}
