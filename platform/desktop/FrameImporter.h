#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowCapture.h"

#include <cstddef>
#include <memory>

namespace mirrolet::platform::desktop {

/// Memory that another process writes frames into and shares with this process by a file descriptor. The
/// descriptor must stay open as long as this object lives.
struct SharedMemory {
    int descriptor = -1;
    std::size_t size = 0; ///< In bytes, from the start of the file.
};

/// A frame of a source window in shared memory: 32 bits a pixel, blue in the lowest byte, the highest byte
/// without meaning. Rows go from top to bottom.
struct SharedFrame {
    std::shared_ptr<const SharedMemory> memory;
    std::size_t offset = 0; ///< Where the first row begins, in bytes.
    std::size_t stride = 0; ///< From one row to the next, in bytes.
    PixelSize size;         ///< Of the whole frame.
    PixelRect visible;      ///< The part that is the window's content. Not empty, inside the frame.
};

/// Makes images from the frames of one source window. The presenters of this desktop can show these images.
/// To be used by one thread at a time.
class FrameImporter {
  public:
    virtual ~FrameImporter() = default;
    /// Copies the visible part of the frame and returns an image of the copy. The other process may write to
    /// the memory again once this function has returned. Returns nullptr if the window server cannot read the
    /// memory.
    ///
    /// Presenters that show the image of the last import are told of the new frame. If they draw the new
    /// frame into that image's panels at once, the same image is returned again. Otherwise a new image is
    /// returned, which keeps `source` alive.
    virtual std::shared_ptr<const WindowImage> import(const SharedFrame& frame,
                                                      std::shared_ptr<const void> source) = 0;
    /// Returns an image of the frame that was imported last, or nullptr if no frame was imported. If the
    /// image that import() returned still exists, this is that image. Otherwise it is a new image, which
    /// keeps `source` alive.
    virtual std::shared_ptr<const WindowImage> lastImage(std::shared_ptr<const void> source) = 0;
};

} // namespace mirrolet::platform::desktop
