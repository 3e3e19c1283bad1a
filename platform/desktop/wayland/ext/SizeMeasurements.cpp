#include "platform/desktop/wayland/ext/SizeMeasurements.h"

#include <chrono>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

/// A session that asks for no frame.
class SizeMeasurements::Session final : public CaptureSession {
  public:
    Session(SizeMeasurements& owner, WindowNumber number, ext_foreign_toplevel_handle_v1* window)
        : CaptureSession(owner.protocols, window), owner(owner), number(number) {}

  private:
    void bufferSize(PixelSize told) override { size = told; }
    void shmFormat(std::uint32_t /*format*/) override {}
    void constraintsDone() override { owner.end(number, size); }
    void stopped() override { owner.end(number, std::nullopt); }

    SizeMeasurements& owner;
    const WindowNumber number;
    std::optional<PixelSize> size;
};

SizeMeasurements::SizeMeasurements(WaylandConnection& connection, const Toplevels& windows,
                                   const CaptureProtocols& protocols, ToplevelSizes& sizes)
    : connection(connection), windows(windows), protocols(protocols), sizes(sizes) {}

SizeMeasurements::~SizeMeasurements() = default;

void SizeMeasurements::begin(std::vector<WindowNumber> numbers) {
    if (numbers.empty())
        return;
    connection.post([this, numbers = std::move(numbers)] {
        for (const auto number : numbers)
            measure(number);
    });
}

void SizeMeasurements::measure(WindowNumber number) {
    sessions.erase(number); // One that the compositor has not answered.
    if (auto* window = windows.handleOf(number))
        sessions.emplace(number, std::make_unique<Session>(*this, number, window));
    else
        sizes.measured(number, std::nullopt, std::chrono::steady_clock::now());
}

void SizeMeasurements::end(WindowNumber number, std::optional<PixelSize> size) {
    sizes.measured(number, size, std::chrono::steady_clock::now());
    sessions.erase(number);
}

} // namespace mirrolet::platform::desktop::wayland
