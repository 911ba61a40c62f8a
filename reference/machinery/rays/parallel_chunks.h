// Work that several threads share.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

namespace hyx {

/// Calls `work(first, end)` for pieces of 0 to `count`, each `size` long at most, on all processors of this process.
/// `work` must not throw. Returns when all is done.
template <class Work>
void forChunks(std::size_t count, std::size_t size, Work const& work) {
    std::size_t const chunks = (count + size - 1) / size;
    std::atomic<std::size_t> next = 0;
    auto const run = [&] {
        for (std::size_t chunk; (chunk = next++) < chunks;)
            work(chunk * size, std::min(count, (chunk + 1) * size));
    };
    std::size_t const workers = std::min<std::size_t>(chunks, std::max(1u, std::thread::hardware_concurrency()));
    std::vector<std::jthread> threads;
    for (std::size_t i = 1; i < workers; ++i)
        threads.emplace_back(run);
    run();
}

} // namespace hyx
