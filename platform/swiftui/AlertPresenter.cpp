#include "platform/swiftui/AlertPresenter.h"

#include "platform/swiftui/Follow.h"

#include <QPushButton>

namespace mirrolet::platform::swiftui {

AlertPresenter::AlertPresenter(QWidget& widget, const std::string& title, Message message)
    : QObject(&widget), owner(widget), title(QString::fromStdString(title)), message(std::move(message)) {
    follow(widget, this->message.changes(), [this] { update(); });
}

void AlertPresenter::update() {
    const auto text = message.get();
    if (!text) {
        if (box)
            box->close();
        return;
    }
    if (!box)
        present();
    box->setInformativeText(QString::fromStdString(*text));
}

void AlertPresenter::present() {
    box = new QMessageBox(&owner);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(title);
    box->setTextFormat(Qt::PlainText);
    box->setText(title);
    box->setIcon(QMessageBox::Warning);
    // "OK" and no other word, whatever the desktop's language: it is the only way out, by Escape too.
    QPushButton* button = box->addButton(QStringLiteral("OK"), QMessageBox::RejectRole);
    box->setDefaultButton(button);
    box->setEscapeButton(button);
    connect(box, &QDialog::finished, this, [this] { message.set(std::nullopt); });
    box->open();
}

} // namespace mirrolet::platform::swiftui
