#include "core/process_state.h"

#include <cassert>

namespace ostrel {
namespace {

ProcessState* g_state = nullptr;

}  // namespace

ProcessState& Process() {
  assert(g_state != nullptr);
  return *g_state;
}

bool IsProcessStateSet() {
  return g_state != nullptr;
}

Platform& World() {
  return *Process().platform;
}

void SetProcessState(ProcessState* state) {
  g_state = state;
}

ScopedProcessState::ScopedProcessState(ProcessState& state) : previous_(g_state) {
  g_state = &state;
}

ScopedProcessState::~ScopedProcessState() {
  g_state = previous_;
}

}  // namespace ostrel
