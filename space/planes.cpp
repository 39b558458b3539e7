// Plane equations from points or from a normal, and the intersection of a ray with a plane. Only a ray that misses
// reports.
#include "frame/report.h"
#include "matrix/vectors.h"
#include "zan/space.h"

using zan::Vector3;
using zan::Vector4;

namespace {

// The plane of a polygon by Newell's method, and the mean of its vertices.
inline void fitPlane(const Vector3* points, int32_t count, Zan_PlaneEq& plane, Vector3& mean) {
    Vector3 normal(0, 0, 0);
    mean = {0, 0, 0};
    Vector3 p = points[0];
    for (int32_t i = 0; i < count; ++i) {
        const Vector3 q = points[i + 1 < count ? i + 1 : 0];
        normal.x += (p.y - q.y) * (p.z + q.z);
        normal.y += (p.z - q.z) * (p.x + q.x);
        normal.z += (p.x - q.x) * (p.y + q.y);
        mean.x += p.x;
        mean.y += p.y;
        mean.z += p.z;
        p = q;
    }
    zan::normalize(normal);
    const double reciprocal = 1.0 / count;
    mean = {mean.x * reciprocal, mean.y * reciprocal, mean.z * reciprocal};
    plane = {normal.x, normal.y, normal.z, -zan::dot(mean, normal)};
}

}  // namespace

int32_t Zan_GetPlaneEquation(const Vector3* points, int32_t count, Zan_PlaneEq* plane, Vector3* centroid) {
    Vector3 mean(0, 0, 0);
    Zan_PlaneEq fitted = {0, 0, 0, 0};
    if (count == 4) {  // the corners of a layer: the compiler unrolls the loop
        fitPlane(points, 4, fitted, mean);
    } else if (count > 0) {
        fitPlane(points, count, fitted, mean);
    }
    if (centroid != nullptr) *centroid = mean;
    *plane = fitted;
    return 0;
}

int32_t Zan_GetPlaneEquation2(const Vector3* point, const Vector3* normal, Zan_PlaneEq* plane) {
    *plane = {normal->x, normal->y, normal->z, -zan::dot(*point, *normal)};
    return 0;
}

int32_t Zan_RayIntersectPlane(const Zan_PlaneEq* plane, bool forwardOnly, const Zan_Ray* ray, Vector3* hit,
                              bool* behind, bool* hitFound) {
    const Vector4 origin = ray->origin;
    const Vector3 direction = ray->direction;
    double t = 0;
    bool found = false;
    const double denominator = zan::dot({plane->a, plane->b, plane->c}, direction);
    if (!zan::nearZero(denominator)) {
        t = -(plane->a * origin.x + plane->d + plane->b * origin.y + plane->c * origin.z) / denominator;
        found = !forwardOnly || t > 0;
    }
    if (behind != nullptr) *behind = t < 0;
    *hit = {origin.x + t * direction.x, origin.y + t * direction.y, origin.z + t * direction.z};
    if (hitFound != nullptr) {
        *hitFound = found;
        return 0;
    }
    if (found) return 0;
    return zan::report(zan::Site::RayIntersectPlane, Zan_Err_NoPlaneIntersection, zan::kNoContext);
}
