#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/capture/ContinuousDamage.h"

#include <chrono>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// A command that CapturePolicy gives to CaptureSource.
enum class CaptureCommand {
    checkWindow,      ///< Ask the server about the window, then call windowHidden() or windowViewable().
    checkRedirection, ///< Ask whether another client redirects the window, then call redirectionChecked().
    takeDamage,       ///< Take the reported damage, then call damageTaken().
    applyDamage,      ///< Mark the area of the last taken damage as changed.
    damageAll,        ///< Mark the whole content as changed.
    watchDamage,
    ignoreDamage,
    redirect,
    unredirect,
    readDirectly, ///< Show the window's own pixels as a new content. Drop a waiting pixmap.
    stopReading,  ///< Show the copy of the window's last pixels. Drop a waiting pixmap.
    namePixmap,   ///< Get the redirected window's pixmap and let it wait, then call pixmapNamed().
    showPixmap,   ///< Show the waiting pixmap as a new content.
    copyPixels,   ///< Update the copy of the directly read pixels.
};

/// Decides how a window is captured. Direct reading is preferred, because redirection makes the server copy
/// everything that the window draws. This class makes no requests. The caller reports events and the time.
/// Each function returns the commands that the caller has to carry out, in order. To be used by one thread at
/// a time.
///
/// Words in the tables:
///   readable        Viewability::isReadable is true, and no other client has redirected the window
///   same geometry   readable, and Viewability::sameGeometry is true
///   new geometry    readable, and Viewability::sameGeometry is false
///   readable again  Viewability::isReadable is true, and a check is due
///   a pixmap waits  pixmapNamed() was called, and the pixmap is neither shown nor dropped yet
///   ready           a pixmap waits, and the window has drawn all parts that were obscured at the redirection
///   check due       the time `recheckObscuredAt` has come
///   copy due        the time `copyPixelsAt` has come
///   final read due  the time `finalReadAt` has come
///   repaint late    the time `giveUpRepaintAt` has come
///
/// tick() returns the command of the first row that applies, in any state:
///   none         no event, no assumed damage, no final read due, no repaint late; the image stays the same
///   checkWindow  window replaced, check due, repaint late, or the first damage since a redirection
///   takeDamage   damage was reported and none is assumed
///   damageAll    any other case
///
/// The functions for events change the state and return commands:
///   state            event                               next state       commands
///   hidden           windowHidden                        hidden           stopReading
///   hidden           windowViewable                      hidden           checkRedirection
///   hidden           redirectionChecked, readable        direct           readDirectly
///   hidden           redirectionChecked, not readable    awaitingRepaint  redirect, namePixmap
///   direct           windowHidden                        hidden           stopReading
///   direct           windowViewable                      direct           checkRedirection
///   direct           redirectionChecked, same geometry   direct           damageAll
///   direct           redirectionChecked, new geometry    direct           readDirectly
///   direct           redirectionChecked, not readable    awaitingRepaint  stopReading, redirect, namePixmap
///   direct           tickEnded, copy due                 direct           copyPixels
///   awaitingRepaint  windowHidden                        hidden           unredirect, stopReading
///   awaitingRepaint  windowViewable, readable again      hidden           unredirect, checkRedirection
///   awaitingRepaint  windowViewable, not readable again  awaitingRepaint  namePixmap
///   awaitingRepaint  pixmapNamed, ready                  redirected       showPixmap
///   awaitingRepaint  damageTaken, ready                  redirected       showPixmap
///   awaitingRepaint  tick, repaint late                  redirected       checkWindow
///   redirected       windowHidden                        hidden           unredirect, stopReading
///   redirected       windowViewable, readable again      hidden           unredirect, checkRedirection
///   redirected       windowViewable, not readable again  redirected       namePixmap
///   redirected       pixmapNamed                         redirected       showPixmap
///   any state        damageTaken, no pixmap waits        the same state   applyDamage
///
/// An event without a row returns no command. When damage becomes continuous, ignoreDamage follows
/// applyDamage. When damage is no longer assumed, watchDamage is given before redirect, or as the first
/// command of tick().
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
        replaced = 2, ///< The window's pixmap, geometry or visibility has changed.
    };
    struct Viewability {
        /// Whether the window is unobscured and of a kind that can be read directly.
        bool isReadable = false;
        /// Whether the window is already read directly and still has the geometry that it had when direct
        /// reading began.
        bool sameGeometry = false;
    };

    /// Begins a tick. `changes` holds Change flags. Returns no commands if nothing changed and nothing is
    /// due.
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
    Viewability viewable; ///< The argument of the last windowViewable().
    bool pixmapWaits = false;
    bool awaitsFirstDamage = false; ///< No damage has come since the window was redirected.
    Time finalReadAt = never;
    Time recheckObscuredAt = never;
    Time copyPixelsAt = never;
    Time giveUpRepaintAt = never;
};

} // namespace mirrolet::platform::desktop::x11
