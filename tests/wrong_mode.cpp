// A library that sets the rounding mode to upward when it is loaded, as another library in the process might.
#include <cfenv>

namespace {
const int kSet = std::fesetround(FE_UPWARD);
}
