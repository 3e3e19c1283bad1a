#include "tests/desktop/harness/Sandbox.h"

#include "tests/desktop/harness/HarnessError.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace mirrolet::harness {

namespace {

void inherit(Environment& environment, const char* name) {
    if (const char* value = std::getenv(name))
        environment[name] = value;
}

} // namespace

Sandbox::Sandbox() {
    // The folder is directly in /tmp, so that its path is short. Programs make Unix sockets in the folder,
    // and the path of a Unix socket may have at most 107 bytes.
    std::string pattern = "/tmp/mirrolet-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr)
        throw HarnessError("cannot make a temporary folder in /tmp");
    root = pattern;
    for (const char* name : {"home", "config", "data", "cache", "runtime", "etc"})
        std::filesystem::create_directory(root / name);
    std::filesystem::permissions(root / "runtime", std::filesystem::perms::owner_all);
}

Sandbox::~Sandbox() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

Environment Sandbox::environment() const {
    Environment result{
        {"HOME", root / "home"},
        {"XDG_CONFIG_HOME", root / "config"},
        {"XDG_DATA_HOME", root / "data"},
        {"XDG_CACHE_HOME", root / "cache"},
        {"XDG_CONFIG_DIRS", root / "etc"},
        {"XDG_DATA_DIRS", "/usr/local/share:/usr/share"},
        {"LANG", "C.UTF-8"},
        {"XDG_RUNTIME_DIR", root / "runtime"},
        // Keeps Qt from searching for the accessibility bus, which would slow each start down by a second.
        {"NO_AT_BRIDGE", "1"},
    };
    for (const char* name : {"PATH", "USER", "ASAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS"})
        inherit(result, name);
    return result;
}

std::filesystem::path Sandbox::write(const std::filesystem::path& relative, const std::string& text) const {
    const auto file = root / relative;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file;
}

std::string Sandbox::read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

} // namespace mirrolet::harness
