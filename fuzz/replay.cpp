// Runs an entry point on every file of the folders named, without a fuzzer: so that what was found once stays found.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream in(entry.path(), std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
            std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
            LLVMFuzzerTestOneInput(data.data(), data.size());
            ++files;
        }
    std::printf("%d inputs\n", files);
    return files > 0 ? 0 : 1;
}
