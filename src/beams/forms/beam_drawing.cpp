// The beam drawn to scale: lengths and depths at one scale, loads above, supports below, then
// the span dimensions and the sections.
#include "beams/forms/beam_drawing.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "beams/beam_loads.h"
#include "beams/section.h"

namespace orvak::beams::forms {

namespace {

constexpr double kMargin = 60.0;           // left and right of the beam, px
constexpr double kBasePixelsPerMetre = 70.0;
constexpr double kTopPad = 14.0;
constexpr double kLoadRow = 30.0;          // one row of loads per kind in use
constexpr double kLoadBand = 12.0;         // height of a distributed load's band
constexpr double kSupportHeight = 20.0;
constexpr double kDimensionGap = 34.0;     // beam bottom to the dimension line
constexpr double kSectionGap = 34.0;       // dimension line to the top of the sections
constexpr double kSectionPixelsPerCm = 0.8; // at zoom 1
constexpr double kMinZoom = 0.25;
constexpr double kMaxZoom = 8.0;
constexpr double kJointPickPx = 10.0;

const QColor kBeamFill(0xD6, 0xD6, 0xD6);
const QColor kChosenFill(0x9C, 0xC2, 0xEC);
const QColor kLoadColour(0x30, 0x58, 0x98);
const QColor kChosenLoad(0xD0, 0x60, 0x00);
const QColor kChosenJoint(0xC0, 0x10, 0x10);

QString number(double value, int decimals) {
    return QString::number(value, 'f', decimals);
}

/// "D+L" of a load as the engineer enters it: dead part plus live part.
QString loadText(const StoredLoad& load, const char* unit) {
    return QStringLiteral("%1+%2 %3")
        .arg(number(load.dead, 2), number(load.live, 2), QString::fromLatin1(unit));
}

/// The kinds in use anywhere on the beam, top row first: point loads on top, so that their
/// arrows reach the beam through the rows of distributed loads below them.
std::vector<LoadKind> kindsInUse(const BeamRecord& beam) {
    std::vector<LoadKind> kinds;
    for (LoadKind kind : {LoadKind::Concentrated, LoadKind::PartialUniform, LoadKind::Triangular,
                          LoadKind::Uniform}) {
        for (const StoredSpan& span : beam.spans) {
            if (span.loads[loadIndex(kind)].present) {
                kinds.push_back(kind);
                break;
            }
        }
    }
    return kinds;
}

void drawArrow(QPainter& p, QPointF from, QPointF to) {
    p.drawLine(from, to);
    const double dir = to.y() > from.y() ? -1.0 : 1.0;
    QPolygonF head;
    head << to << QPointF(to.x() - 3.5, to.y() + dir * 6.0) << QPointF(to.x() + 3.5, to.y() + dir * 6.0);
    p.drawPolygon(head);
}

} // namespace

BeamDrawing::BeamDrawing(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("BeamPict"));
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setMouseTracking(false);
    // The drawing runs left to right whatever the language: a beam has no reading direction.
    setLayoutDirection(Qt::LeftToRight);
}

void BeamDrawing::setBeam(const BeamRecord& beam) {
    m_beam = beam;
    const int spans = static_cast<int>(beam.spans.size());
    m_index = std::clamp(m_index, 0, m_part == Part::Joint ? spans : std::max(spans - 1, 0));
    setFixedSize(sizeHint());
    update();
}

void BeamDrawing::clear() {
    m_beam.reset();
    setFixedSize(sizeHint());
    update();
}

void BeamDrawing::setSelection(Part part, int index) {
    m_part = part;
    m_index = index;
    update();
}

void BeamDrawing::setZoom(double zoom) {
    m_zoom = std::clamp(zoom, kMinZoom, kMaxZoom);
    setFixedSize(sizeHint());
    update();
}

void BeamDrawing::fitWidth(int pixels) {
    double metres = 0.0;
    if (m_beam) {
        for (const StoredSpan& span : m_beam->spans) {
            metres += span.lengthM;
        }
    }
    if (metres > 0.0 && pixels > 0) {
        setZoom((pixels - 2.0 * kMargin) / (metres * kBasePixelsPerMetre));
    }
}

void BeamDrawing::setTexts(const QString& span, const QString& free) {
    m_spanText = span;
    m_freeText = free;
    update();
}

double BeamDrawing::pixelsPerMetre() const {
    return kBasePixelsPerMetre * m_zoom;
}

double BeamDrawing::jointX(int joint) const {
    double metres = 0.0;
    for (int s = 0; s < joint && m_beam && s < static_cast<int>(m_beam->spans.size()); ++s) {
        metres += m_beam->spans[static_cast<std::size_t>(s)].lengthM;
    }
    return kMargin + metres * pixelsPerMetre();
}

double BeamDrawing::beamTop() const {
    const std::size_t rows = m_beam ? std::max<std::size_t>(kindsInUse(*m_beam).size(), 1) : 1;
    return kTopPad + static_cast<double>(rows) * kLoadRow + 8.0;
}

double BeamDrawing::beamHeightPx(int span) const {
    const float h = m_beam->spans[static_cast<std::size_t>(span)].dims[4];
    return std::max(6.0, static_cast<double>(h) / 100.0 * pixelsPerMetre());
}

QSize BeamDrawing::sizeHint() const {
    if (!m_beam || m_beam->spans.empty()) {
        return {480, 200};
    }
    double deepest = 0.0;
    double tallestSection = 0.0;
    for (int s = 0; s < static_cast<int>(m_beam->spans.size()); ++s) {
        deepest = std::max(deepest, beamHeightPx(s));
        tallestSection = std::max(tallestSection,
                                  static_cast<double>(m_beam->spans[static_cast<std::size_t>(s)].dims[4]));
    }
    const double sections = tallestSection * kSectionPixelsPerCm * m_zoom + 36.0;
    const double height = beamTop() + deepest + kDimensionGap + kSectionGap + sections;
    const double width = jointX(static_cast<int>(m_beam->spans.size())) + kMargin;
    return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
}

std::optional<BeamDrawing::Hit> BeamDrawing::hitAt(QPointF at) const {
    if (!m_beam || m_beam->spans.empty()) {
        return std::nullopt;
    }
    const int spans = static_cast<int>(m_beam->spans.size());
    if (at.y() >= beamTop() - 2.0) {
        for (int j = 0; j <= spans; ++j) {
            if (std::abs(at.x() - jointX(j)) <= kJointPickPx) {
                return Hit{Part::Joint, j};
            }
        }
    }
    for (int s = 0; s < spans; ++s) {
        if (at.x() >= jointX(s) && at.x() <= jointX(s + 1)) {
            return Hit{at.y() < beamTop() ? Part::Load : Part::Span, s};
        }
    }
    return std::nullopt;
}

double BeamDrawing::metresAlong(int span, QPointF at) const {
    if (!m_beam || span < 0 || span >= static_cast<int>(m_beam->spans.size())) {
        return 0.0;
    }
    const double length = m_beam->spans[static_cast<std::size_t>(span)].lengthM;
    return std::clamp((at.x() - jointX(span)) / pixelsPerMetre(), 0.0, length);
}

void BeamDrawing::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit clicked(event->position());
    }
    QWidget::mousePressEvent(event);
}

void BeamDrawing::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() & Qt::ControlModifier) {
        setZoom(m_zoom * (event->angleDelta().y() > 0 ? 1.25 : 0.8));
        emit zoomedByUser();
        event->accept();
        return;
    }
    QWidget::wheelEvent(event);
}

void BeamDrawing::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    // Values and units read left to right in a right-to-left window too ("3.00+1.50 t/m").
    p.setLayoutDirection(Qt::LeftToRight);
    if (!m_beam || m_beam->spans.empty()) {
        return;
    }
    const BeamRecord& b = *m_beam;
    const int spans = static_cast<int>(b.spans.size());
    const double top = beamTop();
    const double ppm = pixelsPerMetre();
    QFont small = font();
    small.setPointSizeF(std::max(7.0, font().pointSizeF() - 1.0));
    p.setFont(small);
    const QFontMetricsF fm(small);

    // Loads, one row per kind in use, above the beam.
    const std::vector<LoadKind> kinds = kindsInUse(b);
    for (std::size_t row = 0; row < kinds.size(); ++row) {
        const LoadKind kind = kinds[row];
        const double rowBottom = kTopPad + static_cast<double>(row + 1) * kLoadRow;
        for (int s = 0; s < spans; ++s) {
            const StoredSpan& span = b.spans[static_cast<std::size_t>(s)];
            const StoredLoad& load = span.loads[loadIndex(kind)];
            if (!load.present) {
                continue;
            }
            const bool chosen = m_part == Part::Load && m_index == s;
            const QColor colour = chosen ? kChosenLoad : kLoadColour;
            p.setPen(QPen(colour, chosen ? 1.6 : 1.0));
            QColor fill = colour;
            fill.setAlpha(45);
            p.setBrush(fill);
            const double x0 = jointX(s);
            const double x1 = jointX(s + 1);
            const bool upward = load.dead + load.live < 0.0f;
            switch (kind) {
            case LoadKind::Uniform:
            case LoadKind::PartialUniform: {
                double a = x0;
                double e = x1;
                if (kind == LoadKind::PartialUniform) {
                    a = x0 + std::clamp(static_cast<double>(load.startM), 0.0, static_cast<double>(span.lengthM)) * ppm;
                    e = std::min(x1, a + std::max(0.0, static_cast<double>(load.lengthM)) * ppm);
                }
                p.drawRect(QRectF(a, rowBottom - kLoadBand - 6.0, e - a, kLoadBand));
                for (double x = a + 4.0; x < e - 2.0; x += 14.0) {
                    const QPointF from(x, rowBottom - 6.0);
                    const QPointF to(x, rowBottom);
                    upward ? drawArrow(p, to, from) : drawArrow(p, from, to);
                }
                p.drawText(QPointF(a + 2.0, rowBottom - kLoadBand - 8.0), loadText(load, "t/m"));
                break;
            }
            case LoadKind::Triangular: {
                QPolygonF shape;
                const double base = rowBottom - 4.0;
                const double peakY = rowBottom - 4.0 - kLoadBand - 6.0;
                if (span.trianglePeakLeft) {
                    shape << QPointF(x0, base) << QPointF(x0, peakY) << QPointF(x1, base);
                } else {
                    shape << QPointF(x0, base) << QPointF(x1, peakY) << QPointF(x1, base);
                }
                p.drawPolygon(shape);
                const double tx = span.trianglePeakLeft ? x0 + 2.0 : x1 - fm.horizontalAdvance(loadText(load, "t/m")) - 2.0;
                p.drawText(QPointF(tx, peakY - 2.0), loadText(load, "t/m"));
                break;
            }
            case LoadKind::Concentrated: {
                const double x =
                    x0 + std::clamp(static_cast<double>(load.startM), 0.0, static_cast<double>(span.lengthM)) * ppm;
                // The arrow runs down through the rows below to the beam's top.
                const QPointF from(x, rowBottom - kLoadBand - 4.0);
                const QPointF to(x, top);
                upward ? drawArrow(p, to, from) : drawArrow(p, from, to);
                p.drawText(QPointF(x + 4.0, rowBottom - kLoadBand), loadText(load, "t"));
                break;
            }
            }
        }
    }

    // The spans, their depth to scale.
    double deepest = 0.0;
    for (int s = 0; s < spans; ++s) {
        const double h = beamHeightPx(s);
        deepest = std::max(deepest, h);
        const bool chosen = (m_part == Part::Span || m_part == Part::Load) && m_index == s;
        p.setPen(QPen(Qt::black, 1.2));
        p.setBrush(chosen && m_part == Part::Span ? kChosenFill : kBeamFill);
        p.drawRect(QRectF(jointX(s), top, jointX(s + 1) - jointX(s), h));
    }

    // Supports under the joints: a triangle where the joint is held, a hatched block where
    // its rotation is held too, an open circle where it is free.
    for (int j = 0; j <= spans; ++j) {
        const StoredSupport& support = b.supports[static_cast<std::size_t>(j)];
        const double x = jointX(j);
        double under = top;
        if (j > 0) {
            under = std::max(under, top + beamHeightPx(j - 1));
        }
        if (j < spans) {
            under = std::max(under, top + beamHeightPx(j));
        }
        const bool chosen = m_part == Part::Joint && m_index == j;
        const QColor colour = chosen ? kChosenJoint : QColor(Qt::black);
        p.setPen(QPen(colour, chosen ? 2.0 : 1.2));
        p.setBrush(Qt::NoBrush);
        const BeamSupport held = supportFromCodes(support.code, support.second);
        if (held.restrainsRotation) {
            const double w = std::max(10.0, static_cast<double>(support.widthCm) / 100.0 * ppm);
            const QRectF block(x - w / 2.0, under, w, kSupportHeight);
            p.drawRect(block);
            p.save();
            p.setClipRect(block);
            for (double d = -kSupportHeight; d < w; d += 5.0) {
                p.drawLine(QPointF(block.left() + d, block.bottom()),
                           QPointF(block.left() + d + kSupportHeight, block.top()));
            }
            p.restore();
        } else if (held.restrainsDisplacement) {
            QPolygonF tri;
            tri << QPointF(x, under) << QPointF(x - 9.0, under + kSupportHeight - 4.0)
                << QPointF(x + 9.0, under + kSupportHeight - 4.0);
            p.drawPolygon(tri);
            p.drawLine(QPointF(x - 13.0, under + kSupportHeight - 1.0),
                       QPointF(x + 13.0, under + kSupportHeight - 1.0));
        } else {
            p.drawEllipse(QPointF(x, under + 5.0), 4.0, 4.0);
            p.drawText(QPointF(x - fm.horizontalAdvance(m_freeText) / 2.0, under + 22.0),
                       m_freeText);
        }
        if (chosen) {
            p.drawEllipse(QPointF(x, top), 6.0, 6.0);
        }
    }

    // Span lengths on a dimension line, the span numbers under it.
    const double dim = top + deepest + kDimensionGap;
    p.setPen(QPen(Qt::black, 1.0));
    p.drawLine(QPointF(jointX(0), dim), QPointF(jointX(spans), dim));
    for (int j = 0; j <= spans; ++j) {
        p.drawLine(QPointF(jointX(j), dim - 5.0), QPointF(jointX(j), dim + 5.0));
    }
    for (int s = 0; s < spans; ++s) {
        const double mid = (jointX(s) + jointX(s + 1)) / 2.0;
        const QString length = number(b.spans[static_cast<std::size_t>(s)].lengthM, 2) + QStringLiteral(" m");
        p.drawText(QPointF(mid - fm.horizontalAdvance(length) / 2.0, dim - 4.0), length);
        const QString name = QStringLiteral("%1 %2").arg(m_spanText).arg(s + 1);
        p.drawText(QPointF(mid - fm.horizontalAdvance(name) / 2.0, dim + 16.0), name);
    }

    // Each span's section, all at one scale, with its dimensions in cm.
    const double scale = kSectionPixelsPerCm * m_zoom;
    const double sectionsTop = dim + kSectionGap;
    for (int s = 0; s < spans; ++s) {
        const StoredSpan& span = b.spans[static_cast<std::size_t>(s)];
        std::string error;
        const auto g = sectionGeometry(span.sectionKind, span.dims, error);
        if (!g) {
            continue;
        }
        const double mid = (jointX(s) + jointX(s + 1)) / 2.0;
        const double room = jointX(s + 1) - jointX(s) - 8.0;
        const double k = std::min(scale, room / std::max(g->flangeWidthCm, 1.0));
        const double bw = g->webWidthCm * k;
        const double h = g->heightCm * k;
        const double bf = g->flangeWidthCm * k;
        const double tf = g->flangeThicknessCm * k;
        const bool oneSided = g->kind == SectionKind::LSection || g->kind == SectionKind::InvertedL;
        const double left = oneSided ? mid - bf / 2.0 : mid - bw / 2.0;
        QPainterPath shape;
        shape.addRect(QRectF(left, sectionsTop, bw, h));
        if (g->flanged()) {
            const double fy = g->flangeOnTop ? sectionsTop : sectionsTop + h - tf;
            shape.addRect(QRectF(oneSided ? left : mid - bf / 2.0, fy, bf, tf));
        }
        const bool chosen = m_part == Part::Span && m_index == s;
        p.setPen(QPen(Qt::black, 1.0));
        p.setBrush(chosen ? kChosenFill : kBeamFill);
        p.drawPath(shape.simplified());
        QString text = g->flanged() ? QStringLiteral("%1/%2  %3/%4")
                                          .arg(number(g->flangeWidthCm, 0), number(g->flangeThicknessCm, 0),
                                               number(g->webWidthCm, 0), number(g->heightCm, 0))
                                    : QStringLiteral("%1/%2").arg(number(g->webWidthCm, 0), number(g->heightCm, 0));
        p.drawText(QPointF(mid - fm.horizontalAdvance(text) / 2.0, sectionsTop + h + 14.0), text);
    }
}

} // namespace orvak::beams::forms
