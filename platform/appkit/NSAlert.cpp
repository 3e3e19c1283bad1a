#include "platform/appkit/NSAlert.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace mirrolet::platform {

int NSAlert::runModal() const {
    QMessageBox box(alertStyle == Style::warning ? QMessageBox::Warning : QMessageBox::Information,
                    QStringLiteral("Mirrolet"), QString::fromStdString(messageText));
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QString::fromStdString(informativeText));
    std::vector<QAbstractButton*> added;
    for (const auto& title : buttons.empty() ? std::vector<std::string>{"OK"} : buttons) {
        const auto role = added.empty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
        added.push_back(box.addButton(QString::fromStdString(title), role));
    }
    box.setDefaultButton(qobject_cast<QPushButton*>(added.front()));
    box.setEscapeButton(added.back());
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
    const auto clicked = std::find(added.begin(), added.end(), box.clickedButton());
    const auto index =
        clicked == added.end() ? static_cast<std::ptrdiff_t>(added.size()) - 1 : clicked - added.begin();
    return NSAlertFirstButtonReturn + static_cast<int>(index);
}

} // namespace mirrolet::platform
