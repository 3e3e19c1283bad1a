#pragma once

#include "platform/coregraphics/CGImage.h"

#include <functional>
#include <memory>
#include <utility>

namespace mirrolet {

/// Delivers the captured images of one session on the main queue, each of them, in their order. A new image
/// is posted at once. An image that was captured before is in the panel already, or on its way there, so
/// repeats are collected and posted once a second, or with the next new image. The main thread then sleeps
/// while there is nothing new to show. Used on the capture queue.
class FrameDelivery {
  public:
    /// Runs on the main thread, for each image.
    using Handler = std::function<void(const platform::CGImageRef&)>;

    explicit FrameDelivery(Handler handler) : deliver(std::move(handler)) {}
    void post(const platform::CGImageRef& image);

  private:
    Handler deliver;
    /// Weak, because the last owner of an image stops the capture of its window.
    std::weak_ptr<const platform::CGImage> last;
    int repeats = 0; ///< Of the last image, and still to be posted.
};

} // namespace mirrolet
