#pragma once

#include "platform/swiftui/Text.h"

#include <QLabel>
#include <QSize>
#include <QString>

#include <optional>
#include <vector>

namespace mirrolet::platform::swiftui {

/// Shows a Text. QLabel's text() returns the whole text, even if only a part fits and is drawn.
class TextWidget : public QLabel {
  public:
    TextWidget(const std::vector<Text::Run>& runs, Font font, ForegroundStyle style, TextAlignment alignment);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Piece {
        QString text;
        bool elidable;
    };
    /// The text as it is drawn: its elidable parts may be shortened, and its font is scaled.
    struct Fit {
        QString text;
        double scale = 1;
    };

    [[nodiscard]] QFont scaledFont(double scale) const;
    [[nodiscard]] double heightOf(const QString& text, double width, double scale) const;
    [[nodiscard]] bool fits(const QString& text, double scale) const;
    [[nodiscard]] QString shortened(qsizetype charactersKept) const;
    [[nodiscard]] std::optional<QString> longestThatFits(double scale) const;
    [[nodiscard]] Fit fitted() const;

    std::vector<Piece> pieces;
    qsizetype longestElidable = 0;
    Font role;
    ForegroundStyle style;
    TextAlignment textAlignment;
    std::optional<Fit> fit; ///< The text for the present size and font. Empty until it is needed.
};

} // namespace mirrolet::platform::swiftui
