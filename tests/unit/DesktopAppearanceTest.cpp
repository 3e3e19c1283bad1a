#include "platform/appkit/DesktopAppearance.h"

#include <QApplication>
#include <QPalette>
#include <gtest/gtest.h>

namespace mirrolet {
namespace {

using platform::DesktopAppearance;

TEST(DesktopAppearanceTest, TurnsTheToolkitDarkAndBackButLeavesADarkDesktopAlone) {
    const QPalette own = QApplication::palette();
    DesktopAppearance::setDark(false);
    EXPECT_EQ(QApplication::palette(), own);
    DesktopAppearance::setDark(true);
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 80);
    EXPECT_EQ(QApplication::palette().color(QPalette::Highlight), own.color(QPalette::Highlight));
    DesktopAppearance::setDark(false);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), own.color(QPalette::Window));

    QPalette dark = own;
    dark.setColor(QPalette::Window, QColor(10, 20, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    DesktopAppearance::setDark(true);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(10, 20, 30));
    QApplication::setPalette(QPalette());
}

} // namespace
} // namespace mirrolet
