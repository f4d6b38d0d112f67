// The interaction chart of a designed column group, shown from the SVG file the design wrote
// beside its sheet; the view scales it to its window and keeps its proportions.
#pragma once

#include <QWidget>
#include <filesystem>

class QSvgRenderer;

namespace orvak::columns::forms {

class ColumnChartView : public QWidget {
    Q_OBJECT
public:
    /// Shows `svg`; isValid() is false when the file cannot be read as a chart.
    explicit ColumnChartView(const std::filesystem::path& svg, QWidget* parent = nullptr);
    bool isValid() const;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSvgRenderer* m_renderer;
};

/// Opens the chart `svg` beside `form`; nullptr when there is no readable chart.
QWidget* openColumnChart(QWidget* form, const std::filesystem::path& svg);

} // namespace orvak::columns::forms
