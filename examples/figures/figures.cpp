// Draws the figures of the conventions page and of the guide. The library computes every coordinate and every result
// that they show. zan-figures FOLDER
#include <zan/zan.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Point = Zan_Vector2T<double>;

constexpr const char* kInk = "#24323f";
constexpr const char* kQuiet = "#9aa7b2";
constexpr const char* kFirst = "#2f6fb0";
constexpr const char* kSecond = "#c8501e";

constexpr double kRadiansPerDegree = 0.017453292519943295;

// An SVG picture in pixels; y points down.
class Picture {
public:
    Picture(int width, int height) {
        out_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
             << "\" viewBox=\"0 0 " << width << ' ' << height << "\" font-family=\"sans-serif\" font-size=\"13\">\n"
             << "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    }
    void line(Point a, Point b, const char* colour, const char* extra = "") {
        out_ << "<line x1=\"" << number(a.x) << "\" y1=\"" << number(a.y) << "\" x2=\"" << number(b.x) << "\" y2=\""
             << number(b.y) << "\" stroke=\"" << colour << "\" stroke-width=\"1.5\" " << extra << "/>\n";
    }
    // A line with an arrowhead at b.
    void arrow(Point a, Point b, const char* colour) {
        line(a, b, colour);
        for (const double angle : {150.0, -150.0}) {
            Zan_Matrix3 m(true);
            m.Rotate(angle);
            Point head(b.x - a.x, b.y - a.y);
            const double length = std::hypot(head.x, head.y);
            head = {head.x * 9 / length, head.y * 9 / length};
            m.TransformPoint(&head);
            line(b, {b.x + head.x, b.y + head.y}, colour);
        }
    }
    template <class Points>
    void polygon(const Points& points, const char* fill, const char* stroke, const char* extra = "") {
        out_ << "<polygon points=\"";
        for (const Point& p : points) out_ << number(p.x) << ',' << number(p.y) << ' ';
        out_ << "\" fill=\"" << fill << "\" fill-opacity=\"0.18\" stroke=\"" << stroke << "\" stroke-width=\"1.5\" "
             << extra << "/>\n";
    }
    // What is drawn until endClip is cut off outside of a box.
    void beginClip(Point topLeft, Point bottomRight) {
        ++clips_;
        out_ << "<clipPath id=\"window" << clips_ << "\"><rect x=\"" << number(topLeft.x) << "\" y=\""
             << number(topLeft.y) << "\" width=\"" << number(bottomRight.x - topLeft.x) << "\" height=\""
             << number(bottomRight.y - topLeft.y) << "\"/></clipPath>\n<g clip-path=\"url(#window" << clips_
             << ")\">\n";
    }
    void endClip() { out_ << "</g>\n"; }
    void dot(Point p, bool filled) {
        out_ << "<circle cx=\"" << number(p.x) << "\" cy=\"" << number(p.y) << "\" r=\"4\" stroke=\"" << kFirst
             << "\" fill=\"" << (filled ? kFirst : "#ffffff") << "\"/>\n";
    }
    void text(Point at, const std::string& words, const char* colour = kInk) {
        out_ << "<text x=\"" << number(at.x) << "\" y=\"" << number(at.y) << "\" fill=\"" << colour << "\">" << words
             << "</text>\n";
    }
    bool write(const std::string& path) const {
        std::ofstream file(path, std::ios::binary);
        file << out_.str() << "</svg>\n";
        return static_cast<bool>(file.flush());
    }

private:
    // Two decimals: the last bits of a sine differ between systems.
    static std::string number(double value) {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%.2f", value);
        return text.data() == std::string("-0.00") ? "0.00" : text.data();
    }
    std::ostringstream out_;
    int clips_ = 0;
};

void axes(Picture& picture, Point origin) {
    picture.arrow(origin, {origin.x + 130, origin.y}, kQuiet);
    picture.arrow(origin, {origin.x, origin.y + 130}, kQuiet);
    picture.text({origin.x + 134, origin.y + 4}, "x", kQuiet);
    picture.text({origin.x - 4, origin.y + 146}, "y", kQuiet);
}

std::array<Point, 4> transformed(std::array<Point, 4> points, const Zan_Matrix3& m) {
    m.TransformPoints(4, points.data());
    return points;
}

constexpr std::array<Point, 4> box(double left, double top, double right, double bottom) {
    return {Point(left, top), Point(right, top), Point(right, bottom), Point(left, bottom)};
}

bool drawOrder(const std::string& folder) {
    Picture picture(640, 230);
    const std::array<Point, 4> square = box(0, 0, 30, 30);
    for (const bool translateFirst : {true, false}) {
        const Point origin(translateFirst ? 40 : 360, 40);
        axes(picture, origin);
        Zan_Matrix3 m(true);
        if (translateFirst) {
            m.Translate(40, 20);
            m.Scale(2, 2);
        } else {
            m.Scale(2, 2);
            m.Translate(40, 20);
        }
        const std::array<Point, 4> result = transformed(square, m);
        m.Translate(origin.x, origin.y);
        Zan_Matrix3 toPicture(true);
        toPicture.Translate(origin.x, origin.y);
        picture.polygon(transformed(square, toPicture), kQuiet, kQuiet);
        picture.polygon(transformed(square, m), kFirst, kFirst);
        const std::string corner = "(0, 0) goes to (" + std::to_string(static_cast<int>(result[0].x)) + ", " +
                                   std::to_string(static_cast<int>(result[0].y)) + ")";
        picture.text({origin.x, 212}, (translateFirst ? "Translate(40, 20), then Scale(2, 2): "
                                                      : "Scale(2, 2), then Translate(40, 20): "));
        picture.text({origin.x, 228}, corner, kFirst);
    }
    return picture.write(folder + "/order.svg");
}

bool drawRotation(const std::string& folder) {
    Picture picture(420, 210);
    const Point origin(60, 40);
    axes(picture, origin);
    Zan_Matrix3 m(true);
    m.Rotate(30);
    m.Translate(origin.x, origin.y);
    picture.polygon(transformed(box(0, 0, 110, 60), m), kFirst, kFirst);
    Point tip(110, 0);
    m.TransformPoint(&tip);
    picture.arrow(origin, tip, kSecond);
    picture.text({tip.x + 8, tip.y + 4}, "the +x axis after Rotate(30)", kSecond);
    picture.text({190, 190}, "a positive angle turns +x towards +y");
    return picture.write(folder + "/turn.svg");
}

bool drawNearPlane(const std::string& folder) {
    // A road, 4 wide and 1.5 below the eye, that starts behind the eye and leads away from it.
    constexpr double kFocus = 200;
    Zan_TransformPoly3D layer;
    const std::array<Point, 4> road = box(-2, -3, 2, 30);
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, road[static_cast<size_t>(i)]);
    Zan_Matrix4 toEye(true);
    toEye.RotateAxis(1, 0, 0, 1.5707963267948966);  // layer y becomes depth
    toEye.Translate(0, 1.5, 0);
    Zan_Matrix4 toScreen(true);
    toScreen.Project(kFocus);
    toScreen.Translate(320, 90, 0);
    layer.TransformPointsToEye(toEye);
    layer.TransformPointsToScreen(toScreen);
    layer.InitPolyPoints();

    Picture picture(640, 260);
    picture.line({0, 90}, {640, 90}, kQuiet, "stroke-dasharray=\"4 4\"");
    picture.text({8, 84}, "eye level", kQuiet);
    std::array<Point, 8> outline{};
    const int32_t count = layer.NumPolyPoints();
    std::ostringstream corners;
    for (int32_t i = 0; i < count; ++i) layer.GetPolyPoint(i, &outline[static_cast<size_t>(i)]);
    picture.polygon(std::array<Point, 4>{outline[0], outline[1], outline[2], outline[3]}, kFirst, kFirst);
    for (int32_t i = 0; i < 4; ++i) {
        Point corner;
        if (!layer.GetPoint(i, &corner)) {
            corners << (corners.tellp() > 0 ? ", " : "") << i;
            continue;
        }
        picture.dot(corner, true);
        picture.text({corner.x > 320 ? corner.x + 12 : corner.x - 70, corner.y + 6}, "corner " + std::to_string(i));
    }
    picture.text({8, 24}, std::to_string(count) + " outline points; corners behind z = 0.1: " + corners.str() +
                              "; the cut lies far below the window");
    return picture.write(folder + "/near_plane.svg");
}

bool drawBoundary(const std::string& folder) {
    Picture picture(680, 240);
    constexpr double kStep = 28;
    constexpr Zan_LRect kRect = {1, 1, 5, 5};
    constexpr std::array<Point, 4> kSquare = box(1, 1, 5, 5);
    for (const bool rectangle : {true, false}) {
        const double left = rectangle ? 40 : 360;
        picture.polygon(box(left + kStep, 20 + kStep, left + 5 * kStep, 20 + 5 * kStep), kQuiet, kQuiet);
        for (int32_t v = 0; v <= 6; ++v) {
            for (int32_t h = 0; h <= 6; ++h) {
                const Point at(left + h * kStep, 20 + v * kStep);
                if (rectangle) {
                    const Zan_LPoint p = {h, v};
                    picture.dot(at, Zan_LPtInRect(&p, &kRect));
                } else {
                    const Point p(h, v);
                    unsigned char inside = 0;
                    if (Zan_IsFloatPointInConcavePoly(&p, kSquare.data(), 4, 0.0, &inside) != 0) return false;
                    picture.dot(at, inside != 0);
                }
            }
        }
        picture.text({left, 224}, rectangle ? "Zan_LPtInRect" : "Zan_IsFloatPointInConcavePoly, tolerance 0");
    }
    return picture.write(folder + "/boundary.svg");
}

// The outline of a layer, posed as in the guide's first recipe.
std::vector<Point> posedLayer(double degrees, double distance) {
    Zan_TransformPoly3D layer;
    const std::array<Point, 4> corners = box(-100, -50, 100, 50);
    for (int32_t i = 0; i < 4; ++i) layer.SetLayerPoint(i, corners[static_cast<size_t>(i)]);
    Zan_Matrix4 toEye(true);
    toEye.RotateXYZ(0.0, degrees * kRadiansPerDegree, 0.0);
    toEye.Translate(0.0, 0.0, distance);
    Zan_Matrix4 toScreen(true);
    toScreen.Project(1000.0);
    toScreen.Translate(640.0, 400.0, 0.0);
    layer.TransformPointsToEye(toEye);
    layer.TransformPointsToScreen(toScreen);
    layer.InitPolyPoints();
    return {layer.GetPolyPoints(), layer.GetPolyPoints() + layer.NumPolyPoints()};
}

bool drawLayer(const std::string& folder) {
    Picture picture(690, 180);
    struct Frame {
        double degrees, distance;
        const char* words;
    };
    double left = 10;
    for (const Frame& frame : {Frame{0, 500, "facing the eye"}, Frame{60, 500, "rotated by 60 degrees"},
                               Frame{80, 60, "partly behind the eye"}}) {
        Zan_Matrix3 toPicture(true);
        toPicture.Scale(0.165, 0.165);
        toPicture.Translate(left, 10);
        std::vector<Point> outline = posedLayer(frame.degrees, frame.distance);
        toPicture.TransformPoints(static_cast<int32_t>(outline.size()), outline.data());
        const std::array<Point, 4> window = transformed(box(0, 0, 1280, 800), toPicture);
        picture.beginClip(window[0], window[2]);
        picture.polygon(outline, kFirst, kFirst);
        picture.endClip();
        picture.polygon(window, "none", kQuiet);
        Point mouse(700, 420);
        toPicture.TransformPoint(&mouse);
        picture.dot(mouse, true);
        picture.text({left, 165}, frame.words);
        left += 228;
    }
    return picture.write(folder + "/guide_layer.svg");
}

bool drawCamera(const std::string& folder) {
    Picture picture(460, 180);
    using Vector = Zan_Vector3T<double>;
    double left = 10;
    for (const double down : {-1.0, 1.0}) {
        Zan_Matrix4 toEye = Zan_LookAtMatrix({0, 10, 100}, {0, 10, 0}, {0, down, 0});
        toEye.Transpose();
        Zan_Matrix4 view(true);
        view.Translate(0, -10, -100);
        view *= toEye;
        Zan_Matrix4 projection(true);
        projection.Project(140);
        Zan_Matrix3 toPicture(true);
        toPicture.Translate(left + 105, 76);
        const auto seen = [&](Vector p) {
            if (!Zan_TransformPoint3DtoScreen(view, projection, toPicture, &p)) return Point(0, 0);
            return Point(p.x, p.y);
        };
        picture.polygon(
            std::array<Point, 4>{seen({-40, 0, -20}), seen({40, 0, -20}), seen({50, 0, 20}), seen({-50, 0, 20})},
            kQuiet, kQuiet);
        picture.polygon(std::array<Point, 4>{seen({-4, 0, 0}), seen({4, 0, 0}), seen({4, 30, 0}), seen({-4, 30, 0})},
                        kFirst, kFirst);
        picture.polygon(std::array<Point, 3>{seen({17, 0, 0}), seen({23, 0, 0}), seen({20, 9, 0})}, kSecond, kSecond);
        picture.polygon(box(left, 10, left + 211, 142), "none", kQuiet);
        picture.text({left, 165}, down < 0 ? "(0, -1, 0): upright" : "(0, 1, 0): on its head");
        left += 228;
    }
    return picture.write(folder + "/guide_camera.svg");
}

bool drawPoses(const std::string& folder) {
    Picture picture(640, 170);
    const auto poseOf = [](double angle, Zan_Quat* rotation) {
        Zan_Matrix4 m(true);
        m.RotateXYZ(0, 0, angle);
        Zan_Matrix4ToQuat(&m, rotation);
    };
    Zan_Quat from;
    Zan_Quat to;
    poseOf(-1.0, &from);
    poseOf(1.5, &to);
    for (int step = 0; step <= 6; ++step) {
        const double t = step / 6.0;
        Zan_Quat rotation;
        Zan_Slerp(&from, &to, t, &rotation);
        Zan_Matrix4 turned;
        Zan_QuatToMatrix4(&rotation, &turned);
        Zan_Matrix4 m(true);
        m.Scale(1 + 2 * t, 1 + 2 * t, 1);
        m *= turned;
        m.Translate(60 + 500 * t, 85, 0);
        std::array<Point, 4> square = box(-18, -18, 18, 18);
        std::array<Point, 2> axis = {Point(0, 0), Point(18, 0)};
        for (Point* p : {&square[0], &square[1], &square[2], &square[3], &axis[0], &axis[1]}) {
            Zan_Vector3T<double> q(p->x, p->y, 0);
            m.TransformPoint(&q);
            *p = {q.x, q.y};
        }
        const char* colour = step % 6 == 0 ? kSecond : kFirst;
        picture.polygon(square, colour, colour);
        picture.arrow(axis[0], axis[1], colour);
    }
    return picture.write(folder + "/guide_poses.svg");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: zan-figures FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = argv[1];
    for (bool (*const draw)(const std::string&) :
         {drawOrder, drawRotation, drawNearPlane, drawBoundary, drawLayer, drawCamera, drawPoses}) {
        if (!draw(folder)) {
            std::fprintf(stderr, "zan-figures: cannot draw into %s\n", folder.c_str());
            return 1;
        }
    }
    return 0;
}
