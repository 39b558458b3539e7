// Intersections of rectangles with NaNs. The property geom2d_rectangles covers the rest.
#include "tests/support/doubles.h"
#include "zan/geom2d.h"

TEST_CASE(
    "where either rectangle has a NaN edge, the result has that edge of the rectangle that is not the destination") {
    const Zan_FloatRect a = {NAN, 0, 10, NAN};
    const Zan_FloatRect b = {5, 5, 15, 15};

    Zan_FloatRect first = a;
    CHECK(Zan_SectFloatRect(&first, &b, &first));
    CHECK(doubles(first) == doubles(Zan_FloatRect{5, 5, 10, 15}));

    Zan_FloatRect second = b;
    CHECK(Zan_SectFloatRect(&a, &second, &second));
    CHECK(doubles(second) == doubles(Zan_FloatRect{NAN, 5, 10, NAN}));

    CHECK(!Zan_SectFloatRect(&b, &a, nullptr));
}
