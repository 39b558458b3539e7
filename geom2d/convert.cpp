// Conversions of rectangles: between 16.16 and integers, with three kinds of rounding, and from 32 to 16 bits.
#include "geom2d/records.h"
#include "scalar/integers.h"
#include "zan/geom2d.h"

namespace {

// The sums wrap: nearest gives -32768 for 32767.5 and above, ceiling for all values above 32767.
int32_t nearest(Zan_Fixed x) { return zan::wrapAdd(x, 0x8000) >> 16; }
int32_t ceiling(Zan_Fixed x) { return zan::wrapAdd(x, 0xFFFF) >> 16; }
int32_t floor(Zan_Fixed x) { return x >> 16; }

template <class R>
void convert(const Zan_FixedRect* source, R* destination, int32_t (*roundLow)(Zan_Fixed),
             int32_t (*roundHigh)(Zan_Fixed)) {
    using T = zan::Coordinate<R>;
    destination->left = static_cast<T>(roundLow(source->left));
    destination->top = static_cast<T>(roundLow(source->top));
    destination->right = static_cast<T>(roundHigh(source->right));
    destination->bottom = static_cast<T>(roundHigh(source->bottom));
}

template <class R>
void convertToFixed(const R* source, Zan_FixedRect* destination) {
    const auto fixed = [](int32_t x) { return static_cast<Zan_Fixed>(static_cast<uint32_t>(x) << 16); };
    *destination = {fixed(source->left), fixed(source->top), fixed(source->right), fixed(source->bottom)};
}

}  // namespace

int32_t Zan_FixedRect2Rect(const Zan_FixedRect* source, Zan_Rect* destination) {
    convert(source, destination, nearest, nearest);
    return 0;
}
int32_t Zan_FixedRect2LRect(const Zan_FixedRect* source, Zan_LRect* destination) {
    convert(source, destination, nearest, nearest);
    return 0;
}
int32_t Zan_FixedRect2RectIn(const Zan_FixedRect* source, Zan_Rect* destination) {
    convert(source, destination, ceiling, floor);
    return 0;
}
int32_t Zan_FixedRect2LRectIn(const Zan_FixedRect* source, Zan_LRect* destination) {
    convert(source, destination, ceiling, floor);
    return 0;
}
int32_t Zan_FixedRect2RectOut(const Zan_FixedRect* source, Zan_Rect* destination) {
    convert(source, destination, floor, ceiling);
    return 0;
}
int32_t Zan_FixedRect2LRectOut(const Zan_FixedRect* source, Zan_LRect* destination) {
    convert(source, destination, floor, ceiling);
    return 0;
}

int32_t Zan_Rect2FixedRect(const Zan_Rect* source, Zan_FixedRect* destination) {
    convertToFixed(source, destination);
    return 0;
}
int32_t Zan_LRect2FixedRect(const Zan_LRect* source, Zan_FixedRect* destination) {
    convertToFixed(source, destination);
    return 0;
}

int32_t Zan_LRect2Rect(const Zan_LRect* source, Zan_Rect* destination) {
    // Left and top have no upper bound, right and bottom no lower one: those of an inverted rectangle may be truncated.
    if (source->left < INT16_MIN || source->top < INT16_MIN) return Zan_Result_OutOfRange;
    if (source->right > INT16_MAX || source->bottom > INT16_MAX) return Zan_Result_OutOfRange;
    destination->left = static_cast<int16_t>(source->left);
    destination->top = static_cast<int16_t>(source->top);
    destination->right = static_cast<int16_t>(source->right);
    destination->bottom = static_cast<int16_t>(source->bottom);
    return 0;
}
