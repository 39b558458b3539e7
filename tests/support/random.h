// Random choices for Catch2 tests. A failed check prints the seed.
#ifndef ZAN_TESTS_SUPPORT_RANDOM_H
#define ZAN_TESTS_SUPPORT_RANDOM_H

#include "tests/support/choices.h"
#include "tests/support/same_bits.h"

#include <catch2/catch.hpp>

/// The seed is printed when a check fails while this object lives.
class Random : public Choices {
public:
    explicit Random(uint32_t seed)
        : Choices(seed),
          scope_(Catch::MessageBuilder("seed", CATCH_INTERNAL_LINEINFO, Catch::ResultWas::Info) << "seed " << seed) {}

private:
    Catch::ScopedMessage scope_;
};

#endif  // ZAN_TESTS_SUPPORT_RANDOM_H
