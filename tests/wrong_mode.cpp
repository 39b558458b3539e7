// Loaded into a program, has it round upwards, as a careless neighbour of the library might.
#include <cfenv>

namespace {
const int kSet = std::fesetround(FE_UPWARD);
}
