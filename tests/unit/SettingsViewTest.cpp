#include "settings/SettingsView.h"

#include "platform/swiftui/NSHostingView.h"
#include "settings/PiPSettingsView.h"
#include "tests/unit/DesktopTest.h"
#include "tests/unit/WidgetSearch.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

namespace mirrolet {
namespace {

class SettingsViewTest : public DesktopTest {
  protected:
    SettingsViewTest() {
        const QString folder = qEnvironmentVariable("XDG_DATA_HOME") + "/applications";
        QDir().mkpath(folder);
        for (const auto* name : {"Alpha", "beta", "Gamma Ray"}) {
            QFile file(folder + "/org.example." + QString(name).remove(' ') + ".desktop");
            if (file.open(QFile::WriteOnly))
                file.write("[Desktop Entry]\nType=Application\nExec=true\nName=" + QByteArray(name) + "\n");
        }
        hosting = std::make_shared<platform::NSHostingView>(SettingsView());
        root().setParent(&window);
        showActive(window);
        root().show();
        atEnd.emplace_back([this] { hosting.reset(); });
    }

    [[nodiscard]] QWidget& root() const { return *hosting->hostedWidget(); }
    template <class Widget> [[nodiscard]] Widget& find(const std::string& name) const {
        return named<Widget>(root(), name);
    }
    void openPiPTab() {
        root().findChild<QTabBar*>()->setCurrentIndex(1);
        QApplication::processEvents();
    }
    void loadApps() {
        openPiPTab();
        time.run();
    }
    [[nodiscard]] QListView& list() const { return *root().findChild<QListView*>(); }
    [[nodiscard]] std::vector<std::string> listed() const {
        std::vector<std::string> names;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            names.push_back(list().model()->index(row, 0).data().toString().toStdString());
        return names;
    }
    [[nodiscard]] bool says(const std::string& text) const {
        const auto labels = root().findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const auto* label) {
            return label->text().toStdString() == text && label->isVisible();
        });
    }

    SettingsStore& store = SettingsStore::shared();
    QWidget window;
    std::shared_ptr<platform::NSHostingView> hosting;
};

TEST_F(SettingsViewTest, EveryControlShowsTheStoreAndWritesToItAtOnce) {
    find<QCheckBox>("Start monitoring when app launches").click();
    EXPECT_FALSE(store.startMonitoringOnLaunch());
    find<QCheckBox>("Keep PiP on top of other windows").toggle(); // Assistive software uses toggle().
    EXPECT_FALSE(store.pipAlwaysOnTop());
    find<QRadioButton>("Check All Windows").click();
    EXPECT_EQ(store.monitoringScope(), MonitoringScope::allWindows);

    store.setStartMonitoringOnLaunch(true);
    store.setMonitoringScope(MonitoringScope::specificApps);
    time.run();
    EXPECT_TRUE(find<QCheckBox>("Start monitoring when app launches").isChecked());
    EXPECT_TRUE(find<QRadioButton>("Check Specific Windows").isChecked());
}

TEST_F(SettingsViewTest, PickersOfferTheirChoicesInOrder) {
    struct Case {
        const char* label;
        std::vector<std::string> choices;
        std::function<double()> value;
        std::vector<double> values; ///< The value after the choice at the same index.
    };
    const Case cases[] = {
        {"Check for windows every",
         {"1 second", "2 seconds", "3 seconds", "5 seconds"},
         [this] { return store.pollInterval(); },
         {1, 2, 3, 5}},
        {"Prompt disappears after",
         {"5 seconds", "10 seconds", "15 seconds", "30 seconds"},
         [this] { return store.promptTimeout(); },
         {5, 10, 15, 30}},
        {"Default position",
         {"Bottom Right", "Bottom Left", "Top Right", "Top Left"},
         [this] { return static_cast<double>(store.pipCorner()); }, // In the order of PiPCorner.
         {0, 1, 2, 3}},
    };
    for (const auto& [label, choices, value, values] : cases) {
        auto& picker = find<QComboBox>(label);
        ASSERT_EQ(picker.count(), 4);
        for (int row = 0; row < 4; ++row) {
            EXPECT_EQ(picker.itemText(row).toStdString(), choices.at(row));
            picker.setCurrentIndex(row);
            Q_EMIT picker.activated(row);
            EXPECT_EQ(value(), values.at(row)) << choices.at(row);
        }
        QWheelEvent wheel({9, 9}, {9, 9}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&picker, &wheel);
        EXPECT_EQ(picker.currentIndex(), 3) << "the wheel scrolls the form and changes no choice";
    }
}

TEST_F(SettingsViewTest, AValueThatIsNoChoiceShowsNoneAndStays) {
    store.setPollInterval(2.5);
    time.run();
    EXPECT_EQ(find<QComboBox>("Check for windows every").currentIndex(), -1);
    find<QComboBox>("Prompt disappears after").setCurrentIndex(0);
    EXPECT_EQ(store.pollInterval(), 2.5);
}

TEST_F(SettingsViewTest, ScansEachTimeTheTabShowsWithTheSearchFieldUsableMeanwhile) {
    EXPECT_TRUE(listed().empty());
    openPiPTab();
    EXPECT_TRUE(says("Scanning installed apps…"));
    EXPECT_EQ(root().findChild<QProgressBar*>()->accessibleName(), "Scanning installed apps…");
    find<QLineEdit>("Search installed apps").setText("a");
    root().findChild<QTabBar*>()->setCurrentIndex(0);
    openPiPTab();
    EXPECT_EQ(time.queuesMade("installedAppsScan"), 1) << "one still ran";
    time.run();
    EXPECT_FALSE(says("Scanning installed apps…"));
    EXPECT_THAT(listed(), testing::IsSupersetOf({"Alpha", "beta", "Gamma Ray"}));
    root().findChild<QTabBar*>()->setCurrentIndex(0);
    openPiPTab();
    EXPECT_TRUE(says("Scanning installed apps…"));
    hosting.reset(); // Destroys the view while the scan runs.
    time.run();
}

TEST_F(SettingsViewTest, TheModeExchangesTheListForAnExplanationAndBackWithoutAScan) {
    loadApps();
    const std::string explanation =
        "Mirrolet will offer Picture-in-Picture for the largest window of whichever "
        "app is currently frontmost.";
    const int scans = time.queuesMade("installedAppsScan");
    find<QRadioButton>("Check All Windows").click();
    time.run();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(says(explanation));
    EXPECT_FALSE(says("Apps to Watch"));
    find<QRadioButton>("Check Specific Windows").click();
    time.run();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(says(explanation));
    EXPECT_TRUE(says("Apps to Watch"));
    EXPECT_THAT(listed(), testing::Contains("Alpha"));
    EXPECT_EQ(time.queuesMade("installedAppsScan"), scans);
}

TEST_F(SettingsViewTest, TickingAnApplicationChangesItsIdentifierOnly) {
    loadApps();
    find<QLineEdit>("Search installed apps").setText("alpha");
    ASSERT_THAT(listed(), testing::ElementsAre("Alpha"));
    list().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_THAT(store.selectedAppIdentifiers(),
                testing::ElementsAre("net.whatsapp.WhatsApp", "org.example.Alpha"));
    const QPoint middle = list().visualRect(list().model()->index(0, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, middle);
    EXPECT_THAT(store.selectedAppIdentifiers(), testing::ElementsAre("net.whatsapp.WhatsApp"));
    store.setSelectedAppIdentifiers({"org.example.Alpha"});
    time.run();
    EXPECT_EQ(list().model()->index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    QTest::keyClick(&find<QLineEdit>("Search installed apps"), Qt::Key_Escape);
    EXPECT_GT(listed().size(), 1u) << "Escape clears the search";
}

TEST_F(SettingsViewTest, FiltersTheApplicationsByATextInTheirName) {
    const std::vector<InstalledApp> apps = {
        {"net.whatsapp.WhatsApp", "WhatsApp", nullptr}, {"org.what.Editor", "Editor", nullptr},
        {"org.example.Two", "Two Words", nullptr},      {"org.example.Cafe", "Cafe\u0301", nullptr},
        {"org.example.Strasse", "ÉCOLE", nullptr},
    };
    struct Case {
        const char* text;
        std::vector<std::string> found;
    };
    const Case cases[] = {
        {"", {"WhatsApp", "Editor", "Two Words", "Cafe\u0301", "ÉCOLE"}},
        {"what", {"WhatsApp"}},
        {"O", {"Editor", "Two Words", "ÉCOLE"}},
        {" ", {"Two Words"}},
        {"café", {"Cafe\u0301"}},
        {"école", {"ÉCOLE"}},
        {"org.example", {}},
    };
    for (const auto& [text, found] : cases) {
        std::vector<std::string> names;
        for (const auto& app : PiPSettingsView::filtered(apps, text))
            names.push_back(app.displayName);
        EXPECT_EQ(names, found) << text;
    }
}

} // namespace
} // namespace mirrolet
