// Values for the tests: random numbers that lean on bad places, from a seed that is printed.
#ifndef ZAN_TESTS_VALUES_H
#define ZAN_TESTS_VALUES_H

#include <catch2/catch.hpp>

#include "fuzz/choices.h"

/// The seed is printed when a check fails in its scope.
class Random : public Choices {
public:
    explicit Random(uint32_t seed)
        : Choices(seed),
          scope_(Catch::MessageBuilder("seed", CATCH_INTERNAL_LINEINFO, Catch::ResultWas::Info) << "seed " << seed) {}

private:
    Catch::ScopedMessage scope_;
};

#endif  // ZAN_TESTS_VALUES_H
