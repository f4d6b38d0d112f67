// StirrupDrawing: the elevation of a beam to the scale of its spans with its stirrups placed
// zone by zone, and under it each zone's length and stirrup ("Ø8 @ 15").
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "beams/stirrup_zones.h"

namespace orvak::beams::forms {

class StirrupDrawing : public QWidget {
    Q_OBJECT
public:
    explicit StirrupDrawing(QWidget* parent = nullptr);

    /// The spans' lengths (cm), which joints (spans + 1) are supported, and the zones.
    void setBeam(std::vector<double> spanLengthsCm, std::vector<bool> supported,
                 std::vector<StirrupZone> zones);
    const std::vector<StirrupZone>& zones() const { return m_zones; }

    /// A zone's stirrup as printed: "Ø8 @ 15" for a closed stirrup of two legs, "2Ø8 @ 15"
    /// for four legs (an outer and an inner stirrup at each place), "******" where the
    /// section is too small for stirrups.
    static QString zoneText(const StirrupZone& zone);
    /// A zone's length in m, two decimals.
    static QString lengthText(const StirrupZone& zone);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<double> m_spans;
    std::vector<bool> m_supported;
    std::vector<StirrupZone> m_zones;
};

} // namespace orvak::beams::forms
