#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

// The table of ratios that `./dev bench` ends with is made of the lines that the benchmarks leave in one file.
namespace zk::bench {

/// What another library, or code by hand, takes for the same; 0 and NaN: it has nothing to show.
using Other = std::pair<std::string, double>;

/// Notes a row: what was measured on which input, what we take and what others take, where less is better. Without
/// `ZKOGL_BENCHMARK_ROWS` in the environment, which names the file, and without others, it does nothing.
inline void NoteRow(const std::string& input, const std::string& what, const char* unit, double ours,
                    const std::vector<Other>& others) {
    const char* path = std::getenv("ZKOGL_BENCHMARK_ROWS");
    const Other* best = nullptr;
    for (const Other& other : others)
        if (other.second > 0 && (!best || other.second < best->second))
            best = &other;
    if (!path || !best)
        return;
    if (FILE* file = std::fopen(path, "a")) {
        std::fprintf(file, "%s\t%s\t%s\t%.6g\t%.6g\t%s\n", input.c_str(), what.c_str(), unit, ours, best->second,
                     best->first.c_str());
        std::fclose(file);
    }
}

}  // namespace zk::bench
