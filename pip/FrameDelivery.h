#pragma once

#include "platform/coregraphics/CGImage.h"

#include <functional>
#include <memory>
#include <utility>

namespace mirrolet {

/// Posts every captured image of one session to the main queue, in the order of capture. A new image is
/// posted at once. An image that repeats the previous one can wait, because the panel shows it already.
/// Repeats are posted together once a second, or with the next new image. Meanwhile the main thread can
/// sleep. Used on the capture queue.
class FrameDelivery {
  public:
    /// Called on the main thread for each image.
    using Handler = std::function<void(const platform::CGImageRef&)>;

    explicit FrameDelivery(Handler handler) : deliver(std::move(handler)) {}
    void post(const platform::CGImageRef& image);

  private:
    Handler deliver;
    /// The pointer is weak, because an owning pointer would keep the capture running. The capture of a window
    /// stops only when nobody owns an image of the window any more.
    std::weak_ptr<const platform::CGImage> last;
    int repeats = 0; ///< The number of repeats of the last image that are not posted yet.
};

} // namespace mirrolet
