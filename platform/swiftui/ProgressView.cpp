#include "platform/swiftui/ProgressView.h"

#include "platform/swiftui/ColumnLayout.h"
#include "platform/swiftui/TextWidget.h"
#include "platform/swiftui/Theme.h"

#include <QBasicTimer>
#include <QProgressBar>
#include <QTimerEvent>

namespace mirrolet::platform::swiftui {
namespace {

constexpr int spokes = 12;

/// A turning wheel. The animation runs only while the wheel is visible.
class SpinnerWidget : public QProgressBar {
  public:
    SpinnerWidget() {
        setRange(0, 0);
        setFixedSize(24, 24);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

  protected:
    void showEvent(QShowEvent* event) override {
        timer.start(1000 / spokes, this);
        QProgressBar::showEvent(event);
    }
    void hideEvent(QHideEvent* event) override {
        timer.stop();
        QProgressBar::hideEvent(event);
    }
    void timerEvent(QTimerEvent* event) override {
        if (event->timerId() != timer.timerId())
            return;
        step = (step + 1) % spokes;
        update();
    }
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(width() / 2.0, height() / 2.0);
        const QColor color = Theme(*this).label;
        for (int spoke = 0; spoke < spokes; ++spoke) {
            const int age = (step - spoke + spokes) % spokes;
            painter.setPen(QPen(withAlpha(color, 0.75 - 0.6 * age / spokes), 2, Qt::SolidLine, Qt::RoundCap));
            painter.save();
            painter.rotate(spoke * 360.0 / spokes);
            painter.drawLine(QPointF(0, -6), QPointF(0, -10));
            painter.restore();
        }
    }

  private:
    QBasicTimer timer;
    int step = 0;
};

} // namespace

View ProgressView::body() const {
    return View([progress = *this](const BuildContext&) {
        auto* widget = new QWidget;
        auto* layout = new ColumnLayout(8);
        widget->setLayout(layout);
        auto* spinner = new SpinnerWidget;
        spinner->setAccessibleName(QString::fromStdString(progress.title));
        layout->addWidget(spinner);
        layout->addWidget(new TextWidget({{progress.title, false}}, Font::body, ForegroundStyle::secondary,
                                         TextAlignment::center));
        return widget;
    });
}

} // namespace mirrolet::platform::swiftui
