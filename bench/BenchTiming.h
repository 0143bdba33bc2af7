// Timing helpers of the benchmarks: a nanosecond clock, medians and interleaved rounds.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace bench {

inline double nowNs() {
    static double const ticksPerNs = [] {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return static_cast<double>(frequency.QuadPart) / 1e9;
    }();
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    return static_cast<double>(ticks.QuadPart) / ticksPerNs;
}

inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    std::size_t const middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// The median of the round-by-round quotients: each round's two samples were taken close
// together, under the same load.
inline double pairedRatio(std::vector<double> const& numerators,
                          std::vector<double> const& denominators) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < numerators.size() && i < denominators.size(); ++i)
        ratios.push_back(numerators[i] / denominators[i]);
    return median(ratios);
}

inline double minimum(std::vector<double> const& values) {
    return *std::min_element(values.begin(), values.end());
}

// Runs the variants round by round, the order rotating from round to round, and answers the
// samples of each variant (a first warm-up round left out).
template <class Variant>
std::vector<std::vector<double>> interleave(std::vector<Variant> const& variants, int rounds) {
    std::size_t const n = variants.size();
    std::vector<std::vector<double>> samples(n);
    for (int round = 0; round <= rounds; ++round) {
        for (std::size_t k = 0; k < n; ++k) {
            std::size_t const which = (k + static_cast<std::size_t>(round)) % n;
            double const sample = variants[which]();
            if (round > 0)
                samples[which].push_back(sample);
        }
    }
    return samples;
}

// One line of bench/run-all.sh's table, beside the program's own report:
//     ROW|benchmark|library|reference|unit|ratio|target
// reference is the raw Win32 figure of the same work (or, for a flatness goal, the library's
// own figure on the small case); ratio is library / reference, or the paired median of the
// rounds when the caller has one; a target of 0 means none.
inline void row(char const* benchmark, double library, double reference, char const* unit,
                double ratio, double target) {
    std::printf("ROW|%s|%.3f|%.3f|%s|%.3f|%.2f\n", benchmark, library, reference, unit, ratio,
                target);
}

} // namespace bench
