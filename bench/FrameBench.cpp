// The cost of one touch frame through the loaded plug-in: time and heap allocations. Every case first checks that its
// frames do what they are measured for. `--count NAME FRAMES` runs one case without the benchmark library, for counting
// its instructions (bench/instructions does that).
#include "bench/BenchHost.h"
#include "bench/FrameCases.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

namespace {

std::uint64_t s_allocations = 0;
bool s_faultFound = false;

}  // namespace

// Counts every allocation of the process, the plug-in's included.
void* operator new(std::size_t size) {
    ++s_allocations;
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}

namespace {

using bench::BenchHost;
using bench::FrameCase;

constexpr int WarmUpFrames = 64;

void RunFrames(const FrameCase& frameCase, BenchHost& host, int first, int count,
               void (*frame)(const FrameCase&, BenchHost&, int)) {
    for (int step = first; step < first + count; ++step) {
        if (frameCase.prepare != nullptr) {
            frameCase.prepare(host, step);
        }
        frame(frameCase, host, step);
    }
}

// Outlined, so that an instruction counter can tell the measured frame from the preparation.
[[gnu::noinline]] void MeasuredFrame(const FrameCase& frameCase, BenchHost& host, int step) {
    frameCase.frame(host, step);
}

// Answers the allocations of one frame; throws when the frames do not do what they are measured for.
double CheckCase(const FrameCase& frameCase, BenchHost& host) {
    RunFrames(frameCase, host, 1, WarmUpFrames, MeasuredFrame);
    const std::uint64_t effectsBefore = host.GetEffectCount();
    std::uint64_t allocations = 0;
    for (int step = WarmUpFrames + 1; step <= 2 * WarmUpFrames; ++step) {
        if (frameCase.prepare != nullptr) {
            frameCase.prepare(host, step);
        }
        const std::uint64_t before = s_allocations;
        MeasuredFrame(frameCase, host, step);
        allocations += s_allocations - before;
    }
    const std::uint64_t effects = host.GetEffectCount() - effectsBefore;
    if (frameCase.hasEffect && effects < static_cast<std::uint64_t>(WarmUpFrames)) {
        throw std::runtime_error(std::string(frameCase.name) + ": a measured frame had no effect");
    }
    if (!frameCase.isFirstFrame && allocations != 0) {
        throw std::runtime_error(std::string(frameCase.name) + ": a steady frame allocates");
    }
    return static_cast<double>(allocations) / WarmUpFrames;
}

void RunBenchmark(benchmark::State& state, const FrameCase& frameCase) {
    BenchHost host(TOUCHNAV_PLUGIN);
    frameCase.setUp(host);
    double allocations = 0;
    try {
        allocations = CheckCase(frameCase, host);
    } catch (const std::exception& fault) {
        s_faultFound = true;
        state.SkipWithError(fault.what());
        return;
    }
    int step = 0;
    for ([[maybe_unused]] auto iteration : state) {
        if (frameCase.prepare != nullptr) {
            state.PauseTiming();
            frameCase.prepare(host, step);
            state.ResumeTiming();
        }
        frameCase.frame(host, step);
        step = (step + 1) % 64;
    }
    state.counters["allocations"] = allocations;
}

// Runs one case for an instruction counter. 0 when it ran.
int CountFrames(const char* name, int frames) {
    for (const FrameCase& frameCase : bench::GetFrameCases()) {
        if (std::strcmp(frameCase.name, name) == 0) {
            BenchHost host(TOUCHNAV_PLUGIN);
            frameCase.setUp(host);
            RunFrames(frameCase, host, 1, frames, MeasuredFrame);
            return 0;
        }
    }
    std::fprintf(stderr, "touchnav-bench: no case named %s\n", name);
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--list") == 0) {
        for (const FrameCase& frameCase : bench::GetFrameCases()) {
            std::puts(frameCase.name);
        }
        return 0;
    }
    if (argc == 4 && std::strcmp(argv[1], "--count") == 0) {
        return CountFrames(argv[2], std::atoi(argv[3]));
    }
    for (const FrameCase& frameCase : bench::GetFrameCases()) {
        benchmark::RegisterBenchmark(frameCase.name, RunBenchmark, frameCase);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    return s_faultFound ? 1 : 0;
}
