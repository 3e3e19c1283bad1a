#include "platform/swiftui/AlertPresenter.h"

#include "platform/swiftui/Button.h"
#include "platform/swiftui/Follow.h"
#include "platform/swiftui/Stacks.h"
#include "platform/swiftui/Text.h"

#include <QVBoxLayout>

namespace mirrolet::platform::swiftui {
namespace {

constexpr int alertWidth = 320;

View alertContent(const std::string& title, const std::string& text, const std::function<void()>& dismiss) {
    const VStack texts(6, {Text(title).font(Font::headline).multilineTextAlignment(TextAlignment::center),
                           Text(text).multilineTextAlignment(TextAlignment::center)});
    const Button button = Button("OK", dismiss).buttonStyle(ButtonStyle::borderedProminent);
    return VStack(16, {texts, button.keyboardShortcut(KeyboardShortcut::defaultAction)}).padding(20);
}

} // namespace

AlertPresenter::AlertPresenter(QWidget& widget, std::string title, Message message)
    : QObject(&widget), owner(widget), title(std::move(title)), message(std::move(message)) {
    follow(widget, this->message.changes(), [this] { update(); });
}

void AlertPresenter::update() {
    const auto text = message.get();
    if (dialog) {
        // A new message replaces the message that is shown.
        dialog->disconnect(this);
        dialog->close();
    }
    if (text)
        present(*text);
}

void AlertPresenter::present(const std::string& text) {
    dialog = new QDialog(owner.window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QString::fromStdString(title));
    dialog->setAccessibleDescription(QString::fromStdString(text));
    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    QWidget* content = alertContent(title, text, [shown = dialog] { shown->close(); }).build({});
    layout->addWidget(content);
    dialog->setFixedSize(alertWidth, layout->heightForWidth(alertWidth));
    // Escape, the window's close button and "OK" do the same, because there is nothing to choose.
    connect(dialog, &QDialog::finished, this, [this] { message.set(std::nullopt); });
    dialog->open();
}

} // namespace mirrolet::platform::swiftui
