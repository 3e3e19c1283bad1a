#include "platform/desktop/x11/capture/CapturePolicy.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

using enum CaptureCommand;

// Some drivers report damage before the drawn pixels have arrived in the window. A window that has stopped
// drawing is therefore read once more after this time. Reading all windows at regular times instead would
// cost time even if no window changes.
constexpr std::chrono::seconds finalReadDelay{1};

// The pixels of a directly read window are lost when the window is hidden. The program therefore keeps a copy
// of the pixels and updates the copy this often while the window changes.
constexpr std::chrono::milliseconds copyInterval{500};

// How often to check again whether a changing window is obscured. X sends no event when a redirected window
// becomes unobscured, nor when a window that a compositing manager has redirected becomes obscured.
constexpr std::chrono::seconds obscuredCheckInterval{2};

// A redirected window that has not repainted its obscured parts after this time never will.
constexpr std::chrono::seconds repaintTimeout{2};

} // namespace

CapturePolicy::Commands CapturePolicy::tick(unsigned changes, Time now) {
    const bool draws = changes != 0 || continuousDamage.isAssumed();
    const bool repaintOverdue = now >= giveUpRepaintAt;
    const bool isFinalRead = now >= finalReadAt;
    if (!draws && !isFinalRead && !repaintOverdue) {
        continuousDamage.interrupt();
        return {};
    }
    finalReadAt = draws ? now + finalReadDelay : never;
    Commands commands;
    if (continuousDamage.countDown())
        commands.push_back(watchDamage);
    // Some windows get their new pixmap only when they first draw after the redirection, and not at the
    // redirection itself. The window is therefore checked again at the first damage.
    const bool isDamaged = (changes & damaged) != 0;
    const bool hasNewPixmap = isDamaged && std::exchange(awaitsFirstDamage, false) && isRedirected();
    if (repaintOverdue) {
        giveUpRepaintAt = never;
        current = State::redirected;
    }
    if ((changes & replaced) != 0 || hasNewPixmap || now >= recheckObscuredAt || repaintOverdue)
        commands.push_back(checkWindow);
    else if (isDamaged && !continuousDamage.isAssumed())
        commands.push_back(takeDamage);
    else
        commands.push_back(damageAll);
    return commands;
}

/// Drops a pixmap that is not shown yet. Such a pixmap may hold pixels of other windows, because the window
/// was hidden before it repainted its obscured parts.
CapturePolicy::Commands CapturePolicy::windowHidden() {
    Commands commands;
    if (isRedirected())
        commands.push_back(unredirect);
    commands.push_back(stopReading);
    current = State::hidden;
    pixmapWaits = false;
    recheckObscuredAt = giveUpRepaintAt = never;
    return commands;
}

CapturePolicy::Commands CapturePolicy::windowViewable(const Viewability& viewability, Time now) {
    viewable = viewability;
    if (!isRedirected())
        return {checkRedirection};
    if (viewable.isReadable && now >= recheckObscuredAt) {
        current = State::hidden;
        return {unredirect, checkRedirection};
    }
    recheckObscuredAt = now + obscuredCheckInterval;
    return {namePixmap};
}

/// Chooses direct reading only if no other client has redirected the window. If another client has redirected
/// it, the server sends no event when the window becomes obscured.
CapturePolicy::Commands CapturePolicy::redirectionChecked(bool byAnotherClient, Time now) {
    recheckObscuredAt = now + obscuredCheckInterval;
    return viewable.isReadable && !byAnotherClient ? enterDirect() : enterAwaitingRepaint(now);
}

CapturePolicy::Commands CapturePolicy::enterDirect() {
    giveUpRepaintAt = never;
    if (current == State::direct && viewable.sameGeometry)
        return {damageAll};
    current = State::direct;
    pixmapWaits = false;
    copyPixelsAt = Time::min();
    return {readDirectly};
}

CapturePolicy::Commands CapturePolicy::enterAwaitingRepaint(Time now) {
    Commands commands;
    if (current == State::direct)
        commands.push_back(stopReading);
    // After the command watchDamage, the server immediately reports the whole window as damaged. That report
    // must come before the redirection, because it would otherwise count as a repaint.
    if (continuousDamage.stopAssuming())
        commands.push_back(watchDamage);
    commands.push_back(redirect);
    commands.push_back(namePixmap);
    current = State::awaitingRepaint;
    awaitsFirstDamage = true;
    giveUpRepaintAt = now + repaintTimeout;
    return commands;
}

CapturePolicy::Commands CapturePolicy::pixmapNamed(bool repainted) {
    pixmapWaits = true;
    if (current == State::redirected || repainted)
        return enterRedirected();
    return {};
}

CapturePolicy::Commands CapturePolicy::enterRedirected() {
    pixmapWaits = false;
    giveUpRepaintAt = never;
    current = State::redirected;
    return {showPixmap};
}

CapturePolicy::Commands CapturePolicy::damageTaken(const PixelRect& box, PixelSize content, bool repainted) {
    if (pixmapWaits)
        return repainted ? enterRedirected() : Commands{};
    if (continuousDamage.add(box, content))
        return {applyDamage, ignoreDamage};
    return {applyDamage};
}

CapturePolicy::Commands CapturePolicy::tickEnded(Time now) {
    if (current != State::direct || now < copyPixelsAt)
        return {};
    copyPixelsAt = now + copyInterval;
    return {copyPixels};
}

} // namespace mirrolet::platform::desktop::x11
