// Outlines of real data: the coast of an island from a file of shorelines, its area, its hull, and the part of it
// inside a window. Prints counts and areas; with a second argument, also draws the outlines.
// coast SHORELINES.shp [PICTURE.svg]
#include <zan/zan.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Point = Zan_Vector2T<double>;
using Outline = std::vector<Point>;

template <class T>
T read(const std::vector<char>& bytes, size_t at) {
    T value{};
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

// The rings of a shapefile's polygons, in degrees of longitude and latitude. A record has a header of 8 bytes, then
// type 5, four doubles of bounds, the counts of rings and points, the first point of each ring, the points.
std::vector<Outline> readRings(const char* path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    std::vector<Outline> rings;
    for (size_t at = 100; at + 52 <= bytes.size();) {
        const auto ringCount = read<uint32_t>(bytes, at + 44);
        const auto pointCount = read<uint32_t>(bytes, at + 48);
        const size_t points = at + 52 + 4 * static_cast<size_t>(ringCount);
        if (read<int32_t>(bytes, at + 8) != 5 || points + 16 * static_cast<size_t>(pointCount) > bytes.size()) break;
        for (uint32_t ring = 0; ring < ringCount; ++ring) {
            const auto first = read<uint32_t>(bytes, at + 52 + 4 * static_cast<size_t>(ring));
            const uint32_t end =
                ring + 1 < ringCount ? read<uint32_t>(bytes, at + 56 + 4 * static_cast<size_t>(ring)) : pointCount;
            Outline outline;
            for (uint32_t i = first; i < end; ++i) {
                const size_t p = points + 16 * static_cast<size_t>(i);
                outline.emplace_back(read<double>(bytes, p), read<double>(bytes, p + 8));
            }
            rings.push_back(outline);
        }
        at = points + 16 * static_cast<size_t>(pointCount);
    }
    return rings;
}

//! [open]
// Zan's outlines are open and have no repeated vertices: the last vertex is joined to the first automatically.
void openRing(Outline& outline) {
    outline.erase(std::unique(outline.begin(), outline.end()), outline.end());
    while (outline.size() > 1 && outline.front() == outline.back()) outline.pop_back();
}
//! [open]

//! [pixels]
// Degrees to pixels of a map whose centre is `centre`. The tolerances of the library suit pixels.
constexpr double kPixelsPerDegree = 60.0;
constexpr double kKilometresPerDegree = 111.195;

void toPixels(Outline& outline, Point centre) {
    Zan_Matrix3 m(true);
    m.Translate(-centre.x, -centre.y);
    m.Scale(kPixelsPerDegree * std::cos(centre.y * 0.017453292519943295), -kPixelsPerDegree);  // north is up
    m.Translate(320.0, 320.0);
    Zan_TransformFloatPoints(&m, static_cast<int32_t>(outline.size()), outline.data());
}
//! [pixels]

//! [clip]
// Clipping works on homogeneous points; their z and w are interpolated along.
std::vector<Zan_Vector4T<double>> homogeneous(const Outline& outline) {
    std::vector<Zan_Vector4T<double>> points;
    for (const Point& p : outline) points.emplace_back(p.x, p.y, 0.0, 1.0);
    return points;
}

Outline clipped(const Outline& subject, const Outline& convexWindow) {
    const std::vector<Zan_Vector4T<double>> window = homogeneous(convexWindow);
    const std::vector<Zan_Vector4T<double>> points = homogeneous(subject);
    std::vector<Zan_Vector4T<double>> inside;
    Zan_PolyPolyClip2D(&window, &points, &inside);
    Outline result;
    for (const Zan_Vector4T<double>& p : inside) result.emplace_back(p.x, p.y);
    return result;
}
//! [clip]

double squareKilometres(const Outline& outline) {
    const double pixels = Zan_SignedPolygonArea2D(outline.data(), static_cast<int32_t>(outline.size()));
    return std::fabs(pixels) * std::pow(kKilometresPerDegree / kPixelsPerDegree, 2.0);
}

void draw(std::ofstream& file, const Outline& outline, const char* style) {
    file << "<polygon points=\"";
    for (const Point& p : outline) file << std::round(p.x * 10.0) / 10.0 << ',' << std::round(p.y * 10.0) / 10.0 << ' ';
    file << "\" stroke-width=\"1.5\" " << style << "/>\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    std::vector<Outline> rings = readRings(argv[1]);

    //! [island]
    // The island that contains a point of the map: 2 degrees west, 53 degrees north.
    const Point place(-2.0, 53.0);
    const auto island = std::find_if(rings.begin(), rings.end(), [&place](const Outline& ring) {
        unsigned char inside = 0;
        Zan_IsFloatPointInConcavePoly(&place, ring.data(), static_cast<int32_t>(ring.size()), 0.0, &inside);
        return inside != 0;
    });
    if (island == rings.end()) return 1;
    Outline coast = *island;
    const size_t closed = coast.size();
    openRing(coast);
    toPixels(coast, {-2.5, 54.5});
    //! [island]

    //! [measure]
    Outline hull;
    Zan_ComputeConvexHull(coast.cbegin(), coast.cend(), hull);
    const Outline window = {{240.0, 330.0}, {440.0, 330.0}, {440.0, 530.0}, {240.0, 530.0}};
    const Outline part = clipped(coast, window);
    std::printf("%zu vertices in the file, %zu without repeats\n", closed, coast.size());
    std::printf("island: %.0f square kilometres\n", squareKilometres(coast));
    std::printf("hull: %zu vertices, %.0f square kilometres\n", hull.size(), squareKilometres(hull));
    std::printf("in the window: %zu vertices, %.0f square kilometres\n", part.size(), squareKilometres(part));
    //! [measure]

    //! [repeated]
    Outline closedWindow = window;
    closedWindow.push_back(window.front());
    std::printf("clipped by the same window as a closed ring: %zu vertices\n", clipped(coast, closedWindow).size());
    //! [repeated]

    if (argc < 3) return 0;
    std::ofstream file(argv[2], std::ios::binary);
    file << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"640\" height=\"640\" viewBox=\"0 0 640 640\">\n"
         << "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    draw(file, hull, "fill=\"none\" stroke=\"#9aa7b2\" stroke-dasharray=\"4 4\"");
    draw(file, coast, "fill=\"#2f6fb0\" fill-opacity=\"0.18\" stroke=\"#2f6fb0\"");
    draw(file, part, "fill=\"#c8501e\" fill-opacity=\"0.3\" stroke=\"#c8501e\"");
    file << "</svg>\n";
    return file.flush() ? 0 : 1;
}
