#include "platform/appkit/NSStatusItem.h"

#include "platform/appkit/ImageDrawing.h"
#include "platform/appkit/StatusTray.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <utility>

namespace mirrolet::platform {

namespace {

/// Draws a title as an icon, because the status bar takes pictures only. The letters are light with a dark
/// edge, because the bar may have any colour.
QIcon titleIcon(const std::string& title) {
    constexpr int side = 64;
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QFont font;
    font.setBold(true);
    font.setPixelSize(side / 2);
    QPainterPath letters;
    letters.addText({}, font, QString::fromStdString(title));
    const QRectF bounds = letters.boundingRect();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(0, 0, side, side).center() - bounds.center());
    painter.strokePath(letters, QPen(QColor(0x23272e), 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(letters, QColor(0xf5f6f8));
    return picture;
}

} // namespace

NSStatusItem::NSStatusItem() : tray(std::make_shared<StatusTray>()) {
    theButton.setOnChange([this] { // This item owns the button, so `this` is valid.
        const auto& image = theButton.image();
        tray->setLook(image ? toQIcon(*image, Qt::white) : titleIcon(theButton.title()),
                      QString::fromStdString(image ? image->accessibilityDescription() : theButton.title()));
    });
    tray->watch();
}

NSStatusItem::~NSStatusItem() = default;

void NSStatusItem::setMenu(std::shared_ptr<NSMenu> menu) {
    attachedMenu = std::move(menu);
    tray->setMenu(attachedMenu);
}

} // namespace mirrolet::platform
