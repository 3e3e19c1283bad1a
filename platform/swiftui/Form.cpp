#include "platform/swiftui/Form.h"

#include "platform/swiftui/ColumnLayout.h"
#include "platform/swiftui/ScrollBarWidget.h"
#include "platform/swiftui/TextWidget.h"
#include "platform/swiftui/Theme.h"

#include <QScrollArea>
#include <QVBoxLayout>

namespace mirrolet::platform::swiftui {
namespace {

constexpr int rowInset = 12;
constexpr int rowPadding = 4;
constexpr double groupRadius = 8;

/// Paints the rounded group, and a hairline between two rows.
class GroupWidget : public QWidget {
  public:
    GroupWidget() {
        auto* rows = new QVBoxLayout(this);
        rows->setContentsMargins(0, 0, 0, 0);
        rows->setSpacing(1);
    }

    void addRow(QWidget* content) {
        auto* row = new QWidget;
        auto* inner = new QVBoxLayout(row);
        // A paragraph of text needs more padding than a control, because a control has some padding of its
        // own.
        const int padding = dynamic_cast<TextWidget*>(content) ? 2 * rowPadding : rowPadding;
        inner->setContentsMargins(rowInset, padding, rowInset, padding);
        inner->addWidget(content);
        layout()->addWidget(row);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const Theme theme(*this);
        drawBox(painter, rect(), groupRadius, theme.groupFill, theme.separator);
        painter.setRenderHint(QPainter::Antialiasing, false);
        for (int index = 1; index < layout()->count(); ++index) {
            const int y = layout()->itemAt(index)->geometry().top() - 1;
            painter.fillRect(QRect(rowInset, y, width() - 2 * rowInset, 1), theme.separator);
        }
    }
};

QWidget* header(const std::string& title) {
    auto* text =
        new TextWidget({{title, false}}, Font::headline, ForegroundStyle::primary, TextAlignment::leading);
    text->setContentsMargins(0, 0, 0, 0);
    return text;
}

} // namespace

View Section::body() const {
    return View([section = *this](const BuildContext&) {
        auto* widget = new QWidget;
        auto* layout = new QVBoxLayout(widget);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(6);
        auto* group = new GroupWidget;
        if (!section.title.empty()) {
            group->setAccessibleName(QString::fromStdString(section.title));
            layout->addWidget(header(section.title));
        }
        for (const View& row : section.content)
            group->addRow(row.build({.inForm = true}));
        layout->addWidget(group);
        return widget;
    });
}

View Form::body() const {
    return View([form = *this](const BuildContext&) {
        auto* scroll = new QScrollArea;
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidgetResizable(true);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        scroll->setFocusPolicy(Qt::NoFocus);
        scroll->setVerticalScrollBar(new ScrollBarWidget);
        auto* column = new QWidget;
        auto* layout = new ColumnLayout(12, ColumnLayout::Placement::fromTop);
        layout->setContentsMargins(20, 10, 20, 14);
        column->setLayout(layout);
        for (const View& section : form.content)
            layout->addWidget(section.build({.inForm = true}));
        scroll->setWidget(column);
        scroll->viewport()->setAutoFillBackground(false);
        column->setAutoFillBackground(false);
        return scroll;
    });
}

} // namespace mirrolet::platform::swiftui
