#include "prompt/PromptPanel.h"

#include "platform/appkit/NSScreen.h"
#include "tests/unit/DesktopTest.h"
#include "tests/unit/WidgetSearch.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace mirrolet {
namespace {

class PromptPanelTest : public DesktopTest {
  protected:
    PromptPanelTest() {
        atEnd.emplace_back([this] { panel.reset(); });
    }

    void makePanel(const std::string& name, bool isLikelyCall) {
        panel = PromptPanel::make(name, isLikelyCall);
        panel->onAccept = [this] { answers += panel->isVisible() ? "accepted while shown;" : "accepted;"; };
        panel->onDecline = [this] { answers += panel->isVisible() ? "declined while shown;" : "declined;"; };
    }
    void show() {
        panel->show();
        showActive(window());
    }
    [[nodiscard]] QWidget& content() const { return *panel->contentView()->hostedWidget(); }
    [[nodiscard]] QWidget& window() const { return *content().window(); }
    [[nodiscard]] QPushButton& button(const std::string& label) const {
        return named<QPushButton>(content(), label);
    }
    void keyInto(const std::string& label, Qt::Key key) const {
        button(label).setFocus(Qt::TabFocusReason);
        QTest::keyClick(&button(label), key);
    }
    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> result;
        for (const auto* label : content().findChildren<QLabel*>())
            result.push_back(label->text().toStdString());
        return result;
    }

    std::shared_ptr<PromptPanel> panel;
    std::string answers;
};

TEST_F(PromptPanelTest, AnswersOnceWhateverComesFirstAndIsClosedThen) {
    struct Case {
        const char* what;
        std::function<void()> act;
        const char* answers;
    };
    const Case cases[] = {
        {"Return", [this] { QTest::keyClick(&window(), Qt::Key_Return); }, "accepted;"},
        {"Enter", [this] { QTest::keyClick(&window(), Qt::Key_Enter, Qt::KeypadModifier); }, "accepted;"},
        {"Escape", [this] { QTest::keyClick(&window(), Qt::Key_Escape); }, "declined;"},
        {"Return in the other button", [this] { keyInto("Not Now", Qt::Key_Return); }, "accepted;"},
        {"Escape in the other button", [this] { keyInto("Enable PiP", Qt::Key_Escape); }, "declined;"},
        {"Space in a button", [this] { keyInto("Not Now", Qt::Key_Space); }, "declined;"},
        {"a click on each button",
         [this] {
             QTest::mouseClick(&button("Enable PiP"), Qt::LeftButton);
             button("Not Now").click();
         },
         "accepted;"},
        {"a stray Space", [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space); }, ""},
        {"the time-out", [this] { time.advance(15); }, "declined;"},
        {"nothing yet", [this] { time.advance(14.9); }, ""},
        {"a dismissal", [this] { panel->dismiss(); }, ""},
    };
    for (const auto& [what, act, expected] : cases) {
        SCOPED_TRACE(what);
        answers.clear();
        makePanel("WhatsApp", true);
        show();
        const bool ends = *expected || std::string(what) == "a dismissal";
        act();
        EXPECT_EQ(answers, expected);
        EXPECT_EQ(panel->isVisible(), !ends);
        if (ends) {
            time.advance(60); // There must be no second answer.
            EXPECT_EQ(answers, expected);
        }
    }
}

TEST_F(PromptPanelTest, TakesTheTimeOutOfTheMomentItIsShownAndAsksAnewWhenShownAgain) {
    makePanel("WhatsApp", true);
    SettingsStore::shared().setPromptTimeout(5);
    show();
    SettingsStore::shared().setPromptTimeout(30);
    time.advance(5);
    EXPECT_EQ(answers, "declined;");
    show();
    time.advance(29);
    show(); // Restarts the time-out.
    time.advance(29);
    EXPECT_EQ(answers, "declined;");
    time.advance(1);
    EXPECT_EQ(answers, "declined;declined;");
}

TEST_F(PromptPanelTest, MayBeDroppedByItsOwnerInTheAnswerOrBeforeTheTimeOut) {
    makePanel("WhatsApp", true);
    panel->onDecline = [this] {
        answers += "declined;";
        panel.reset();
    };
    show();
    QTest::mouseClick(&button("Not Now"), Qt::LeftButton);
    EXPECT_EQ(answers, "declined;");
    makePanel("WhatsApp", true);
    show();
    panel.reset();
    time.advance(60);
    EXPECT_EQ(answers, "declined;");
}

TEST_F(PromptPanelTest, SaysWhatItOffersInPlainText) {
    struct Case {
        const char* name;
        bool isLikelyCall;
        const char* title;
        const char* what;
    };
    for (const auto& [name, isLikelyCall, title, what] :
         {Case{"WhatsApp", true, "Video Call Detected", "WhatsApp call"},
          Case{"Firefox", false, "Firefox Window Detected", "Firefox window"},
          Case{"<b>&amp;</b>", false, "<b>&amp;</b> Window Detected", "<b>&amp;</b> window"}}) {
        const auto explanation = "Enable Picture-in-Picture to keep this " + std::string(what) +
                                 " visible in a floating window while you use other apps.";
        makePanel(name, isLikelyCall);
        EXPECT_THAT(texts(), testing::ElementsAre(title, explanation));
        for (const auto* label : content().findChildren<QLabel*>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
    }
    show();
    EXPECT_EQ(desktop.panelWindows().back()->level, platform::NSWindowLevel::modalPanel);
    EXPECT_EQ(desktop.panelWindows().back()->stacking, platform::desktop::PanelStacking::floating);
    EXPECT_EQ(desktop.panelWindows().back()->timesFocused, 1);
    const auto colour = [this](const char* name) { return button(name).grab().toImage().pixel(12, 6); };
    EXPECT_NE(colour("Enable PiP"), colour("Not Now")) << "one of the two is prominent";
    QTest::mouseClick(window().windowHandle(), Qt::LeftButton, Qt::NoModifier, {5, 5});
    EXPECT_EQ(desktop.panelWindows().back()->timesFocused, 2) << "a click takes the focus again";
    const auto visible = platform::NSScreen::main()->visibleFrame;
    EXPECT_EQ(panel->frame().midX(), visible.midX());
    EXPECT_NEAR(panel->frame().midY(), visible.minY() + 0.6 * visible.height(), 1);
}

TEST_F(PromptPanelTest, ShowsLineBreaksAndControlCharactersOfANameAsSpaces) {
    std::vector<QImage> pictures;
    for (const auto* name : {"A B C D", "A\nB\x01"
                                        "C\u2028D"}) {
        makePanel(name, false);
        show();
        pictures.push_back(content().grab().toImage());
    }
    EXPECT_EQ(pictures.front(), pictures.back());
}

TEST_F(PromptPanelTest, KeepsItsSizeAndAllItsPartsInsideWhateverTheNameAndTheFont) {
    const QFont before = QApplication::font();
    for (const std::size_t length : {1U, 60U, 5000U, 2000000U}) {
        for (const int points : {8, 10, 18}) {
            SCOPED_TRACE(testing::Message() << length << " characters at " << points << " points");
            QApplication::setFont(QFont(before.family(), points));
            makePanel(std::string(length, 'W'), false);
            show();
            EXPECT_EQ(content().size(), QSize(360, 160));
            const auto parts = content().findChildren<QWidget*>();
            for (const auto* part : parts) {
                const QRect place(part->mapTo(&content(), QPoint(0, 0)), part->size());
                EXPECT_TRUE(content().rect().contains(place)) << part->metaObject()->className();
            }
            EXPECT_FALSE(content().grab().isNull());
            panel->dismiss();
        }
    }
    QApplication::setFont(before);
}

} // namespace
} // namespace mirrolet
