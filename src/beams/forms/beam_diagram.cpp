// BeamDiagram: curves of station values over the beam axis, drawn to the scale of the spans.
#include "beams/forms/beam_diagram.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "beams/span_curve.h"

namespace orvak::beams::forms {

namespace {

constexpr int kLeftMargin = 64;
constexpr int kRightMargin = 24;
constexpr int kSupportSize = 7;
// A diagram whose values all lie within this of zero is drawn flat on its axis.
constexpr double kFlat = 1e-9;

} // namespace

QString diagramNumber(double value, int decimals) {
    const double unit = std::pow(10.0, -decimals) / 2.0;
    return QString::number(std::abs(value) < unit ? 0.0 : value, 'f', decimals);
}

BeamDiagram::BeamDiagram(QWidget* parent) : QWidget(parent) {
    // A drawing keeps span 1 at the left in every language, as the listings number them.
    setLayoutDirection(Qt::LeftToRight);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::white);
    setPalette(p);
}

void BeamDiagram::setBeam(std::vector<double> spanLengthsCm, std::vector<bool> supported) {
    m_spans = std::move(spanLengthsCm);
    m_supported = std::move(supported);
    update();
}

void BeamDiagram::setCurves(const QString& heading, const QString& axisCaption, Positive positive,
                            std::vector<DiagramCurve> curves) {
    m_heading = heading;
    m_axisCaption = axisCaption;
    m_positive = positive;
    m_curves = std::move(curves);
    update();
}

void BeamDiagram::clearCurves() {
    m_curves.clear();
    update();
}

QSize BeamDiagram::sizeHint() const {
    return {720, 220};
}

QSize BeamDiagram::minimumSizeHint() const {
    return {320, 140};
}

double BeamDiagram::beamLengthCm() const {
    double total = 0.0;
    for (const double l : m_spans) {
        total += l;
    }
    return total;
}

double BeamDiagram::stationX(std::size_t station) const {
    const std::size_t span = station / kStationsPerSpan;
    const std::size_t k = station % kStationsPerSpan;
    double x = 0.0;
    for (std::size_t s = 0; s < span && s < m_spans.size(); ++s) {
        x += m_spans[s];
    }
    return span < m_spans.size() ? x + m_spans[span] * static_cast<double>(k) / kStationDivisions
                                 : x;
}

void BeamDiagram::paintEvent(QPaintEvent* /*event*/) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    // Numbers and bar marks ("-18.90", "Ø8 @ 15") read left to right in every language.
    p.setLayoutDirection(Qt::LeftToRight);
    const QFontMetrics fm(font());
    const int line = fm.height();
    QFont bold = font();
    bold.setBold(true);

    // The heading is text of the user's language: its brackets follow that language's
    // direction, while it keeps its place at the left.
    p.setFont(bold);
    p.setPen(Qt::black);
    p.setLayoutDirection(QGuiApplication::layoutDirection());
    p.drawText(QRect(6, 0, width() / 2, line + 4),
               Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignBottom, m_heading);
    p.setLayoutDirection(Qt::LeftToRight);
    p.setFont(font());

    // Legend of a diagram of several curves, at the top right.
    if (m_curves.size() > 1) {
        int x = width() - kRightMargin;
        for (auto it = m_curves.rbegin(); it != m_curves.rend(); ++it) {
            x -= fm.horizontalAdvance(it->name);
            p.setPen(Qt::black);
            p.drawText(QPoint(x, line), it->name);
            x -= 26;
            p.setPen(QPen(it->color, 2));
            p.drawLine(x, line - fm.ascent() / 2 + 1, x + 20, line - fm.ascent() / 2 + 1);
            x -= 14;
        }
    }

    const double length = beamLengthCm();
    if (m_spans.empty() || !(length > 0.0)) {
        return;
    }
    // Room for a printed value above and below the curves, and for the span numbers.
    const QRectF plot(kLeftMargin, 1.5 * line + line + 4, width() - kLeftMargin - kRightMargin,
                      height() - 1.5 * line - 2.0 * line - 8 - line - 4);
    if (plot.width() < 10 || plot.height() < 10) {
        return;
    }
    const double sign = m_positive == Positive::Up ? 1.0 : -1.0;
    double upMost = 0.0;
    double downMost = 0.0;
    for (const DiagramCurve& c : m_curves) {
        for (const double v : c.values) {
            if (std::isfinite(v)) {
                upMost = std::max(upMost, sign * v);
                downMost = std::min(downMost, sign * v);
            }
        }
    }
    const double range = upMost - downMost > kFlat ? upMost - downMost : 1.0;
    if (!(upMost - downMost > kFlat)) {
        upMost = 0.5;
    }
    const auto xAt = [&](double xCm) { return plot.left() + xCm / length * plot.width(); };
    const auto yAt = [&](double v) {
        return plot.top() + (upMost - sign * v) / range * plot.height();
    };
    const double axisY = yAt(0.0);

    // Joints: a faint line through the diagram, a triangle under a support, and the span
    // numbers under the diagram.
    double x = 0.0;
    for (std::size_t j = 0; j <= m_spans.size(); ++j) {
        const double px = xAt(x);
        p.setPen(QPen(QColor(0xC8, 0xC8, 0xC8), 1, Qt::DotLine));
        p.drawLine(QPointF(px, plot.top() - line), QPointF(px, plot.bottom() + line));
        p.setPen(QPen(Qt::black, 1));
        if (j < m_supported.size() && m_supported[j]) {
            p.setBrush(QColor(0x60, 0x60, 0x60));
            const QPointF tri[3] = {{px, axisY},
                                    {px - kSupportSize, axisY + 1.6 * kSupportSize},
                                    {px + kSupportSize, axisY + 1.6 * kSupportSize}};
            p.drawPolygon(tri, 3);
        }
        if (j < m_spans.size()) {
            const double mid = xAt(x + m_spans[j] / 2.0);
            const QString n = QString::number(j + 1);
            p.drawText(QPointF(mid - fm.horizontalAdvance(n) / 2.0, height() - 6.0), n);
            x += m_spans[j];
        }
    }
    p.setBrush(Qt::NoBrush);

    for (const DiagramCurve& c : m_curves) {
        QPolygonF points;
        points.reserve(static_cast<int>(c.values.size()) + 2);
        points << QPointF(xAt(0.0), axisY);
        for (std::size_t k = 0; k < c.values.size(); ++k) {
            const double v = std::isfinite(c.values[k]) ? c.values[k] : 0.0;
            points << QPointF(xAt(stationX(k)), yAt(v));
        }
        points << QPointF(xAt(length), axisY);
        if (m_curves.size() == 1) {
            QColor fill = c.color;
            fill.setAlpha(40);
            p.setPen(Qt::NoPen);
            p.setBrush(fill);
            p.drawPolygon(points);
            p.setBrush(Qt::NoBrush);
        }
        p.setPen(QPen(c.color, 2));
        p.drawPolyline(points);
    }

    // The beam itself over the curves' fill.
    p.setPen(QPen(Qt::black, 3));
    p.drawLine(QPointF(xAt(0.0), axisY), QPointF(xAt(length), axisY));
    p.setPen(Qt::black);
    p.drawText(QPointF(6, axisY - 4), m_axisCaption);

    // Printed values: beside their point, on the side away from the axis.
    for (const DiagramCurve& c : m_curves) {
        p.setPen(c.color.darker(140));
        for (const DiagramLabel& l : c.labels) {
            const double w = fm.horizontalAdvance(l.text);
            const double px = std::clamp(xAt(l.xCm) - w / 2.0, plot.left() - kLeftMargin / 2.0,
                                         width() - w - 2.0);
            const double py =
                sign * l.value >= 0.0 ? yAt(l.value) - 4.0 : yAt(l.value) + fm.ascent() + 3.0;
            p.drawText(QPointF(px, py), l.text);
        }
    }
}

} // namespace orvak::beams::forms
