// The growable array beside std::vector in one run: the ratios are what counts, not the times. AppendSteppedByCopy is
// what growing by Delta would cost if the block itself grew so, and shows why it does not; it is quadratic and
// therefore runs up to fewer elements.
#include <zk/_zkxyarrays.h>
#include <zk/_zkxyz.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

using namespace zk;

void AppendArray(benchmark::State& state) {
    for (auto _ : state) {
        ArrayOwner<TXYZARRAY> arr(5);
        for (int i = 0; i < state.range(0); ++i) {
            const TXYZ p{1.0 * i, 0, 0};
            ArrayAppendData(*arr, &p);
        }
        benchmark::DoNotOptimize(arr->Data);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void AppendVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<TXYZ> arr;
        for (int i = 0; i < state.range(0); ++i)
            arr.push_back({1.0 * i, 0, 0});
        benchmark::DoNotOptimize(arr.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void AppendSteppedByCopy(benchmark::State& state) {
    for (auto _ : state) {
        std::unique_ptr<TXYZ[]> block;
        std::size_t capacity = 0;
        for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) {
            if (i == capacity) {
                capacity += 5;
                auto larger = std::make_unique<TXYZ[]>(capacity);
                std::copy_n(block.get(), i, larger.get());
                block = std::move(larger);
            }
            block[i] = {1.0 * static_cast<double>(i), 0, 0};
        }
        benchmark::DoNotOptimize(block.get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void SmallPolygonArray(benchmark::State& state) {
    for (auto _ : state) {
        ArrayOwner<TXYZARRAY> arr(5);
        Arraysetcount(*arr, 4);
        benchmark::DoNotOptimize(arr->Data);
    }
}

void SmallPolygonVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<TXYZ> arr(4);
        benchmark::DoNotOptimize(arr.data());
    }
}

void TransformArray(benchmark::State& state) {
    ArrayOwner<TXYZARRAY> arr(5);
    Arraysetcount(*arr, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        MatMul(Identity, *arr);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void TransformVector(benchmark::State& state) {
    std::vector<TXYZ> arr(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        for (TXYZ& p : arr)
            MatMul(Identity, p);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(AppendArray)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(AppendVector)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(AppendSteppedByCopy)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond);
BENCHMARK(SmallPolygonArray);
BENCHMARK(SmallPolygonVector);
BENCHMARK(TransformArray)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(TransformVector)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
