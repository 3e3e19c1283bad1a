#include "prompt/PromptContentView.h"

#include "platform/swiftui/Button.h"
#include "platform/swiftui/Stacks.h"
#include "platform/swiftui/Text.h"

namespace mirrolet {

using namespace platform::swiftui;

namespace {

/// Returns the headline. The application's name in it comes from another program and may have any length, so
/// the name may be shortened.
Text title(const PromptContentView& view) {
    if (view.isLikelyCall)
        return Text("Video Call Detected");
    return Text("") + Text(view.appName).elidable() + Text(" Window Detected");
}

Text explanation(const PromptContentView& view) {
    return Text("Enable Picture-in-Picture to keep this ") + Text(view.appName).elidable() +
           Text(view.isLikelyCall ? " call" : " window") +
           Text(" visible in a floating window while you use other apps.");
}

} // namespace

View PromptContentView::body() const {
    const VStack texts(6, {title(*this).font(Font::headline).multilineTextAlignment(TextAlignment::center),
                           explanation(*this)
                               .font(Font::subheadline)
                               .foregroundStyle(ForegroundStyle::secondary)
                               .multilineTextAlignment(TextAlignment::center)
                               .fixedVertically()});
    const HStack buttons(12, {Button("Not Now", onDecline)
                                  .buttonStyle(ButtonStyle::bordered)
                                  .keyboardShortcut(KeyboardShortcut::cancelAction),
                              Button("Enable PiP", onAccept)
                                  .buttonStyle(ButtonStyle::borderedProminent)
                                  .keyboardShortcut(KeyboardShortcut::defaultAction)});
    return VStack(16, {texts, buttons}).padding(20).frame(360, 160).background(Material::ultraThin, 16);
}

} // namespace mirrolet
