#include "SymbolArtwork.h"

#include <QPainterPathStroker>
#include <QTransform>

#include <array>
#include <cmath>
#include <initializer_list>

namespace zd {

namespace {

struct Design {
    std::string_view name;
    double width;  // in units of the point size
    double height;
    QPainterPath (*draw)(double width, double height);
};

// A rounded rectangle outline of line width `line`, as a filled ring.
void addRing(QPainterPath& path, const QRectF& outer, double radius, double line) {
    path.addRoundedRect(outer, radius, radius);
    const QRectF inner = outer.adjusted(line, line, -line, -line);
    path.addRoundedRect(inner, std::max(0.0, radius - line), std::max(0.0, radius - line));
}

QPainterPath battery(double fraction) {
    // Body, outline 0.08 thick, with a level bar inset; a small terminal nub on the right.
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    const QRectF body(0.0, 0.0, 1.48, 0.74);
    addRing(path, body, 0.2, 0.075);
    const double inset = 0.14;
    if (fraction > 0) {
        const QRectF level(inset, inset, (body.width() - 2 * inset) * fraction,
                           body.height() - 2 * inset);
        path.addRoundedRect(level, 0.1, 0.1);
    }
    path.addRoundedRect(QRectF(1.53, 0.25, 0.09, 0.24), 0.045, 0.045);
    return path;
}

// A sector of a ring centred at (cx, cy), between the angles 45° and 135° (y upward).
void addArcBand(QPainterPath& path, double cx, double cy, double inner, double outer) {
    constexpr double kStart = 45.0;
    constexpr double kSpan = 90.0;
    path.arcMoveTo(QRectF(cx - outer, cy - outer, 2 * outer, 2 * outer), kStart);
    path.arcTo(QRectF(cx - outer, cy - outer, 2 * outer, 2 * outer), kStart, kSpan);
    if (inner > 0) {
        path.arcTo(QRectF(cx - inner, cy - inner, 2 * inner, 2 * inner), kStart + kSpan, -kSpan);
    } else {
        path.lineTo(cx, cy);
    }
    path.closeSubpath();
}

QPainterPath wifi(double width, double height) {
    QPainterPath path;
    const double cx = width / 2;
    const double cy = height - 0.02;
    addArcBand(path, cx, cy, 0.0, 0.22);
    addArcBand(path, cx, cy, 0.36, 0.53);
    addArcBand(path, cx, cy, 0.67, 0.84);
    return path;
}

QPainterPath magnifyingGlass(double, double) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.addEllipse(QPointF(0.42, 0.42), 0.39, 0.39);
    path.addEllipse(QPointF(0.42, 0.42), 0.29, 0.29);
    // The handle: a rounded bar along the diagonal, from the ring to the corner.
    QPainterPath handle;
    handle.addRoundedRect(QRectF(-0.065, 0.0, 0.13, 0.38), 0.065, 0.065);
    QTransform place;
    place.translate(0.71, 0.71);
    place.rotate(-45.0);
    path.addPath(place.map(handle));
    return path;
}

QPainterPath switches(double width, double) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    const double h = 0.38;
    // Upper switch: outlined, knob on the left.
    addRing(path, QRectF(0.0, 0.04, width, h), h / 2, 0.07);
    path.addEllipse(QPointF(h / 2, 0.04 + h / 2), 0.1, 0.1);
    // Lower switch: solid, knob cut out on the right.
    const double y = 0.56;
    path.addRoundedRect(QRectF(0.0, y, width, h), h / 2, h / 2);
    path.addEllipse(QPointF(width - h / 2, y + h / 2), 0.1, 0.1);
    return path;
}

// Boolean operations flatten curves; they run at 64 times the unit size so the flattening
// stays finer than a pixel at any point size we draw.
constexpr double kOpScale = 64.0;

QPainterPath combined(const QPainterPath& a, const QPainterPath& b, bool subtract) {
    const QTransform up = QTransform::fromScale(kOpScale, kOpScale);
    const QPainterPath big =
        subtract ? up.map(a).subtracted(up.map(b)) : up.map(a).united(up.map(b));
    return QTransform::fromScale(1 / kOpScale, 1 / kOpScale).map(big);
}

QPainterPath disc(double cx, double cy, double r) {
    QPainterPath path;
    path.addEllipse(QPointF(cx, cy), r, r);
    return path;
}

QPainterPath ring(double cx, double cy, double r, double line) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.addEllipse(QPointF(cx, cy), r, r);
    path.addEllipse(QPointF(cx, cy), r - line, r - line);
    return path;
}

// A polyline stroked with round caps and joins, as a fillable outline.
QPainterPath stroked(std::initializer_list<QPointF> points, double width) {
    QPainterPath line;
    bool first = true;
    for (const QPointF& p : points) {
        if (first)
            line.moveTo(p);
        else
            line.lineTo(p);
        first = false;
    }
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line).simplified();
}

QPainterPath roundedRing(const QRectF& outer, double radius, double line) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    addRing(path, outer, radius, line);
    return path;
}

QPainterPath rectangleStack(double width, double) {
    QPainterPath path = roundedRing(QRectF(0.0, 0.3, width, 0.7), 0.12, 0.08);
    path.addRoundedRect(QRectF(0.1, 0.15, width - 0.2, 0.08), 0.04, 0.04);
    path.addRoundedRect(QRectF(0.22, 0.0, width - 0.44, 0.08), 0.04, 0.04);
    return path;
}

QPainterPath chevronDown(double width, double height) {
    return stroked({{0.07, 0.07}, {width / 2, height - 0.07}, {width - 0.07, 0.07}}, 0.14);
}

QPainterPath plusCircle(double, double) {
    const QPainterPath plus =
        stroked({{0.5, 0.26}, {0.5, 0.74}}, 0.09).united(stroked({{0.26, 0.5}, {0.74, 0.5}}, 0.09));
    return combined(ring(0.5, 0.5, 0.5, 0.08), plus, false);
}

QPainterPath xmarkCircleFill(double, double) {
    const QPainterPath cross = stroked({{0.33, 0.33}, {0.67, 0.67}}, 0.1)
                                   .united(stroked({{0.67, 0.33}, {0.33, 0.67}}, 0.1));
    return combined(disc(0.5, 0.5, 0.5), cross, true);
}

QPainterPath checkmarkCircleFill(double, double) {
    return combined(disc(0.5, 0.5, 0.5), stroked({{0.28, 0.52}, {0.44, 0.68}, {0.72, 0.34}}, 0.1),
                    true);
}

QPainterPath circle(double, double) {
    return ring(0.5, 0.5, 0.5, 0.075);
}

QPainterPath sunMaxFill(double, double) {
    QPainterPath path = disc(0.5, 0.5, 0.22);
    for (int i = 0; i < 8; ++i) {
        QPainterPath ray;
        ray.addRoundedRect(QRectF(-0.045, -0.5, 0.09, 0.16), 0.045, 0.045);
        QTransform place;
        place.translate(0.5, 0.5);
        place.rotate(45.0 * i);
        path.addPath(place.map(ray));
    }
    return path;
}

QPainterPath moonFill(double, double) {
    return combined(disc(0.46, 0.54, 0.44), disc(0.72, 0.3, 0.36), true);
}

QPainterPath photo(double width, double height) {
    QPainterPath path = roundedRing(QRectF(0.0, 0.0, width, height), 0.14, 0.08);
    QPainterPath hills;
    hills.moveTo(0.14, height - 0.16);
    hills.lineTo(0.46, height - 0.52);
    hills.lineTo(0.68, height - 0.3);
    hills.lineTo(0.8, height - 0.42);
    hills.lineTo(width - 0.14, height - 0.16);
    hills.closeSubpath();
    path.addPath(hills);
    path.addEllipse(QPointF(width - 0.34, 0.3), 0.09, 0.09);
    return path;
}

QPainterPath timer(double, double) {
    QPainterPath path = ring(0.5, 0.56, 0.44, 0.08);
    path.addRoundedRect(QRectF(0.38, 0.0, 0.24, 0.08), 0.04, 0.04);
    return combined(path, stroked({{0.5, 0.56}, {0.5, 0.3}}, 0.09), false);
}

QPainterPath cameraViewfinder(double width, double height) {
    const double arm = 0.24;
    const double inset = 0.05;
    const double w = width - inset;
    const double h = height - inset;
    QPainterPath path = stroked({{inset, arm}, {inset, inset}, {arm, inset}}, 0.08);
    path = path.united(stroked({{w - arm, inset}, {w, inset}, {w, arm}}, 0.08));
    path = path.united(stroked({{inset, h - arm}, {inset, h}, {arm, h}}, 0.08));
    path = path.united(stroked({{w - arm, h}, {w, h}, {w, h - arm}}, 0.08));
    QPainterPath body;
    body.addRoundedRect(QRectF(0.26, 0.36, width - 0.52, 0.38), 0.06, 0.06);
    body.addRoundedRect(QRectF(width / 2 - 0.1, 0.29, 0.2, 0.1), 0.03, 0.03);
    return combined(combined(path, body, false), disc(width / 2, 0.55, 0.09), true);
}

QPainterPath folderFill(double width, double height) {
    QPainterPath tab;
    tab.addRoundedRect(QRectF(0.0, 0.0, 0.5, 0.3), 0.08, 0.08);
    QPainterPath body;
    body.addRoundedRect(QRectF(0.0, 0.14, width, height - 0.14), 0.1, 0.1);
    return combined(tab, body, false);
}

const std::array<Design, 20>& designs() {
    static const std::array<Design, 20> table = {{
        {"battery.0percent", 1.64, 0.74, [](double, double) { return battery(0.0); }},
        {"battery.25percent", 1.64, 0.74, [](double, double) { return battery(0.25); }},
        {"battery.50percent", 1.64, 0.74, [](double, double) { return battery(0.5); }},
        {"battery.75percent", 1.64, 0.74, [](double, double) { return battery(0.75); }},
        {"battery.100percent", 1.64, 0.74, [](double, double) { return battery(1.0); }},
        {"wifi", 1.24, 0.9, wifi},
        {"magnifyingglass", 0.98, 0.98, magnifyingGlass},
        {"switch.2", 1.08, 0.98, switches},
        // The main window's symbols.
        {"rectangle.stack", 1.1, 1.0, rectangleStack},
        {"chevron.down", 0.9, 0.55, chevronDown},
        {"plus.circle", 1.0, 1.0, plusCircle},
        {"xmark.circle.fill", 1.0, 1.0, xmarkCircleFill},
        {"checkmark.circle.fill", 1.0, 1.0, checkmarkCircleFill},
        {"circle", 1.0, 1.0, circle},
        {"sun.max.fill", 1.0, 1.0, sunMaxFill},
        {"moon.fill", 0.92, 0.98, moonFill},
        {"photo", 1.2, 0.92, photo},
        {"timer", 1.0, 1.0, timer},
        {"camera.viewfinder", 1.2, 1.0, cameraViewfinder},
        {"folder.fill", 1.2, 0.92, folderFill},
    }};
    return table;
}

const Design* find(std::string_view name) {
    for (const auto& d : designs())
        if (d.name == name)
            return &d;
    return nullptr;
}

}  // namespace

std::optional<QSizeF> SymbolArtwork::naturalSize(std::string_view name, double pointSize) {
    const Design* d = find(name);
    if (d == nullptr || !(pointSize > 0) || !std::isfinite(pointSize))
        return std::nullopt;
    return QSizeF(d->width * pointSize, d->height * pointSize);
}

std::optional<QPainterPath> SymbolArtwork::shape(std::string_view name, double pointSize) {
    const Design* d = find(name);
    if (d == nullptr || !(pointSize > 0) || !std::isfinite(pointSize))
        return std::nullopt;
    const QPainterPath unit = d->draw(d->width, d->height);
    return QTransform::fromScale(pointSize, pointSize).map(unit);
}

}  // namespace zd
