// How long something takes, and the middle one of many measurements: what all tables share.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ostrel::bench {

// The time that a piece of work takes, in microseconds, by the system's finest clock.
template <typename Work>
double Microseconds(const Work& work) {
  LARGE_INTEGER start = {};
  LARGE_INTEGER end = {};
  LARGE_INTEGER perSecond = {};
  QueryPerformanceFrequency(&perSecond);
  QueryPerformanceCounter(&start);
  work();
  QueryPerformanceCounter(&end);
  return static_cast<double>(end.QuadPart - start.QuadPart) * 1e6 /
         static_cast<double>(perSecond.QuadPart);
}

inline double Median(std::vector<double> samples) {
  const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
  std::nth_element(samples.begin(), middle, samples.end());
  return *middle;
}

}  // namespace ostrel::bench
