#include "platform/foundation/URL.h"

#include <utility>

namespace mirrolet::platform {

URL URL::fileURLWithPath(std::string path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    URL url(std::move(path));
    url.file = true;
    return url;
}

std::string URL::lastPathComponent() const {
    const std::string whole = path();
    return whole.substr(whole.rfind('/') + 1);
}

std::string URL::pathExtension() const {
    const std::string name = lastPathComponent();
    const auto dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

URL URL::deletingPathExtension() const {
    const auto extension = pathExtension();
    const auto whole = path();
    return fileURLWithPath(extension.empty() ? whole : whole.substr(0, whole.size() - extension.size() - 1));
}

URL URL::deletingLastPathComponent() const {
    const auto whole = path();
    const auto slash = whole.rfind('/');
    return fileURLWithPath(slash == 0 || slash == std::string::npos ? "/" : whole.substr(0, slash));
}

URL URL::appendingPathComponent(const std::string& component) const {
    const auto whole = path();
    return fileURLWithPath(whole.ends_with('/') ? whole + component : whole + '/' + component);
}

} // namespace mirrolet::platform
