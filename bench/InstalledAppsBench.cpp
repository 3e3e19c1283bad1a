// Measures how long Mirrolet takes to list the installed applications on a machine with a thousand desktop
// entries. Also measures how long the first icons take, because an icon is looked up only when it is drawn.

#include "platform/appkit/ImageDrawing.h"
#include "settings/InstalledApp.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int entryCount = 1000;
constexpr int visibleRows = 12;
constexpr int iconSide = 18;

void writeEntries(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (int i = 0; i < entryCount; ++i) {
        std::ofstream entry(folder / ("org.example.App" + std::to_string(i) + ".desktop"));
        entry << "[Desktop Entry]\nType=Application\nExec=true %U\nIcon=org.example.App" << i
              << "\nName=Application " << i << '\n';
        // Each entry carries many translations and keywords, as real entries do.
        for (const auto* language :
             {"ar", "be", "bg", "ca", "cs", "da",    "de", "el", "es", "fi", "fr", "he", "hu",   "it",
              "ja", "ko", "nb", "nl", "pl", "pt_BR", "ro", "ru", "sv", "tr", "uk", "vi", "zh_CN"})
            entry << "Name[" << language << "]=Application " << i << "\nComment[" << language
                  << "]=An application that does what it is for\n";
        entry << "Categories=Utility;\nMimeType=text/plain;text/html;\n";
    }
}

void scanAThousandEntries(benchmark::State& state) {
    std::size_t found = 0;
    for ([[maybe_unused]] auto iteration : state)
        found = mirrolet::InstalledApp::scanInstalledApplications().size();
    state.counters["applications"] = static_cast<double>(found);
}

void drawTheIconsInView(benchmark::State& state) {
    const auto apps = mirrolet::InstalledApp::scanInstalledApplications();
    for ([[maybe_unused]] auto iteration : state)
        for (std::size_t row = 0; row < visibleRows && row < apps.size(); ++row)
            benchmark::DoNotOptimize(
                mirrolet::platform::renderedImage(*apps[row].icon, {iconSide, iconSide}, Qt::black));
}

// The first scan is measured separately, because it includes work that a program does only once. Each later
// scan reads all files again.
BENCHMARK(scanAThousandEntries)->Name("first scan")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(scanAThousandEntries)->Name("later scans")->Unit(benchmark::kMillisecond);
BENCHMARK(drawTheIconsInView)
    ->Name("icons of the rows in view, first time")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(drawTheIconsInView)->Name("icons of the rows in view, later")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
    qputenv("XDG_DATA_DIRS", "/usr/share");
    writeEntries(std::filesystem::path(home.path().toStdString()) / "applications");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
