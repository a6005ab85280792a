#include "SymbolArtwork.h"

#include <QTransform>

#include <array>
#include <cmath>

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

const std::array<Design, 8>& designs() {
    static const std::array<Design, 8> table = {{
        {"battery.0percent", 1.64, 0.74, [](double, double) { return battery(0.0); }},
        {"battery.25percent", 1.64, 0.74, [](double, double) { return battery(0.25); }},
        {"battery.50percent", 1.64, 0.74, [](double, double) { return battery(0.5); }},
        {"battery.75percent", 1.64, 0.74, [](double, double) { return battery(0.75); }},
        {"battery.100percent", 1.64, 0.74, [](double, double) { return battery(1.0); }},
        {"wifi", 1.24, 0.9, wifi},
        {"magnifyingglass", 0.98, 0.98, magnifyingGlass},
        {"switch.2", 1.08, 0.98, switches},
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
