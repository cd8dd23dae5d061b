// SPDX-License-Identifier: MIT
// The program as a process: what a start costs, and how `list` grows with the number of displays. The time shown
// is the process's CPU time; "waits" is its wall time over the waits that reading each display once consists of.
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using Seconds = std::chrono::duration<double>;

/// Two writes and one read, each preceded by its wait.
constexpr Seconds probeWaits{0.070};

struct Cost {
    double cpu = 0.0;  // seconds
    double wall = 0.0; // seconds
    bool isGood = false;
};

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

Cost runProgram(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), LUMENVALE_PROGRAM);
    std::vector<char*> pointers;
    for (std::string& each : arguments)
        pointers.push_back(each.data());
    pointers.push_back(nullptr);

    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    const bool isWaitedFor = child > 0 && wait4(child, &status, 0, &usage) == child;
    const Seconds wall = std::chrono::steady_clock::now() - start;
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), wall.count(),
            isWaitedFor && WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

void report(benchmark::State& state, const Cost& cost)
{
    if (!cost.isGood)
        state.SkipWithError("the program failed");
    state.SetIterationTime(cost.cpu);
}

void programVersion(benchmark::State& state)
{
    for (auto _ : state)
        report(state, runProgram({"--version"}));
}
BENCHMARK(programVersion)->UseManualTime()->Unit(benchmark::kMillisecond);

void programList(benchmark::State& state)
{
    const QTemporaryDir folder;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        const std::string number = std::to_string(i + 1);
        std::ofstream(folder.filePath(QString::number(i) + ".json").toStdString())
            << R"({"name": "Monitor )" << number << R"(", "displayID": )" << number << R"(, "ddc": {}})";
    }
    double ratio = 0.0;
    for (auto _ : state) {
        const Cost cost = runProgram({"--simulate", folder.path().toStdString(), "list"});
        report(state, cost);
        ratio = cost.wall / (probeWaits.count() * static_cast<double>(state.range(0)));
    }
    state.counters["waits"] = ratio;
    state.SetComplexityN(state.range(0));
}
BENCHMARK(programList)
    ->Arg(1)
    ->Arg(3)
    ->Arg(16)
    ->Arg(64)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

} // namespace
