// Layers in space agree with their definition: the edges clipped one after the other, then all corners and clip points
// transformed, also those of edges that do not cross the near plane.

#include "property.h"
#include "tests/support/vectors.h"
#include "zan/poly.h"
#include "zan/space.h"

namespace {

using Edge = std::pair<Vector2, Vector2>;

struct Definition {
    Vector3 corners[4], clipPoints[4];
    bool behind[4];

    void clipEdge(int32_t i) {
        const int32_t j = (i + 1) % 4;
        clipPoints[i] = {0, 0, 0};
        Zan_Clip3DLine(&corners[i], &corners[j], &behind[i], &behind[j], &clipPoints[i]);
    }
    void toScreen(const Zan_Matrix4& m) {
        for (int32_t i = 0; i < 4; ++i) clipEdge(i);
        Zan_Transform3DFloatPoints(&m, 4, corners);
        Zan_Transform3DFloatPoints(&m, 4, clipPoints);
    }
    bool edge(int32_t i, Edge& out) const {
        const int32_t j = (i + 1) % 4;
        const Vector3 &start = behind[i] ? clipPoints[i] : corners[i], &end = behind[j] ? clipPoints[i] : corners[j];
        out = {{start.x, start.y}, {end.x, end.y}};
        return !behind[i] || !behind[j];
    }
    std::vector<Vector2> outline() const {
        std::vector<Vector2> points;
        for (int32_t i = 0; i < 4; ++i) {
            Edge e;
            if (!edge(i, e)) continue;
            points.push_back(e.first);
            if (behind[(i + 1) % 4]) points.push_back(e.second);
        }
        return points;
    }
};

void mustAgree(const Zan_TransformPoly3D& poly, const Definition& definition) {
    for (int32_t i = 0; i < 4; ++i) {
        Edge edge, expected;
        const bool visible = definition.edge(i, expected);
        must(poly.GetEdge(i, &edge) == visible);
        must(!visible || (sameDoubles(edge.first, expected.first) && sameDoubles(edge.second, expected.second)));
    }
}

bool layer(Choices& c) {
    const bool nasty = c.below(4) == 0;
    // Depths are often at the near plane or one step beside it.
    const double depths[] = {0, 0.1, 0x1.9999999999999p-4, 1, -1, c.plain(-1, 1)};
    const auto element = [&] { return nasty ? c.nasty() : c.plain(-2, 2); };
    Zan_Matrix4 toEye(true), toScreen(true);
    toEye.m02 = nasty ? c.nasty() : c.among(depths);
    toEye.m12 = nasty ? c.nasty() : c.among(depths);
    toEye.m32 = nasty ? c.nasty() : c.among(depths);
    for (double* m : {&toScreen.m01, &toScreen.m02, &toScreen.m10, &toScreen.m20, &toScreen.m30, &toScreen.m31}) {
        *m = element();
    }
    toScreen.m23 = c.below(2);
    toScreen.m33 = c.below(2) - 0.1;

    Zan_TransformPoly3D poly;
    Definition definition;
    for (int32_t i = 0; i < 4; ++i) {
        const double x = nasty ? c.nasty() : c.below(5) - 2;
        const Vector2 corner(x, nasty ? c.nasty() : c.below(5) - 2);
        poly.SetLayerPoint(i, corner);
        definition.corners[i] = {corner.x, corner.y, 0};
    }
    poly.TransformPointsToEye(toEye);
    Zan_Transform3DFloatPoints(&toEye, 4, definition.corners);
    poly.TransformPointsToScreen(toScreen);
    definition.toScreen(toScreen);
    mustAgree(poly, definition);
    poly.InitPolyPoints();
    const std::vector<Vector2> outline = definition.outline();
    must(std::equal(outline.begin(), outline.end(), poly.GetPolyPoints(), poly.GetPolyPoints() + poly.NumPolyPoints(),
                    sameDoubles<Vector2>));
    // Marks corners 0 and 1 anew, so that edges that did not cross the plane may now seem to.
    poly.ClipEdgeToScreen(0);
    definition.clipEdge(0);
    mustAgree(poly, definition);
    return outline.size() == 4;
}

const Property kProperty("poly_layers", 50000, layer);

}  // namespace
