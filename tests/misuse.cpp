// Calls that violate a precondition: an assertion stops each of them. Each runs in a process of its own.
#include "tests/support/vectors.h"
#include "zan/zan.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace {

Zan_TransformPoly2D flat;
Zan_TransformPoly3D deep;
const Vector2 origin(0, 0);
Vector2 point(0, 0);
std::pair<Vector2, Vector2> edge;
Zan_Matrix3 matrix(true);
Zan_Matrix4 matrix4(true);
const Zan_Rect rect{};
unsigned char inside = 0;

const struct {
    const char* what;
    void (*use)();
} kWrongUses[] = {
    {"SetLayerPoint with corner -1", [] { flat.SetLayerPoint(-1, origin); }},
    {"SetLayerPoint with corner 4", [] { flat.SetLayerPoint(4, origin); }},
    {"GetPoint with corner 4", [] { flat.GetPoint(4, &point); }},
    {"GetEdge with edge 4", [] { flat.GetEdge(4, &edge); }},
    {"GetPolyPoint with point 4", [] { flat.GetPolyPoint(4, &point); }},
    {"in space: SetLayerPoint with corner 4", [] { deep.SetLayerPoint(4, origin); }},
    {"in space: GetPoint with corner 4", [] { deep.GetPoint(4, &point); }},
    {"in space: GetEdge with edge -1", [] { deep.GetEdge(-1, &edge); }},
    {"in space: ClipEdgeToScreen with edge 4", [] { deep.ClipEdgeToScreen(4); }},
    {"in space: GetPolyPoint with point 0 of an empty outline", [] { deep.GetPolyPoint(0, &point); }},
    {"Zan_TransformFloatPoints with null points",
     [] { static_cast<void>(Zan_TransformFloatPoints(&matrix, 1, nullptr)); }},
    {"Zan_InverseMatrix4 with a null inverse", [] { static_cast<void>(Zan_InverseMatrix4(&matrix4, nullptr)); }},
    {"Zan_SectRect with a null second rectangle", [] { static_cast<void>(Zan_SectRect(&rect, nullptr, nullptr)); }},
    {"Zan_IsFloatPointInConcavePoly with a null result",
     [] { static_cast<void>(Zan_IsFloatPointInConcavePoly(&origin, &origin, 1, 0, nullptr)); }},
};

// Similar calls that are allowed.
void correctUses() {
    flat.SetLayerPoint(3, origin);
    deep.GetEdge(3, &edge);
    static_cast<void>(Zan_SectRect(&rect, &rect, nullptr));
    static_cast<void>(Zan_IsFloatPointInConcavePoly<Vector2>(&origin, nullptr, 0, 0, &inside));
    static_cast<void>(Zan_TransformFloatPoints(&matrix, 0, nullptr));
}

}  // namespace

int main() {
    correctUses();
    int notStopped = 0;
    for (const auto& wrong : kWrongUses) {
        const pid_t child = fork();
        if (child == 0) {
            static_cast<void>(std::freopen("/dev/null", "w", stderr));
            wrong.use();
            _exit(0);
        }
        int status = 0;
        if (waitpid(child, &status, 0) == child && status != 0) continue;
        std::printf("no assertion stops: %s\n", wrong.what);
        ++notStopped;
    }
    return notStopped;
}
