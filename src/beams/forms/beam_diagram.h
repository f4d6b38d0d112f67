// BeamDiagram: a line diagram of a continuous beam to the scale of its spans: the beam axis,
// its supports, one or more curves of station values (moment, shear, deflection) and values
// printed at chosen points (the supports, the extremes of each span).
#pragma once

#include <QColor>
#include <QString>
#include <QWidget>
#include <vector>

namespace orvak::beams::forms {

/// A value printed on a diagram, at a distance from the beam's left end.
struct DiagramLabel {
    double xCm = 0.0;
    double value = 0.0; ///< in the diagram's unit (t·m, t, mm)
    QString text;       ///< the value as printed
};

/// One curve: a value at every station of every span (kStationsPerSpan per span, span after
/// span), in the diagram's unit, and the values to print on it.
struct DiagramCurve {
    QString name; ///< shown in the legend when the diagram has more than one curve
    QColor color;
    std::vector<double> values;
    std::vector<DiagramLabel> labels;
};

class BeamDiagram : public QWidget {
    Q_OBJECT
public:
    /// Which way positive values are drawn from the axis.
    enum class Positive { Up, Down };

    explicit BeamDiagram(QWidget* parent = nullptr);

    /// The spans' lengths (cm) and which joints (spans + 1) are supported.
    void setBeam(std::vector<double> spanLengthsCm, std::vector<bool> supported);
    /// The curves to draw, with the heading over the diagram and the caption of its axis.
    void setCurves(const QString& heading, const QString& axisCaption, Positive positive,
                   std::vector<DiagramCurve> curves);
    /// Removes the curves (the beam stays).
    void clearCurves();

    const std::vector<DiagramCurve>& curves() const { return m_curves; }
    const QString& heading() const { return m_heading; }
    const QString& axisCaption() const { return m_axisCaption; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double beamLengthCm() const;
    double stationX(std::size_t station) const;

    std::vector<double> m_spans;
    std::vector<bool> m_supported;
    QString m_heading;
    QString m_axisCaption;
    Positive m_positive = Positive::Up;
    std::vector<DiagramCurve> m_curves;
};

/// A value as printed on the diagrams: fixed decimals, never "-0.00".
QString diagramNumber(double value, int decimals);

} // namespace orvak::beams::forms
