// The chart drawn by Qt's SVG renderer into the middle of the view, white behind it.
#include "columns/forms/column_chart_view.h"

#include <QPainter>
#include <QSvgRenderer>

#include "ui/form_support.h"

namespace orvak::columns::forms {

ColumnChartView::ColumnChartView(const std::filesystem::path& svg, QWidget* parent)
    : QWidget(parent), m_renderer(new QSvgRenderer(this)) {
    setObjectName(QStringLiteral("ClChart"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QString::fromStdString(svg.filename().string()));
    std::error_code ec;
    if (std::filesystem::is_regular_file(svg, ec)) {
        m_renderer->load(QString::fromStdString(svg.string()));
    }
    setMinimumSize(320, 240);
}

bool ColumnChartView::isValid() const {
    return m_renderer->isValid();
}

QSize ColumnChartView::sizeHint() const {
    return isValid() ? m_renderer->defaultSize().expandedTo(QSize(480, 360)) : QSize(480, 360);
}

void ColumnChartView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (!isValid()) {
        return;
    }
    QSizeF size = m_renderer->defaultSize();
    size.scale(QSizeF(this->size()), Qt::KeepAspectRatio);
    const QRectF target((width() - size.width()) / 2.0, (height() - size.height()) / 2.0,
                        size.width(), size.height());
    m_renderer->render(&painter, target);
}

QWidget* openColumnChart(QWidget* form, const std::filesystem::path& svg) {
    auto* view = new ColumnChartView(svg);
    if (!view->isValid()) {
        delete view;
        return nullptr;
    }
    ui::showBeside(form, view, QSize(800, 600));
    return view;
}

} // namespace orvak::columns::forms
