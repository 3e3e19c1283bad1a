#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/capture/ContinuousDamage.h"

#include <chrono>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// A step that CaptureSource has to do next, as CapturePolicy orders it.
enum class CaptureCommand {
    checkWindow,      ///< Ask the server about the window; answer with windowHidden() or windowViewable().
    checkRedirection, ///< Ask whether another client has redirected the window; answer redirectionChecked().
    takeDamage,       ///< Take the reported damage; answer with damageTaken().
    applyDamage,      ///< The damage just taken changed the content.
    damageAll,        ///< All of the content may have changed.
    watchDamage,
    ignoreDamage,
    redirect,
    unredirect,
    readDirectly, ///< Show the window's own pixels, as a new content. A waiting pixmap is dropped.
    stopReading,  ///< Show the copy of the window's last pixels. A waiting pixmap is dropped.
    namePixmap,   ///< Name the redirected window's pixmap and let it wait; answer with pixmapNamed().
    showPixmap,   ///< Show the pixmap that waits, as a new content.
    copyPixels,   ///< Bring the copy of the directly read pixels up to date.
};

/// Decides how a window is captured, from events and a clock alone. Each function for an event returns the
/// commands that follow from the event, in order. Direct reading is preferred, because redirection makes the
/// server copy everything that the window draws. To be used by one thread at a time.
///
/// A tick, in any state:
///   the window was replaced, or a recheck is due      checkWindow
///   else the window was damaged                       takeDamage
///   else damage is assumed, or a final read is due    damageAll
///   else                                              none, so the image stays the same
///
/// Transitions:
///   state            event                             next state       commands
///   hidden           windowHidden                      hidden           stopReading
///                    windowViewable                    hidden           checkRedirection
///                    redirectionChecked, readable      direct           readDirectly
///                    redirectionChecked, otherwise     awaitingRepaint  redirect, namePixmap
///   direct           windowHidden                      hidden           stopReading
///                    windowViewable                    direct           checkRedirection
///                    redirectionChecked, readable      direct           damageAll
///                      in another geometry             direct           readDirectly
///                    redirectionChecked, otherwise     awaitingRepaint  stopReading, redirect, namePixmap
///                    tickEnded, a copy is due          direct           copyPixels
///   awaitingRepaint  pixmapNamed, repainted            redirected       showPixmap
///                    damageTaken, repainted            redirected       showPixmap
///                    tick, waited too long             redirected       checkWindow
///   redirected       pixmapNamed                       redirected       showPixmap
///   the two above    windowHidden                      hidden           unredirect, stopReading
///                    windowViewable, recheck is due    hidden           unredirect, checkRedirection
///                      and the window is readable
///                    windowViewable, otherwise         the same         namePixmap
///   any              damageTaken, no pixmap waits      the same         applyDamage
///
/// "The two above" are awaitingRepaint and redirected. A pixmap waits while it is named and not yet shown.
/// Readable means that the window can be read directly and that no other client has redirected it. Continuous
/// damage adds ignoreDamage after applyDamage, and watchDamage when damage is no longer assumed.
class CapturePolicy {
  public:
    using Time = std::chrono::steady_clock::time_point;
    using Commands = std::vector<CaptureCommand>;

    enum class State {
        hidden,          ///< No pixels are read from the window; the last pixels that were read are shown.
        direct,          ///< The pixels are read from the window itself.
        awaitingRepaint, ///< The window is redirected, but its pixmap may hold pixels of other windows.
        redirected,      ///< The pixels are read from the redirected window's pixmap.
    };
    /// Flags that tell what happened since the last tick.
    enum Change : unsigned {
        damaged = 1,
        replaced = 2, ///< The window has another pixmap, geometry or visibility.
    };
    struct Viewability {
        /// The window is unobscured and of a kind that can be read directly.
        bool isReadable = false;
        /// The window is already read directly, and its geometry has not changed since direct reading began.
        bool sameGeometry = false;
    };

    /// Begins a tick. Returns no commands if nothing changed and nothing is due.
    Commands tick(unsigned changes, Time now);
    Commands windowHidden();
    Commands windowViewable(const Viewability& viewability, Time now);
    Commands redirectionChecked(bool byAnotherClient, Time now);
    /// `repainted` tells that the window has drawn all parts that were obscured when it was redirected.
    Commands pixmapNamed(bool repainted);
    Commands damageTaken(const PixelRect& box, PixelSize content, bool repainted);
    /// Ends a tick that had commands. `now` is the time at which the tick began.
    Commands tickEnded(Time now);

    [[nodiscard]] State state() const { return current; }
    [[nodiscard]] bool isRedirected() const {
        return current == State::awaitingRepaint || current == State::redirected;
    }

  private:
    static constexpr Time never = Time::max();

    Commands enterDirect();
    Commands enterAwaitingRepaint(Time now);
    Commands enterRedirected();

    State current = State::hidden;
    ContinuousDamage continuousDamage;
    Viewability viewable; ///< The value of the last windowViewable().
    bool pixmapWaits = false;
    bool awaitsFirstDamage = false; ///< No damage has come since the window was redirected.
    Time finalReadAt = never;
    Time recheckObscuredAt = never;
    Time copyPixelsAt = never;
    Time giveUpRepaintAt = never;
};

} // namespace mirrolet::platform::desktop::x11
