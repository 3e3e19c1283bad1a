// Reads the settings from the bytes of a defaults file and writes the values back to a file. People edit
// such files.

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
    // Every value that was read can be written, and is read again as the same value.
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
