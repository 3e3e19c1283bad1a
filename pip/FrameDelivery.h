#pragma once

#include "platform/coregraphics/CGImage.h"

#include <functional>
#include <memory>
#include <utility>

namespace mirrolet {

/// Delivers every captured image of one session on the main queue, in the order of capture. A new image is
/// posted at once. An image that repeats the one before is in the panel already, or on its way there. Repeats
/// are therefore collected and posted once a second, or with the next new image, so that the main thread
/// sleeps while there is nothing new to show. Used on the capture queue.
class FrameDelivery {
  public:
    /// Runs on the main thread, for each image.
    using Handler = std::function<void(const platform::CGImageRef&)>;

    explicit FrameDelivery(Handler handler) : deliver(std::move(handler)) {}
    void post(const platform::CGImageRef& image);

  private:
    Handler deliver;
    /// The pointer is weak, because the last owner of an image stops the capture of its window.
    std::weak_ptr<const platform::CGImage> last;
    int repeats = 0; ///< How many repeats of the last image are still to be posted.
};

} // namespace mirrolet
