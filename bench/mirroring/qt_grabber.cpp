// Mirrors WINDOW into a new window of WIDTH x HEIGHT pixels, fifteen times a second. This is the shortest Qt
// program that does so. The program grabs the pixels of WINDOW, scales them smoothly and paints them.
//
//   qt_grabber WINDOW WIDTH HEIGHT

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QRasterWindow>
#include <QScreen>
#include <QTimer>

#include <cstdlib>

namespace {

class Panel final : public QRasterWindow {
  public:
    explicit Panel(WId source) : source(source) {}

    void grab() {
        const auto picture = screen()->grabWindow(source);
        if (picture.isNull())
            QGuiApplication::quit();
        shown = picture.scaled(size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        update();
    }

  private:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).drawPixmap(0, 0, shown); }

    WId source;
    QPixmap shown;
};

} // namespace

int main(int argumentCount, char** arguments) {
    QGuiApplication application(argumentCount, arguments);
    if (argumentCount != 4)
        return EXIT_FAILURE;
    Panel panel(static_cast<WId>(std::strtoul(arguments[1], nullptr, 10)));
    panel.setFlags(Qt::BypassWindowManagerHint);
    panel.setGeometry(0, 0, std::atoi(arguments[2]),
                      std::atoi(arguments[3])); // NOLINT: atoi() suffices here.
    panel.show();
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&panel] { panel.grab(); });
    timer.start(1000 / 15);
    return QGuiApplication::exec();
}
