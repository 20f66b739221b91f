#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <ctime>
#include <vector>

/// Two ways of the same work beside each other in one run: what the machine does meanwhile hits both alike.
namespace tamarok::bench {

/// Processor time of the thread, so that other work on the machine does not count.
inline double threadSeconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <class Action>
double secondsOf(Action action)
{
    const double begin = threadSeconds();
    action();
    return threadSeconds() - begin;
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Runs `peer` and `own` turn by turn, each over `items` inputs. Counter `ratio` is the median of the turns'
/// ratios; `own_ns` and `peer_ns` are the medians for one input. The benchmark must use manual time.
template <class Peer, class Own>
void compare(benchmark::State& state, std::size_t items, Peer peer, Own own)
{
    std::vector<double> peers;
    std::vector<double> owns;
    std::vector<double> ratios;
    for ([[maybe_unused]] const auto _ : state) {
        peers.push_back(secondsOf(peer));
        owns.push_back(secondsOf(own));
        ratios.push_back(owns.back() / peers.back());
        state.SetIterationTime(owns.back());
    }
    const double nanoseconds = 1e9 / static_cast<double>(items);
    state.counters["ratio"] = median(ratios);
    state.counters["own_ns"] = median(owns) * nanoseconds;
    state.counters["peer_ns"] = median(peers) * nanoseconds;
}

} // namespace tamarok::bench
