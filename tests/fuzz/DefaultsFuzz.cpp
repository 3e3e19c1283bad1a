// Fuzzes the settings file. Users edit this file, so it may contain anything. Reads values from the input,
// writes the values to a file, reads that file, and makes the settings from it.

#include "platform/foundation/PropertyListFile.h"
#include "platform/foundation/UserDefaults.h"
#include "settings/SettingsStore.h"
#include "tests/fuzz/Fuzz.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

using namespace mirrolet;
using namespace mirrolet::platform;
using fuzz::expect;

const std::string& filePath() {
    static const std::string path = std::filesystem::temp_directory_path() /
                                    ("mirrolet-fuzz-" + std::to_string(getpid()) + "/defaults.json");
    static const bool cleanUp =
        std::atexit([] { std::filesystem::remove_all(std::filesystem::path(filePath()).parent_path()); });
    (void)cleanUp;
    return path;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto values = PropertyListFile::parse(fuzz::textOf(data, size));
    if (!values)
        return 0;
    // Expects that all values from the input can be written to a file, and that none is missing when the file
    // is read again.
    expect(PropertyListFile::write(filePath(), *values).empty());
    const auto again = PropertyListFile::read(filePath());
    expect(again.problem.empty() && again.values.size() == values->size());
    UserDefaults defaults(filePath());
    const SettingsStore store(defaults);
    expect(!std::isnan(store.pollInterval()) && !std::isnan(store.promptTimeout()));
    const auto settings = store.currentMonitoringSettings();
    expect(settings.selectedAppIdentifiers == store.selectedAppIdentifiers());
    expect(settings.scope == store.monitoringScope());
    return 0;
}
