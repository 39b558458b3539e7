// Outlines of a glyph: its contours from a font, its area, its hull, and hit tests with a hole.
// glyph FONT.ttf
#include <ft2build.h>
#include <zan/zan.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cstdio>
#include <vector>

namespace {

using Point = Zan_Vector2T<double>;
using Outline = std::vector<Point>;
using Contours = std::vector<Outline>;

Point pointOf(const FT_Vector* v) { return {static_cast<double>(v->x), static_cast<double>(v->y)}; }

//! [flatten]
// Quadratic curves become 8 chords each. Repeated vertices are left out, as in the recipe coast.
void append(Contours& contours, Point p) {
    if (contours.back().empty() || contours.back().back() != p) contours.back().push_back(p);
}
int moveTo(const FT_Vector* to, void* contours) {
    static_cast<Contours*>(contours)->emplace_back();
    append(*static_cast<Contours*>(contours), pointOf(to));
    return 0;
}
int lineTo(const FT_Vector* to, void* contours) {
    append(*static_cast<Contours*>(contours), pointOf(to));
    return 0;
}
int curveTo(const FT_Vector* control, const FT_Vector* to, void* contours) {
    const Point a = static_cast<Contours*>(contours)->back().back();
    const Point b = pointOf(control);
    const Point c = pointOf(to);
    for (int i = 1; i <= 8; ++i) {
        const double t = i / 8.0;
        const double s = 1.0 - t;
        append(*static_cast<Contours*>(contours),
               {s * s * a.x + 2 * s * t * b.x + t * t * c.x, s * s * a.y + 2 * s * t * b.y + t * t * c.y});
    }
    return 0;
}
int cubicTo(const FT_Vector* /*first*/, const FT_Vector* /*second*/, const FT_Vector* to, void* contours) {
    return lineTo(to, contours);  // TrueType fonts have none
}
//! [flatten]

Contours contoursOf(const char* font, FT_ULong character) {
    Contours contours;
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (FT_Init_FreeType(&library) != 0) return contours;
    if (FT_New_Face(library, font, 0, &face) == 0) {
        constexpr FT_Outline_Funcs kFunctions = {moveTo, lineTo, curveTo, cubicTo, 0, 0};
        if (FT_Load_Char(face, character, FT_LOAD_NO_SCALE) == 0)
            FT_Outline_Decompose(&face->glyph->outline, &kFunctions, &contours);
        FT_Done_Face(face);
    }
    FT_Done_FreeType(library);
    for (Outline& contour : contours)
        while (contour.size() > 1 && contour.front() == contour.back()) contour.pop_back();
    return contours;
}

//! [hit]
// Even-odd: a point is on the glyph when an odd number of contours contain it.
bool isOnGlyph(const Contours& contours, Point p) {
    bool on = false;
    for (const Outline& contour : contours) {
        unsigned char inside = 0;
        Zan_IsFloatPointInConcavePoly(&p, contour.data(), static_cast<int32_t>(contour.size()), 0.0, &inside);
        on ^= inside != 0;
    }
    return on;
}
//! [hit]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const Contours contours = contoursOf(argv[1], 'R');

    //! [measure]
    // Contours of a hole run in the other direction, so their signed areas subtract automatically.
    double area = 0.0;
    Outline all;
    for (const Outline& contour : contours) {
        const double signedArea = Zan_SignedPolygonArea2D(contour.data(), static_cast<int32_t>(contour.size()));
        std::printf("contour of %zu vertices, signed area %.0f\n", contour.size(), signedArea);
        area += signedArea;
        all.insert(all.end(), contour.begin(), contour.end());
    }
    Outline hull;
    Zan_ComputeConvexHull(all.cbegin(), all.cend(), hull);
    std::printf("ink: %.0f square units, hull: %zu vertices\n", area < 0.0 ? -area : area, hull.size());
    //! [measure]
    std::printf("stem: %s, hole: %s\n", isOnGlyph(contours, {300.0, 700.0}) ? "on the glyph" : "beside it",
                isOnGlyph(contours, {600.0, 1050.0}) ? "on the glyph" : "beside it");
}
