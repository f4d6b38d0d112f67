// StirrupDrawing: the stirrup zones of a beam under its elevation.
#include "beams/forms/stirrup_drawing.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace orvak::beams::forms {

namespace {

constexpr int kMargin = 24;
constexpr int kBeamDepth = 34;
constexpr int kSupportSize = 7;
// Stirrups closer than this on screen are drawn every other one (and so on), so that a long
// beam still shows its zones rather than a black band.
constexpr double kLeastGapPx = 3.0;

} // namespace

StirrupDrawing::StirrupDrawing(QWidget* parent) : QWidget(parent) {
    // A drawing keeps span 1 at the left in every language, as the listings number them.
    setLayoutDirection(Qt::LeftToRight);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::white);
    setPalette(p);
}

void StirrupDrawing::setBeam(std::vector<double> spanLengthsCm, std::vector<bool> supported,
                             std::vector<StirrupZone> zones) {
    m_spans = std::move(spanLengthsCm);
    m_supported = std::move(supported);
    m_zones = std::move(zones);
    update();
}

QString StirrupDrawing::zoneText(const StirrupZone& zone) {
    if (!zone.designed) {
        return QStringLiteral("******");
    }
    return QStringLiteral("%1\u00D8%2 @ %3")
        .arg(zone.legs > 2 ? QStringLiteral("%1").arg(zone.legs / 2) : QString())
        .arg(zone.diameterMm, 0, 'f', 0)
        .arg(zone.spacingCm);
}

QString StirrupDrawing::lengthText(const StirrupZone& zone) {
    return QString::number((zone.endCm - zone.startCm) / 100.0, 'f', 2);
}

QSize StirrupDrawing::sizeHint() const {
    return {760, 170};
}

QSize StirrupDrawing::minimumSizeHint() const {
    return {320, 150};
}

void StirrupDrawing::paintEvent(QPaintEvent* /*event*/) {
    double length = 0.0;
    for (const double l : m_spans) {
        length += l;
    }
    if (m_spans.empty() || !(length > 0.0)) {
        return;
    }
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    // Numbers and bar marks ("-18.90", "Ø8 @ 15") read left to right in every language.
    p.setLayoutDirection(Qt::LeftToRight);
    const QFontMetrics fm(font());
    const int line = fm.height();
    const double left = kMargin;
    const double scale = (width() - 2.0 * kMargin) / length;
    const double top = line + 8;
    const double bottom = top + kBeamDepth;
    const auto xAt = [&](double xCm) { return left + xCm * scale; };

    std::vector<double> joints{0.0};
    for (const double l : m_spans) {
        joints.push_back(joints.back() + l);
    }

    // Stirrups, zone by zone, and the zones that got none hatched in red.
    for (const StirrupZone& z : m_zones) {
        if (z.span < 0 || static_cast<std::size_t>(z.span) >= m_spans.size()) {
            continue;
        }
        const double x0 = xAt(joints[static_cast<std::size_t>(z.span)] + z.startCm);
        const double x1 = xAt(joints[static_cast<std::size_t>(z.span)] + z.endCm);
        if (!z.designed) {
            p.fillRect(QRectF(x0, top, x1 - x0, kBeamDepth),
                       QBrush(QColor(0xC0, 0x20, 0x20), Qt::BDiagPattern));
            continue;
        }
        const double gap = z.spacingCm * scale;
        const int every =
            gap > 0.0 ? std::max(1, static_cast<int>(std::ceil(kLeastGapPx / gap))) : 1;
        p.setPen(QPen(QColor(0x1F, 0x4E, 0x9A), z.legs > 2 ? 2 : 1));
        const double span = z.endCm - z.startCm;
        const int count = z.spacingCm > 0.0 ? static_cast<int>(span / z.spacingCm) : 0;
        // Half a spacing in from each end of the zone, then at the spacing.
        for (int k = 0; k < count; k += every) {
            const double x =
                xAt(joints[static_cast<std::size_t>(z.span)] + z.startCm + (k + 0.5) * z.spacingCm);
            p.drawLine(QPointF(x, top + 3), QPointF(x, bottom - 3));
        }
    }

    // The beam's outline, its supports and the span numbers over it.
    p.setPen(QPen(Qt::black, 2));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(xAt(0.0), top, length * scale, kBeamDepth));
    p.setPen(QPen(Qt::black, 1));
    for (std::size_t j = 0; j < joints.size(); ++j) {
        const double x = xAt(joints[j]);
        if (j < m_supported.size() && m_supported[j]) {
            p.setBrush(QColor(0x60, 0x60, 0x60));
            const QPointF tri[3] = {{x, bottom},
                                    {x - kSupportSize, bottom + 1.6 * kSupportSize},
                                    {x + kSupportSize, bottom + 1.6 * kSupportSize}};
            p.drawPolygon(tri, 3);
            p.setBrush(Qt::NoBrush);
        }
        if (j + 1 < joints.size()) {
            const QString n = QString::number(j + 1);
            const double mid = xAt((joints[j] + joints[j + 1]) / 2.0);
            p.drawText(QPointF(mid - fm.horizontalAdvance(n) / 2.0, top - 4), n);
        }
    }

    // Under the beam: a dimension line per zone with its length, and its stirrup under that.
    // Labels too wide for their zone alternate between two rows.
    const double dimY = bottom + 2.0 * kSupportSize + line + 4;
    int row = 0;
    for (const StirrupZone& z : m_zones) {
        if (z.span < 0 || static_cast<std::size_t>(z.span) >= m_spans.size()) {
            continue;
        }
        const double x0 = xAt(joints[static_cast<std::size_t>(z.span)] + z.startCm);
        const double x1 = xAt(joints[static_cast<std::size_t>(z.span)] + z.endCm);
        p.setPen(QPen(Qt::black, 1));
        p.drawLine(QPointF(x0, dimY), QPointF(x1, dimY));
        p.drawLine(QPointF(x0, dimY - 4), QPointF(x0, dimY + 4));
        p.drawLine(QPointF(x1, dimY - 4), QPointF(x1, dimY + 4));
        const QString len = lengthText(z);
        const QString text = zoneText(z);
        const double room = x1 - x0;
        const bool crowded =
            std::max(fm.horizontalAdvance(len), fm.horizontalAdvance(text)) > room - 4;
        const double shift = crowded ? row * (2.0 * line) : 0.0;
        row = crowded ? 1 - row : 0;
        const double mid = (x0 + x1) / 2.0;
        const auto centred = [&](const QString& s, double y) {
            const double w = fm.horizontalAdvance(s);
            const double x = std::clamp(mid - w / 2.0, 2.0, width() - w - 2.0);
            p.drawText(QPointF(x, y), s);
        };
        centred(len, dimY - 3 + shift);
        p.setPen(z.designed ? QColor(0x1F, 0x4E, 0x9A) : QColor(0xC0, 0x20, 0x20));
        centred(text, dimY + line + shift);
    }
}

} // namespace orvak::beams::forms
