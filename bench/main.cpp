// Measures, prints every figure, writes the summary, and fails when a goal is missed.
#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>

#include "bench/figures.h"
#include "bench/toolkit.h"

namespace {

using namespace sontaro::bench;

void Show(std::vector<Figure>& figures, const Figure& figure) {
    fmt::print("{}   ({})\n", figure.Line(), figure.details);
    std::fflush(stdout);
    figures.push_back(figure);
}

bool Write(const std::vector<Figure>& figures, const char* path) {
    std::ofstream summary(path);
    for (const Figure& figure : figures) summary << figure.Line() << '\n';
    summary.close();
    return summary.good();
}

int Run(const char* path) {
    std::vector<Figure> figures;
    Show(figures, LinkThroughput());
    Show(figures, ReassemblyThroughput());
    for (const Figure& figure : Documents()) Show(figures, figure);
    for (const Figure& figure : Timelines()) Show(figures, figure);
    for (const Figure& figure : ScreenSplits()) Show(figures, figure);
    for (const Figure& figure : CommandLine()) Show(figures, figure);
    for (const Figure& figure : StartUp()) Show(figures, figure);
    const Toolkit toolkit;
    for (const Figure& figure : SettingsGrids()) Show(figures, figure);
    for (const Figure& figure : Tables()) Show(figures, figure);
    for (const Figure& figure : BatchSends()) Show(figures, figure);
    Show(figures, MessageRoundTrip());
    if (!Write(figures, path)) {
        fmt::print(stderr, "cannot write {}\n", path);
        return 1;
    }
    return std::ranges::all_of(figures, &Figure::IsMet) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        fmt::print(stderr, "Usage: sontaro_bench SUMMARY_FILE\n");
        return 2;
    }
    return Run(argv[1]);
} catch (const std::exception& error) {
    fmt::print(stderr, "sontaro_bench: {}\n", error.what());
    return 1;
}
