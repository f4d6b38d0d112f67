// The beam of the beam form drawn to scale: its spans with their lengths, the supports by
// their codes, each span's section, and the loads by kind with their values. A click chooses
// a span, a joint or a span's loads; Ctrl + wheel zooms.
#pragma once

#include <QWidget>
#include <optional>

#include "beams/beam_record.h"

namespace orvak::beams::forms {

class BeamDrawing : public QWidget {
    Q_OBJECT
public:
    /// What a click chooses: a span, a joint (support) or the loads of a span.
    enum class Part { Span, Joint, Load };
    struct Hit {
        Part part = Part::Span;
        int index = 0; ///< span or joint, 0-based
    };

    explicit BeamDrawing(QWidget* parent = nullptr);

    void setBeam(const BeamRecord& beam);
    void clear();
    void setSelection(Part part, int index);
    /// Pixels per metre along the beam, and per centimetre of the sections, are scaled alike.
    void setZoom(double zoom);
    double zoom() const { return m_zoom; }
    /// The zoom at which the whole beam fits `pixels` across (within the zoom's bounds).
    void fitWidth(int pixels);
    /// Texts of the drawing in the user's language: "span", "free", and the units are the
    /// engineer's own (m, t/m, t).
    void setTexts(const QString& span, const QString& free);

    QSize sizeHint() const override;
    /// The part under a point of the widget, as a click there chooses it.
    std::optional<Hit> hitAt(QPointF at) const;
    /// Where a point lies along span `span`, metres from its left joint (clamped to the span).
    double metresAlong(int span, QPointF at) const;

signals:
    /// A click chose a part (in the part kind the form is set to, or the one under it).
    void clicked(QPointF at);
    /// The engineer zoomed with the wheel.
    void zoomedByUser();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    double pixelsPerMetre() const;
    double jointX(int joint) const;
    double beamTop() const;
    double beamHeightPx(int span) const;

    std::optional<BeamRecord> m_beam;
    Part m_part = Part::Span;
    int m_index = 0;
    double m_zoom = 1.0;
    QString m_spanText = QStringLiteral("span");
    QString m_freeText = QStringLiteral("free");
};

} // namespace orvak::beams::forms
