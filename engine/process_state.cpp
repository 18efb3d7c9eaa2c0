#include "engine/random.h"
#include "engine/run_host.h"

namespace zarvo {

RandomGenerator& ProcessRandom() {
  static RandomGenerator generator;
  return generator;
}

EngineState& ProcessEngineState() {
  static EngineState state;
  return state;
}

}  // namespace zarvo
