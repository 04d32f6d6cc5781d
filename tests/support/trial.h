// Large counts: a sample of them in an ordinary test run, all of them under `./dev trial`.
#pragma once

#include <cstdlib>

namespace quorvelant {

// Whether this is a trial. Draws are seeded, so that the sample is the beginning of the whole.
inline bool IsTrial() {
  return std::getenv("QUORVELANT_TRIAL") != nullptr;  // NOLINT(concurrency-mt-unsafe): nobody sets it
}

// How many cases to run: `sample`, in a trial `all`.
inline int TrialCount(int sample, int all) {
  return IsTrial() ? all : sample;
}

}  // namespace quorvelant
