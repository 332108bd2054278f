// The cost of one touch frame through the loaded plug-in: time and heap allocations. Every case first checks that its
// frames do what they are measured for. `--count NAME FRAMES` runs one case without the benchmark library, for counting
// its instructions (bench/instructions does that).
#include "bench/BenchHost.h"
#include "bench/FrameCases.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
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
using bench::FrameKind;

// The frames of a case repeat after so many.
constexpr int Steps = 64;

// Outlined, so that an instruction counter can tell the measured frame from making and preparing it.
[[gnu::noinline]] void MeasuredFrame(BenchHost& host, const bench::Frame& frame) {
    bench::Deliver(host, frame);
}

void Prepare(const FrameCase& frameCase, BenchHost& host, int step) {
    if (frameCase.prepare != nullptr) {
        bench::Deliver(host, frameCase.prepare(step));
    }
}

// Answers the allocations of the measured frames.
std::uint64_t RunFrames(const FrameCase& frameCase, BenchHost& host, int count) {
    std::uint64_t allocations = 0;
    for (int step = 1; step <= count; ++step) {
        Prepare(frameCase, host, step);
        const bench::Frame frame = frameCase.frame(step);
        const std::uint64_t before = s_allocations;
        MeasuredFrame(host, frame);
        allocations += s_allocations - before;
    }
    return allocations;
}

// Answers the allocations of one frame; throws when the frames do not do what they are measured for.
double CheckCase(const FrameCase& frameCase, BenchHost& host) {
    RunFrames(frameCase, host, Steps);
    const std::uint64_t effectsBefore = host.GetEffectCount();
    const std::uint64_t allocations = RunFrames(frameCase, host, Steps);
    const std::uint64_t effects = host.GetEffectCount() - effectsBefore;
    if (frameCase.kind == FrameKind::Steady && effects < Steps) {
        throw std::runtime_error(std::string(frameCase.name) + ": a measured frame had no effect");
    }
    if (frameCase.kind != FrameKind::First && allocations != 0) {
        throw std::runtime_error(std::string(frameCase.name) + ": a steady frame allocates");
    }
    return static_cast<double>(allocations) / Steps;
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
    std::array<bench::Frame, Steps> frames{};
    for (int step = 0; step < Steps; ++step) {
        frames[static_cast<std::size_t>(step)] = frameCase.frame(step);
    }
    std::size_t step = 0;
    for ([[maybe_unused]] auto iteration : state) {
        if (frameCase.prepare != nullptr) {
            state.PauseTiming();
            Prepare(frameCase, host, static_cast<int>(step));
            state.ResumeTiming();
        }
        MeasuredFrame(host, frames[step]);
        step = (step + 1) % frames.size();
    }
    state.counters["allocations"] = allocations;
}

// Runs one case for an instruction counter. 0 when it ran.
int CountFrames(const char* name, int frames) {
    for (const FrameCase& frameCase : bench::GetFrameCases()) {
        if (std::strcmp(frameCase.name, name) == 0) {
            BenchHost host(TOUCHNAV_PLUGIN);
            frameCase.setUp(host);
            RunFrames(frameCase, host, frames);
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
