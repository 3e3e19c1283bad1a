#include "tests/desktop/harness/plasma/TitleBars.h"

namespace mirrolet::harness {

namespace {

constexpr auto metadata = R"({
    "KPackageStructure": "KWin/Decoration",
    "KPlugin": {"Id": "test_title_bars", "Name": "Title bars"},
    "X-Plasma-MainScript": "ui/main.qml"
})";

constexpr auto script = R"(import QtQuick 2.0
import org.kde.kwin.decoration 0.1
Decoration {
    alpha: false
    Component.onCompleted: borders.setTitle(24)
    Rectangle { anchors.fill: parent; color: "white" }
})";

} // namespace

std::string writeTitleBars(const Sandbox& sandbox) {
    const std::string folder = "data/kwin/decorations/test_title_bars/";
    sandbox.write(folder + "metadata.json", metadata);
    sandbox.write(folder + "contents/ui/main.qml", script);
    return "[org.kde.kdecoration2]\nlibrary=org.kde.kwin.aurorae\ntheme=test_title_bars\n";
}

} // namespace mirrolet::harness
