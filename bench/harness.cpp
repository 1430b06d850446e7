#include "bench/harness.h"

#include "bench/free_memory.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <utility>

namespace cvlog::bench {

namespace {

std::vector<std::pair<std::string, Measure>>& measures() {
    static std::vector<std::pair<std::string, Measure>> all;
    return all;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void writeJson(std::FILE* out, const Figure& figure) {
    std::fprintf(out,
                 "{\"name\":\"%s\",\"value\":%.6g,\"unit\":\"%s\",\"peer\":%.6g,\"ratio\":%.4g,\"goal\":%.4g,"
                 "\"holds\":%s}\n",
                 figure.name.c_str(), figure.value, figure.unit.c_str(), figure.peer, figure.ratio(),
                 figure.goal, figure.holds() ? "true" : "false");
    std::fflush(out);
}

int run(const char* filter, std::FILE* out) {
    int count = 0;
    for (const auto& [name, measure] : measures()) {
        if (filter && name.find(filter) == std::string::npos) continue;
        for (const Figure& figure : measure()) {
            writeJson(out, figure);
            ++count;
        }
    }
    std::fprintf(stderr, "%d figures measured\n", count);
    return count > 0 || filter ? 0 : 1;
}

} // namespace

Registration::Registration(std::string name, Measure measure) {
    measures().emplace_back(std::move(name), std::move(measure));
}

double seconds(const std::function<void()>& action) {
    giveBackFreeMemory(); // whether the heap kept any is a matter of chance, and new pages are dear
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

Pair medians(int rounds, const std::function<double()>& value, const std::function<double()>& peer) {
    std::vector<double> values;
    std::vector<double> peers;
    for (int round = 0; round < rounds; ++round) {
        values.push_back(value());
        peers.push_back(peer());
    }
    return {median(std::move(values)), median(std::move(peers))};
}

} // namespace cvlog::bench

// Usage: PROGRAM [--json FILE] [FILTER]. Figures go to the file, else to standard output, one JSON object a line.
int main(int argc, char** argv) {
    std::FILE* out = stdout;
    const char* filter = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--json") == 0 && i + 1 < argc)
            out = std::fopen(argv[++i], "w");
        else
            filter = argv[i];
    }
    if (!out) {
        std::fprintf(stderr, "The output file cannot be written\n");
        return 2;
    }
    const int code = cvlog::bench::run(filter, out);
    if (out != stdout) std::fclose(out);
    return code;
}
