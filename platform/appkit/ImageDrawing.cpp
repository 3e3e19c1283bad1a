#include "platform/appkit/ImageDrawing.h"

#include "platform/desktop/WindowCapture.h"

#include <QFileInfo>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

// Makes the drawings of symbols.qrc available. The library is linked statically, so without this call the
// linker would leave the drawings out. Q_INIT_RESOURCE must not stand inside a namespace.
static void loadSymbols() {
    Q_INIT_RESOURCE(symbols);
}

namespace mirrolet::platform {

namespace {

constexpr qint64 largestIconFile = 8 << 20;

QImage emptyImage(QSize pixels) {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The file of a drawing, and the side in device pixels of the square that the drawing fills.
struct Placed {
    QString file;
    int side;
};

/// Chooses the drawing of a symbol, and the size of the drawing in a square of `side` device pixels. Every
/// symbol has a drawing on a grid of 16. Symbols for status bars have a second drawing on a grid of 22,
/// because both sizes are common in status bars. If there are two drawings, each of them could be shown only
/// at a whole multiple of its grid, so that edges stay on pixels. The drawing that fills more of the square
/// in this way is chosen. The rest of the square is a margin.
Placed placed(const std::string& name, int side) {
    const QString base = QStringLiteral(":/mirrolet/symbols/") + QString::fromStdString(name);
    const QString small = base + QStringLiteral(".svg");
    const QString large = base + QStringLiteral("@22.svg");
    if (side < 16 || !QFileInfo::exists(large))
        return {small, side};
    const int ofSmall = side / 16 * 16;
    const int ofLarge = side / 22 * 22;
    return ofLarge > ofSmall ? Placed{large, ofLarge} : Placed{small, ofSmall};
}

QImage renderedSvg(const std::string& name, QSize pixels) {
    loadSymbols();
    QImage image = emptyImage(pixels);
    const Placed drawing = placed(name, std::min(pixels.width(), pixels.height()));
    QSvgRenderer renderer(drawing.file);
    QPainter painter(&image);
    QRect centred(0, 0, drawing.side, drawing.side);
    centred.moveTopLeft({(pixels.width() - drawing.side) / 2, (pixels.height() - drawing.side) / 2});
    renderer.render(&painter, centred);
    return image;
}

QImage tinted(QImage shape, const QColor& tint) {
    QPainter painter(&shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(shape.rect(), tint);
    return shape;
}

/// Returns true if the path names a picture that is safe to read. A desktop entry may name any file, and
/// reading a device or a FIFO would never end.
bool isReadablePicture(const QString& path) {
    const QFileInfo file(path);
    return file.isFile() && file.isReadable() && file.size() <= largestIconFile;
}

/// Removes a file ending such as ".png" from the name of an icon. Old desktop entries have names with an
/// ending, but an icon theme has names without one.
QString themeName(QString name) {
    for (const auto* ending : {".png", ".svg", ".xpm"})
        if (name.endsWith(QLatin1String(ending)))
            name.chop(4);
    return name;
}

QIcon applicationIcon(const std::string& nameOrPath) {
    const QString name = QString::fromStdString(nameOrPath);
    if (name.startsWith(QLatin1Char('/')))
        return isReadablePicture(name) ? QIcon(name) : QIcon();
    return name.isEmpty() ? QIcon() : QIcon::fromTheme(themeName(name));
}

QImage centred(const QImage& picture, QSize pixels) {
    QImage image = emptyImage(pixels);
    const QImage scaled = picture.size() == pixels
                              ? picture
                              : picture.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&image);
    painter.drawImage((pixels.width() - scaled.width()) / 2, (pixels.height() - scaled.height()) / 2, scaled);
    return image;
}

QImage renderedIcon(const std::string& nameOrPath, QSize pixels) {
    // The scale is 1, because `pixels` is in device pixels already.
    const QImage picture = applicationIcon(nameOrPath).pixmap(pixels, 1.0).toImage();
    return picture.isNull() ? renderedSvg("application", pixels) : centred(picture, pixels);
}

QImage renderedWindow(const desktop::WindowImage& window, QSize pixels) {
    const auto bitmap = window.readBack();
    if (bitmap.pixels.empty())
        return emptyImage(pixels);
    const QImage picture(reinterpret_cast<const uchar*>(bitmap.pixels.data()), bitmap.size.width,
                         bitmap.size.height, QImage::Format_ARGB32_Premultiplied);
    return centred(picture, pixels);
}

} // namespace

QImage renderedImage(const NSImage& image, QSize pixels, const QColor& tint) {
    const auto& content = image.drawnContent();
    if (pixels.isEmpty())
        return {};
    if (content.window)
        return renderedWindow(*content.window, pixels);
    if (content.symbol.empty())
        return renderedIcon(content.icon, pixels);
    const QImage shape = renderedSvg(content.symbol, pixels);
    return image.isTemplate() ? tinted(shape, tint) : shape;
}

QIcon toQIcon(const NSImage& image, const QColor& tint) {
    QIcon icon;
    for (const int side : {16, 18, 20, 22, 24, 28, 32, 36, 44, 48, 64})
        icon.addPixmap(QPixmap::fromImage(renderedImage(image, {side, side}, tint)));
    return icon;
}

} // namespace mirrolet::platform
