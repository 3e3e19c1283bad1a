#pragma once

#include "platform/appkit/NSView.h"
#include "platform/swiftui/View.h"

#include <memory>
#include <vector>

namespace mirrolet::platform::swiftui {

/// The parts of an NSViewRepresentable that do not depend on its type.
struct RepresentedView {
    std::shared_ptr<NSView> view;
    std::function<void(NSView&)> update;
    std::vector<Observation> changes;
};

/// Makes the widget that shows the view. Calls `update` with the view now and each time that one of the
/// represented `changes` is reported.
QWidget* representedWidget(const RepresentedView& represented);

/// Places an NSView among declarative views. The subclass implements makeNSView(), updateNSView(NSView&) and
/// changes(). After each change that changes() observes, updateNSView() is called.
template <class Self> class NSViewRepresentable : public Modifiable<Self> {
  public:
    [[nodiscard]] View body() const {
        return View([self = static_cast<const Self&>(*this)](const BuildContext&) {
            return representedWidget(
                {self.makeNSView(), [self](NSView& view) { self.updateNSView(view); }, self.changes()});
        });
    }
};

} // namespace mirrolet::platform::swiftui
